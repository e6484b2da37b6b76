// Every row of the paging, read and written through the bus.
#include <gtest/gtest.h>

#include <algorithm>
#include <climits>

#include "machine/test/PagingRows.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

constexpr uint8_t kBlank = 0x11;
constexpr uint8_t kMarker = 0xC7;
constexpr uint8_t kWritten = 0x5A;

// Sets the ports of a row; others says what the bits hold that do not select it.
void SetPaging(Machine& m, const PagingRow& row, int others) {
  m.PortShadow[2] = static_cast<uint8_t>(row.port2 | (others & ~row.care2));
  m.PortShadow[3] = static_cast<uint8_t>(row.port3 | (others & ~row.care3));
  m.PortShadow[0x0F] = static_cast<uint8_t>(row.port0F | (others & ~row.care0F));
  m.PortShadow[0x18] = static_cast<uint8_t>(row.port18 | (others & ~row.care18));
  m.PortShadow[0xA0] = static_cast<uint8_t>(others);
}

std::vector<int32_t> Probes(const PagingRow& row) {
  return {row.first, row.first + 1, (row.first + row.last) / 2, row.last - 1, row.last};
}

size_t ImageIndex(const PagingRow& row, int32_t address) {
  return static_cast<size_t>(row.image + address - row.first);
}

template <class Check>
void ForEachSetting(Check check) {
  TestMachine m;
  for (const PagingRow& row : PagingRows()) {
    for (const bool only32 : {false, true}) {
      if (row.model != 2 && (row.model == 1) != only32) continue;
      for (const int others : {0x00, 0xFF}) {
        for (const int32_t address : Probes(row)) {
          SCOPED_TRACE(testing::Message() << row.what << " at " << std::hex << address << " 32K " << only32
                                          << " other bits " << others);
          m->screen.x32KB = only32;
          m->MemImage.fill(kBlank);
          SetPaging(*m, row, others);
          check(m, row, address);
          if (testing::Test::HasFatalFailure()) return;
        }
      }
    }
  }
}

// The image is blank but for one byte.
void ExpectOnlyChange(const Machine& m, size_t index, uint8_t value) {
  auto expected = m.MemImage;
  expected.fill(kBlank);
  expected[index] = value;
  const auto at = std::ranges::mismatch(m.MemImage, expected).in1 - m.MemImage.begin();
  ASSERT_EQ(at, kMemImageSize) << "first difference at " << std::hex << at;
}

void ExpectNoChange(const Machine& m) { ExpectOnlyChange(m, 0, kBlank); }

TEST(MemoryTest, ImageHasItsSize) { EXPECT_EQ(TestMachine()->MemImage.size(), 0x3C001U); }

TEST(MemoryTest, EveryRowReadsItsByte) {
  ForEachSetting([](TestMachine& test, const PagingRow& row, int32_t address) {
    Machine& m = *test;
    m.MemImage[ImageIndex(row, address)] = kMarker;
    ASSERT_EQ(MemRead(m, address), row.readsZero ? 0 : kMarker);
    m.MemImage[ImageIndex(row, address)] = kBlank;
    ASSERT_EQ(MemRead(m, address), row.readsZero ? 0 : kBlank);
    ExpectNoChange(m);
  });
}

TEST(MemoryTest, EveryRowStoresIgnoresOrEnds) {
  ForEachSetting([](TestMachine& test, const PagingRow& row, int32_t address) {
    Machine& m = *test;
    test.host.messages.clear();
    const bool ended = EndsProgram([&] { MemWrite(m, address, kWritten); });
    ASSERT_EQ(ended, row.onWrite == OnWrite::Ends);
    if (row.onWrite == OnWrite::Stores) {
      ExpectOnlyChange(m, ImageIndex(row, address), kWritten);
    } else {
      ExpectNoChange(m);
    }
    ASSERT_EQ(test.host.messages.size(), ended ? 1U : 0U);
    if (ended) {
      EXPECT_EQ(test.host.messages[0].text, " CTL 1-3 IOM write????");
    }
  });
}

TEST(MemoryTest, OutsideTheMemoryReadsZeroAndStoresNothing) {
  TestMachine m;
  std::vector<int32_t> addresses{0x2C000, 0x2C001, 0x2FFFF, 0x30000, 0x34000,  0x3C000,     0x3C001,
                                 0x40000, INT_MAX, INT_MIN, -0x4000, -0x18000, INT_MAX - 1, INT_MIN + 1};
  for (int32_t address = -129; address < 0; ++address) addresses.push_back(address);
  for (const bool cartridge : {false, true}) {
    if (cartridge) {
      m->CartName = "mex4mb.crt";
      m->MexPages.resize(256);
      for (auto& page : m->MexPages) page.fill(kBlank);
    }
    for (int port2 = 0; port2 < 256; ++port2) {
      for (const int port3 : {0x00, 0x40, 0x80, 0xC0}) {
        m->MemImage.fill(kBlank);
        m->PortShadow[2] = static_cast<uint8_t>(port2);
        m->PortShadow[3] = static_cast<uint8_t>(port3);
        for (const int32_t address : addresses) {
          ASSERT_EQ(MemRead(*m, address), 0) << address << " port 2 " << port2;
          ASSERT_FALSE(EndsProgram([&] { MemWrite(*m, address, kWritten); }))
              << address << " port 2 " << port2;
        }
        ExpectNoChange(*m);
      }
    }
    for (const auto& page : m->MexPages) {
      ASSERT_TRUE(std::ranges::all_of(page, [](uint8_t byte) { return byte == kBlank; }));
    }
  }
}

TEST(MemoryTest, MexCartridgeStandsInBothCartridgePages) {
  TestMachine m;
  m->CartName = "mex4mb.crt";
  m->MexPages.resize(256);
  m->MemImage.fill(kBlank);
  m->PortShadow[2] = 0x08;  // CART at 0x0000 and at 0xC000
  for (int page = 0; page < 256; ++page) {
    m->PortShadow[0xA0] = static_cast<uint8_t>(page);
    const auto at = [&](int32_t i) -> uint8_t& {
      return m->MexPages[static_cast<size_t>(page)].at(static_cast<size_t>(i));
    };
    for (const int32_t i : {0, 1, 0x2000, 0x3FFE, 0x3FFF}) {
      at(i) = static_cast<uint8_t>(page ^ 0x3C);
      ASSERT_EQ(MemRead(*m, i), page ^ 0x3C);
      ASSERT_EQ(MemRead(*m, 0xC000 + i), page ^ 0x3C);
      MemWrite(*m, i, static_cast<uint8_t>(page ^ 0x55));
      ASSERT_EQ(at(i), page ^ 0x55);
      MemWrite(*m, 0xC000 + i, static_cast<uint8_t>(page ^ 0x0F));
      ASSERT_EQ(at(i), page ^ 0x0F);
    }
    // Beyond the page there is no cartridge.
    ASSERT_EQ(MemRead(*m, 0x10000), 0);
    ASSERT_EQ(MemRead(*m, 0x2BFFF), 0);
    MemWrite(*m, 0x10000, kWritten);
    MemWrite(*m, 0x2BFFF, kWritten);
  }
  ExpectNoChange(*m);
  for (int page = 0; page < 256; ++page) {
    int changed = 0;
    for (const uint8_t byte : m->MexPages[static_cast<size_t>(page)]) changed += byte != 0 ? 1 : 0;
    EXPECT_EQ(changed, page == 0x0F ? 0 : 5) << page;
  }
}

TEST(MemoryTest, CartridgeNameCountsToTheLetter) {
  TestMachine m;
  m->MexPages.resize(256);
  for (auto& page : m->MexPages) page.fill(kMarker);
  m->MemImage.fill(kBlank);
  m->PortShadow[2] = 0x08;
  for (const char* name :
       {"", "MEX4MB.CRT", "Mex4mb.crt", "mex4mb.crt ", "./mex4mb.crt", "mex4mb", "game.crt"}) {
    m->CartName = name;
    EXPECT_EQ(MemRead(*m, 0x0000), kBlank) << name;
    EXPECT_EQ(MemRead(*m, 0xC000), kBlank) << name;
  }
  m->CartName = "mex4mb.crt";
  EXPECT_EQ(MemRead(*m, 0x0000), kMarker);
  EXPECT_EQ(MemRead(*m, 0xC000), kMarker);
}

TEST(MemoryTest, ReadNoiseDamagesBankZeroOnPageTwoVideoReads) {
  TestMachine m;
  m->VideoReadNoise = true;
  constexpr int32_t kBanks[] = {0x10000, 0x20000, 0x24000, 0x28000};
  for (int bank = 0; bank < 4; ++bank) {
    for (const int32_t offset : {0x0000, 0x0001, 0x3FFF}) {
      m->MemImage.fill(0x48);
      m->PortShadow[2] = 0x00;
      m->PortShadow[0x0F] = static_cast<uint8_t>(bank << 2);
      m->MemImage[kBanks[bank] + offset] = 0x80;
      m->MemImage[0x10000 + offset] = 0x80;
      // 0x80 OR 0x37: bank 0 shows the damage at once, the other banks show their own byte.
      EXPECT_EQ(MemRead(*m, 0x8000 + offset), bank == 0 ? 0xB7 : 0x80);
      auto expected = m->MemImage;
      expected.fill(0x48);
      expected[kBanks[bank] + offset] = 0x80;
      expected[0x10000 + offset] = 0xB7;
      EXPECT_TRUE(m->MemImage == expected) << "bank " << bank << " offset " << offset;
    }
  }
}

TEST(MemoryTest, ReadNoiseLeavesEverythingElseAlone) {
  TestMachine m;
  m->VideoReadNoise = true;
  m->MemImage.fill(kBlank);
  m->PortShadow[2] = 0x14;  // page 1 video, page 2 video
  MemRead(*m, 0x4000);      // page 1 reads of video RAM do no harm
  MemRead(*m, 0x7FFF);
  MemRead(*m, 0xC000);
  ExpectNoChange(*m);
  MemWrite(*m, 0x8005, kWritten);  // nor do writes of page 2
  ExpectOnlyChange(*m, 0x10005, kWritten);
  m->MemImage.fill(kBlank);
  m->PortShadow[2] = 0x20;  // U2
  MemRead(*m, 0x8000);
  m->screen.x32KB = true;
  MemRead(*m, 0xBFFF);
  ExpectNoChange(*m);
}

TEST(MemoryTest, ThirtyTwoKilobytesHideWhatIsStored) {
  TestMachine m;
  m->screen.x32KB = true;
  MemWrite(*m, 0x8000, 0x55);
  MemWrite(*m, 0xFFFF, 0x66);
  EXPECT_EQ(MemRead(*m, 0x8000), 0);
  EXPECT_EQ(MemRead(*m, 0xFFFF), 0);
  m->PortShadow[2] = 0x18 | 0xA0;  // U3 at 0x0000 too, where nobody asks for the model
  EXPECT_EQ(MemRead(*m, 0x3FFF), 0x66);
  m->screen.x32KB = false;
  EXPECT_EQ(MemRead(*m, 0x8000), 0x55);
  EXPECT_EQ(MemRead(*m, 0xFFFF), 0x66);
}

TEST(MemoryTest, OneBankAtTwoAddresses) {
  TestMachine m;
  m->PortShadow[2] = 0x18 | 0x80;
  MemWrite(*m, 0x0010, 0x77);
  EXPECT_EQ(MemRead(*m, 0xC010), 0x77);
  m->PortShadow[2] = 0x94;  // pages 1 and 2 video
  m->PortShadow[0x0F] = 0x05;
  MemWrite(*m, 0x4123, 0x21);
  EXPECT_EQ(MemRead(*m, 0x8123), 0x21);
  MemWrite(*m, 0xBFFF, 0x43);
  EXPECT_EQ(MemRead(*m, 0x7FFF), 0x43);
  EXPECT_EQ(m->MemImage[0x20123], 0x21);
}

}  // namespace

}  // namespace quoll::test
