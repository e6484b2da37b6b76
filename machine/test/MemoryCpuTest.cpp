// The same rows as the processor sees them: in a single pass, and in a run, where the paging is set by OUT
// and the memory is then reached through the page map.
#include <gtest/gtest.h>

#include "machine/test/PagingRows.h"
#include "testkit/TestMachine.h"

namespace quoll::test {

namespace {

constexpr uint8_t kBlank = 0x11;
constexpr uint8_t kMarker = 0xC7;
constexpr uint8_t kWritten = 0x5A;

// Code stands in U1, or in U0 when page 1 is what is tested: RAM in every row.
int32_t CodeAddress(const PagingRow& row) { return row.first == 0x4000 ? 0x1000 : 0x5000; }
int CodePaging(const PagingRow& row) { return row.first == 0x4000 ? 0x10 : 0x00; }

int Low(int32_t word) { return word & 0xFF; }
int High(int32_t word) { return (word >> 8) & 0xFF; }

bool RowFits(const PagingRow& row, bool only32) { return row.model == 2 || (row.model == 1) == only32; }

// A machine in which the row is not selected yet: only the code can be seen.
TestMachine Prepare(const PagingRow& row, bool only32) {
  TestMachine m;
  m->screen.x32KB = only32;
  m->MemImage.fill(kBlank);
  m->PortShadow[2] = 0x10;
  m->z80.PC = CodeAddress(row);
  return m;
}

void SetPaging(Machine& m, const PagingRow& row) {
  m.PortShadow[2] = static_cast<uint8_t>(row.port2 | CodePaging(row));
  m.PortShadow[3] = static_cast<uint8_t>(row.port3);
  m.PortShadow[0x0F] = static_cast<uint8_t>(row.port0F);
  m.PortShadow[0x18] = static_cast<uint8_t>(row.port18);
}

template <class Check>
void ForEachRow(Check check) {
  for (const PagingRow& row : PagingRows()) {
    for (const bool only32 : {false, true}) {
      if (!RowFits(row, only32)) continue;
      for (const int32_t address : {row.first, row.last}) {
        if (address > 0xFFFF) continue;
        SCOPED_TRACE(testing::Message() << row.what << " at " << std::hex << address << " 32K " << only32);
        check(row, address, only32);
      }
    }
  }
}

size_t ImageIndex(const PagingRow& row, int32_t address) {
  return static_cast<size_t>(row.image + address - row.first);
}

TEST(MemoryCpuTest, LoadInASinglePass) {
  ForEachRow([](const PagingRow& row, int32_t address, bool only32) {
    TestMachine m = Prepare(row, only32);
    SetPaging(*m, row);
    Put(*m, CodeAddress(row), {0x3A, Low(address), High(address)});  // LD A,(nn)
    m->MemImage[ImageIndex(row, address)] = kMarker;
    Step(*m);
    EXPECT_EQ(m->z80.A, row.readsZero ? 0 : kMarker);
    EXPECT_EQ(m->z80.PC, CodeAddress(row) + 3);
  });
}

TEST(MemoryCpuTest, StoreInASinglePass) {
  ForEachRow([](const PagingRow& row, int32_t address, bool only32) {
    TestMachine m = Prepare(row, only32);
    SetPaging(*m, row);
    Put(*m, CodeAddress(row), {0x32, Low(address), High(address)});  // LD (nn),A
    m->z80.A = kWritten;
    auto expected = m->MemImage;
    const Z80State before = m->z80;
    if (row.onWrite == OnWrite::Stores) expected[ImageIndex(row, address)] = kWritten;
    EXPECT_EQ(EndsProgram([&] { Step(*m); }), row.onWrite == OnWrite::Ends);
    EXPECT_TRUE(m->MemImage == expected);
    if (row.onWrite != OnWrite::Ends) return;
    ASSERT_EQ(m.host.messages.size(), 1U);
    EXPECT_EQ(m.host.messages[0].text, " CTL 1-3 IOM write????");
    EXPECT_EQ(m->z80.PC, CodeAddress(row));
    EXPECT_EQ(m->z80.A, before.A);
    EXPECT_EQ(m->z80.SP, before.SP);
    EXPECT_EQ(m->run.Cycles, 0);
    EXPECT_EQ(m->run.FrameClock, 0);
  });
}

// LD A,n  OUT (port),A
void Select(std::vector<int>& code, int port, int value) {
  code.insert(code.end(), {0x3E, value, 0xD3, port});
}

// A run that selects the row by OUT, having been somewhere else in the map before.
std::vector<int> SelectRow(const PagingRow& row, int away) {
  std::vector<int> code;
  Select(code, 0x03, row.port3 ^ away);
  Select(code, 0x0F, row.port0F ^ (away & 0x0F));
  Select(code, 0x18, row.port18 ^ (away & 0x30));
  Select(code, 0x02, row.port2 | CodePaging(row));
  Select(code, 0x18, row.port18);
  Select(code, 0x0F, row.port0F);
  Select(code, 0x03, row.port3);
  return code;
}

void PutCode(Machine& m, int32_t offset, const std::vector<int>& code) {
  for (const int byte : code) m.MemImage.at(static_cast<size_t>(offset++)) = static_cast<uint8_t>(byte);
}

TEST(MemoryCpuTest, LoadAndStoreInARun) {
  ForEachRow([](const PagingRow& row, int32_t address, bool only32) {
    for (const int away : {0x00, 0xFF, 0x01, 0x02, 0x04, 0x08, 0x10, 0x20, 0x40, 0x80}) {
      TestMachine m = Prepare(row, only32);
      auto code = SelectRow(row, away);
      // LD A,(nn)  LD C,A  LD A,0x5A  LD (nn),A  LD A,(nn)  LD D,A  (stop)
      code.insert(code.end(), {0x3A, Low(address), High(address), 0x4F, 0x3E, kWritten, 0x32, Low(address),
                               High(address), 0x3A, Low(address), High(address), 0x57, 0xFD, 0xF3});
      PutCode(*m, CodeAddress(row), code);
      m->MemImage[ImageIndex(row, address)] = kMarker;
      auto expected = m->MemImage;
      if (row.onWrite == OnWrite::Stores) expected[ImageIndex(row, address)] = kWritten;
      EXPECT_EQ(EndsProgram([&] { RunOn(*m); }), row.onWrite == OnWrite::Ends);
      EXPECT_EQ(m->z80.C, row.readsZero ? 0 : kMarker);
      EXPECT_TRUE(m->MemImage == expected);
      if (row.onWrite == OnWrite::Ends) continue;
      const int seen = row.onWrite == OnWrite::Stores ? kWritten : kMarker;
      EXPECT_EQ(m->z80.D, row.readsZero ? 0 : seen);
      EXPECT_EQ(m.host.frames, 0);
    }
  });
}

TEST(MemoryCpuTest, AFatalStoreInARunLeavesTheMachineInOrder) {
  TestMachine m;
  m->PortShadow[2] = 0xD0;  // EXT
  m->PortShadow[3] = 0x80;  // slot 2
  m->z80.PC = 0x1000;
  m->z80.B = 0x12;
  Put(*m, 0x1000 + 300, {0x3E, kWritten, 0x32, 0x00, 0xC0});  // after 300 NOPs
  const auto image = m->MemImage;
  ASSERT_TRUE(EndsProgram([&] { RunOn(*m); }));
  EXPECT_EQ(m->z80.PC, 0x1000 + 302);
  EXPECT_EQ(m->z80.A, kWritten);
  EXPECT_EQ(m->z80.B, 0x12);
  EXPECT_EQ(m->z80.R, 301 & 0xFF);  // 301 finished passes, masked after each
  EXPECT_EQ(m->z80.PrefixState, 0);
  EXPECT_EQ(m->run.PrevPc, 0x1000 + 302);
  EXPECT_EQ(m->run.FrameClock, 1207);  // 300 x 4 + 7: the store itself has not been counted
  EXPECT_EQ(m->run.Cycles, 1207);
  EXPECT_EQ(m->run.ToneItCounter, kNoToneSoon - 1207);
  EXPECT_EQ(m->run.PcHistory[9], 0x1000 + 300);  // the last finished pass
  EXPECT_EQ(m->run.PcHistory[0], 0x1000 + 291);
  EXPECT_TRUE(m->MemImage == image);
  ASSERT_EQ(m.host.messages.size(), 1U);
  EXPECT_EQ(m.host.messages[0].text, " CTL 1-3 IOM write????");
  // It can be looked at and, once the paging is changed, run on.
  m->PortShadow[2] = kAllRam;
  Step(*m);
  EXPECT_EQ(m->MemImage[0xC000], kWritten);
  EXPECT_EQ(m->z80.PC, 0x1000 + 305);
}

TEST(MemoryCpuTest, APushIntoACardWindowEndsTheProgram) {
  TestMachine m;
  m->PortShadow[2] = 0xD0;
  m->PortShadow[3] = 0x40;
  m->z80.SP = 0xC100;
  Program(*m, 0x1000, {0x00, 0xC5});  // NOP  PUSH BC
  const auto image = m->MemImage;
  ASSERT_TRUE(EndsProgram([&] { RunOn(*m); }));
  EXPECT_EQ(m->z80.PC, 0x1001);
  EXPECT_TRUE(m->MemImage == image);
  EXPECT_EQ(m.host.messages.size(), 1U);
}

TEST(MemoryCpuTest, AnInterruptWithItsStackInACardWindowEndsTheProgram) {
  TestMachine m;
  m->PortShadow[2] = 0xD0;
  m->PortShadow[3] = 0xC0;
  m->z80.PC = 0x1000;
  m->z80.SP = 0xDFFF;
  m->z80.IM = 1;
  m->z80.IFF1 = m->z80.IrqLine = 1;
  const auto image = m->MemImage;
  ASSERT_TRUE(EndsProgram([&] { RunOn(*m); }));
  EXPECT_TRUE(m->MemImage == image);
  EXPECT_EQ(m.host.messages.size(), 1U);
}

TEST(MemoryCpuTest, IndexedAddressesBelowZeroReadZeroAndStoreNothing) {
  for (const bool inARun : {false, true}) {
    for (const int port2 : {0x00, 0x08, 0x10, 0x18}) {
      for (int d = -128; d < 0; ++d) {
        TestMachine m;
        m->PortShadow[2] = static_cast<uint8_t>(0xA0 | port2);
        m->MemImage.fill(kBlank);
        m->z80.PC = 0x5000;
        m->z80.IX = 0;
        m->z80.B = kWritten;
        m->z80.A = 0x99;
        // LD (IX+d),B  LD A,(IX+d)  (stop)
        Put(*m, 0x5000, {0xDD, 0x70, d & 0xFF, 0xDD, 0x7E, d & 0xFF, 0xFD, 0xF3});
        const auto image = m->MemImage;
        RunOrStep(*m, inARun, 2);
        ASSERT_EQ(m->z80.A, 0) << d;
        ASSERT_TRUE(m->MemImage == image) << d;
      }
    }
  }
}

TEST(MemoryCpuTest, IndexedAddressesAboveSixteenBitsReachTheLastPage) {
  for (const bool inARun : {false, true}) {
    TestMachine m;
    m->MemImage.fill(kBlank);
    m->z80.PC = 0x5000;
    m->z80.IX = 0xFFFF;
    m->z80.B = kWritten;
    // U3: the image index is the address. LD (IX+1),B  LD (IX+127),B  LD A,(IX+2)  LD C,(IX+127)  (stop)
    Put(*m, 0x5000, {0xDD, 0x70, 1, 0xDD, 0x70, 127, 0xDD, 0x7E, 2, 0xDD, 0x4E, 127, 0xFD, 0xF3});
    m->MemImage[0x10001] = kMarker;
    auto expected = m->MemImage;
    expected[0x10000] = expected[0x1007E] = kWritten;
    RunOrStep(*m, inARun, 4);
    EXPECT_EQ(m->z80.A, kMarker);
    EXPECT_EQ(m->z80.C, kWritten);
    EXPECT_TRUE(m->MemImage == expected);
  }
}

TEST(MemoryCpuTest, MexPagesChangeUnderARunningProgram) {
  TestMachine m;
  m->CartName = "mex4mb.crt";
  m->MexPages.resize(256);
  m->MexPages[0x00][0x3FFF] = 0x10;
  m->MexPages[0xFF][0x3FFF] = 0x20;
  m->MexPages[0x80][0x0000] = 0x30;
  m->z80.PC = 0x5000;
  std::vector<int> code;
  Select(code, 0x02, 0x28);                           // CART in pages 0 and 3
  code.insert(code.end(), {0x3A, 0xFF, 0x3F, 0x47});  // LD A,(3FFF)  LD B,A
  Select(code, 0xA0, 0xFF);
  code.insert(code.end(), {0x3A, 0xFF, 0x3F, 0x4F});            // LD A,(3FFF)  LD C,A
  code.insert(code.end(), {0x3A, 0xFF, 0xFF, 0x57});            // LD A,(FFFF)  LD D,A
  code.insert(code.end(), {0x3E, kWritten, 0x32, 0x00, 0xC0});  // LD A,n  LD (C000),A
  Select(code, 0xA0, 0x80);
  code.insert(code.end(), {0x3A, 0x00, 0x00, 0x5F});  // LD A,(0000)  LD E,A
  code.insert(code.end(), {0x3E, 0x66, 0x32, 0x01, 0x00, 0xFD, 0xF3});
  PutCode(*m, 0x5000, code);
  RunOn(*m);
  EXPECT_EQ(m->z80.B, 0x10);
  EXPECT_EQ(m->z80.C, 0x20);
  EXPECT_EQ(m->z80.D, 0x20);
  EXPECT_EQ(m->z80.E, 0x30);
  EXPECT_EQ(m->MexPages[0xFF][0x0000], kWritten);
  EXPECT_EQ(m->MexPages[0x80][0x0001], 0x66);
  EXPECT_EQ(m->MexPages[0x80][0x0000], 0x30);
}

TEST(MemoryCpuTest, ReadNoiseWorksInARun) {
  for (const bool inARun : {false, true}) {
    TestMachine m;
    m->VideoReadNoise = true;
    m->PortShadow[2] = 0x10;                              // U0, U1, video in page 2
    m->PortShadow[0x0F] = 0x08;                           // VID2
    Program(*m, 0x5000, {0x3A, 0x34, 0x92, 0xFD, 0xF3});  // LD A,(9234)  (stop)
    m->MemImage[0x25234] = 0x48;
    m->MemImage[0x11234] = 0x80;
    RunOrStep(*m, inARun, 1);
    EXPECT_EQ(m->z80.A, 0x48);
    EXPECT_EQ(m->MemImage[0x11234], 0xB7);
    EXPECT_EQ(m->MemImage[0x25234], 0x48);
  }
}

TEST(MemoryCpuTest, ReadNoiseSpoilsCodeInVideoMemory) {
  TestMachine m;
  m->VideoReadNoise = true;
  m->PortShadow[2] = 0x10;
  m->z80.PC = 0x8000;
  m->z80.SP = 0x5000;
  Step(*m);  // 0x00 is fetched as 0x37, SCF
  EXPECT_EQ(m->MemImage[0x10000], 0x37);
  EXPECT_EQ(m->z80.CurOpcode, 0x37);
  EXPECT_EQ(m->MemImage[0x10001], 0x00);
  EXPECT_EQ(m->z80.PC, 0x8001);
}

// A copy of the machine has nothing to do with the machine it was made from.
TEST(MemoryCpuTest, ACopyRunsInItsOwnMemory) {
  TestMachine m;
  m->z80.PC = 0x5000;
  // LD A,0x5A  LD (0x8000),A  LD A,(0x8001)  (stop), twice
  Put(*m, 0x5000, {0x3E, kWritten, 0x32, 0x00, 0x80, 0x3A, 0x01, 0x80, 0xFD, 0xF3});
  Put(*m, 0x500A, {0x3E, 0x66, 0x32, 0x00, 0x80, 0x3A, 0x01, 0x80, 0xFD, 0xF3});
  m->MemImage[0x8001] = 0x01;
  RunOn(*m);
  const auto image = m->MemImage;
  const auto constructed = CopyOf(*m);
  TestMachine assigned;
  Program(*assigned, 0x5000, {0xFD, 0xF3});
  RunOn(*assigned);  // its page map is filled before it becomes a copy
  *assigned = *m;
  for (Machine* copy : {constructed.get(), &*assigned}) {
    copy->MemImage[0x8001] = 0x02;
    RunOn(*copy);
    EXPECT_EQ(copy->z80.A, 0x02);
    EXPECT_EQ(copy->MemImage[0x8000], 0x66);
    EXPECT_TRUE(m->MemImage == image);
  }
  RunOn(*m);
  EXPECT_EQ(m->z80.A, 0x01);
}

// Undoing in the middle of a run: the handler puts an earlier state of the machine back.
TEST(MemoryCpuTest, AStateAssignedInThePumpRunsOn) {
  TestMachine m;
  m->z80.PC = 0x5000;
  const auto saved = CopyOf(*m);
  Put(*saved, 0x5000, {0x3E, kWritten, 0x32, 0x00, 0x80, 0xFD, 0xF3});
  saved->run.CpuRunning = 1;
  m.host.ticks = 1000;
  m.host.framesAllowed = 2;
  m.host.onPump = [&](Machine& machine) { machine = *saved; };
  m->run.FrameClock = 62490;
  RunOn(*m);
  EXPECT_EQ(m->MemImage[0x8000], kWritten);
  EXPECT_EQ(saved->MemImage[0x8000], 0x00);
  EXPECT_EQ(m->z80.PC, 0x5007);
}

}  // namespace

}  // namespace quoll::test
