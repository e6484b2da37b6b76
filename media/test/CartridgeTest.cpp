// Cartridges: what comes into the window or the MEX4MB store, and how it goes out again.
#include <sys/stat.h>

#include "machine/MachineInit.h"
#include "machine/Ports.h"
#include "media/Cartridge.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

namespace {

constexpr size_t kWindow = 0x14000;
constexpr size_t kWindowSize = 0x4000;
constexpr size_t kStoreSize = 4'194'304;

// With system ROMs in the folder, since a cartridge makes the machine anew.
struct CartridgeTest : FolderTest {
  CartridgeTest() {
    WriteAll("TVC22_D6.rom", Pattern(0x2000, 61));
    WriteAll("TVC22_D4.rom", Pattern(0x2000, 41));
    WriteAll("TVC22_D7.rom", Pattern(0x2000, 71));
  }
  Bytes Window() const {
    return Bytes(m.MemImage.begin() + kWindow, m.MemImage.begin() + kWindow + kWindowSize);
  }
  void ExpectNewMachine() const {
    EXPECT_EQ(m.z80.PC, 0);
    EXPECT_EQ(m.PortShadow[2], 0);
    EXPECT_EQ(m.PortShadow[0x59], 0xBF);
    EXPECT_EQ(m.MemImage[0x1000], 0);
    EXPECT_TRUE(
        std::equal(m.MemImage.begin() + 0x18000, m.MemImage.begin() + 0x1A000, Pattern(0x2000, 61).begin()));
  }
};

TEST_F(CartridgeTest, ComesIntoTheWindowOfANewMachine) {
  const Bytes image = Pattern(kWindowSize, 3);
  WriteAll("game.crt", image);
  m.MemImage[0x1000] = 9;
  m.z80.PC = 0x1234;
  LoadCRT(m, Path("game.crt"));
  EXPECT_EQ(m.CartName, "game.crt");
  EXPECT_EQ(Window(), image);
  EXPECT_TRUE(m.MexPages.empty());
  ExpectNewMachine();
  EXPECT_TRUE(host.messages.empty());
  // Page 3 is the cartridge after a reset, at once.
  EXPECT_EQ(MemRead(m, 0xC005), image[5]);
  EXPECT_EQ(*reinterpret_cast<const uint8_t*>(m.pages.read[PageMap::kBelow + 0xC] + 0xC005), image[5]);
}

TEST_F(CartridgeTest, ItIsTakenFromWhereItWasChosenNowAndLater) {
  WriteAll("game.crt", Pattern(kWindowSize, 3));
  std::filesystem::create_directory("other");
  WriteAll("other/game.crt", Pattern(kWindowSize, 4));
  LoadCRT(m, Path("other/game.crt"));
  EXPECT_EQ(m.CartName, "game.crt");
  EXPECT_EQ(Window(), Pattern(kWindowSize, 4));
  MachineInit(m);
  EXPECT_EQ(Window(), Pattern(kWindowSize, 4));
  UnloadCRT(m);
  LoadCRT(m, "game.crt");
  EXPECT_EQ(Window(), Pattern(kWindowSize, 3));
}

TEST_F(CartridgeTest, WhereNothingIsTheProgramFolderIsAsked) {
  WriteAll("game.crt", Pattern(kWindowSize, 3));
  LoadCRT(m, Path("nowhere/game.crt"));
  EXPECT_EQ(m.CartName, "game.crt");
  EXPECT_EQ(Window(), Pattern(kWindowSize, 3));
  std::filesystem::create_directory("other");
  std::filesystem::current_path("other");
  LoadCRT(m, "game.crt");
  EXPECT_EQ(Window(), Pattern(kWindowSize, 3));
  std::filesystem::current_path("..");
}

TEST_F(CartridgeTest, AChosenFolderHoldsWhereverTheProgramWorks) {
  std::filesystem::create_directories("work/sub");
  WriteAll("work/sub/game.crt", Pattern(kWindowSize, 5));
  std::filesystem::current_path("work");
  LoadCRT(m, "sub/game.crt");
  EXPECT_EQ(Window(), Pattern(kWindowSize, 5));
  std::filesystem::current_path(folder);
  MachineInit(m);
  EXPECT_EQ(Window(), Pattern(kWindowSize, 5));
  LoadCRT(m, "./work/sub/../sub/game.crt");
  EXPECT_EQ(Window(), Pattern(kWindowSize, 5));
}

TEST_F(CartridgeTest, OnlyFilesAreRead) {
  ASSERT_EQ(mkfifo("pipe.crt", 0600), 0);
  EXPECT_THROW(LoadCRT(m, Path("pipe.crt")), ProgramEnd);
  std::filesystem::create_symlink("/dev/zero", "zero.crt");
  EXPECT_THROW(LoadCRT(m, Path("zero.crt")), ProgramEnd);
}

TEST_F(CartridgeTest, ShortOnesAreFilledUpAndLongOnesCut) {
  for (const size_t size :
       {size_t{0}, size_t{1}, size_t{0x2000}, kWindowSize, kWindowSize + 1, size_t{200'000}}) {
    SCOPED_TRACE(size);
    Bytes image = Pattern(size, 3);
    WriteAll("game.crt", image);
    LoadCRT(m, Path("game.crt"));
    image.resize(kWindowSize, 0);
    EXPECT_EQ(Window(), image);
    EXPECT_TRUE(
        std::equal(m.MemImage.begin() + 0x18000, m.MemImage.begin() + 0x1A000, Pattern(0x2000, 61).begin()));
  }
}

TEST_F(CartridgeTest, AMissingOneEndsTheProgram) {
  EXPECT_THROW(LoadCRT(m, Path("none.crt")), ProgramEnd);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].text, "CRT Rom File error: ");
  EXPECT_EQ(host.messages[0].title, "Error");
  std::filesystem::create_directory("dir.crt");
  EXPECT_THROW(LoadCRT(m, Path("dir.crt")), ProgramEnd);
}

TEST_F(CartridgeTest, TakenOutItLeavesZeros) {
  WriteAll("game.crt", Pattern(kWindowSize, 3));
  LoadCRT(m, Path("game.crt"));
  m.MemImage[0x1000] = 9;
  m.z80.PC = 0x1234;
  UnloadCRT(m);
  EXPECT_EQ(m.CartName, "");
  EXPECT_EQ(Window(), Bytes(kWindowSize, 0));
  ExpectNewMachine();
  EXPECT_EQ(MemRead(m, 0xC005), 0);
}

TEST_F(CartridgeTest, TheMenuNamesIt) {
  EXPECT_EQ(UnloadCaption(m), "Unload");
  WriteAll("game.crt", {1});
  LoadCRT(m, Path("game.crt"));
  EXPECT_EQ(UnloadCaption(m), "Unload: game.crt");
  UnloadCRT(m);
  EXPECT_EQ(UnloadCaption(m), "Unload");
}

TEST_F(CartridgeTest, TheStoreComesInPageByPage) {
  const Bytes image = Pattern(kStoreSize, 4);
  WriteAll("mex4mb.crt", image);
  LoadCRT(m, Path("mex4mb.crt"));
  ASSERT_EQ(m.MexPages.size(), 256U);
  EXPECT_EQ(Window(), Bytes(kWindowSize, 0));
  for (int32_t page : {0, 1, 127, 255}) {
    PortOut(m, 0xA0, page);
    EXPECT_EQ(MemRead(m, 0xC000), image[static_cast<size_t>(page) * 0x4000]);
    EXPECT_EQ(MemRead(m, 0xFFFF), image[static_cast<size_t>(page) * 0x4000 + 0x3FFF]);
  }
  UnloadCRT(m);
  EXPECT_TRUE(m.MexPages.empty());
  EXPECT_EQ(MemRead(m, 0xC000), 0);
}

TEST_F(CartridgeTest, TheStoresNameIsExact) {
  WriteAll("MEX4MB.CRT", Pattern(kWindowSize, 4));
  LoadCRT(m, Path("MEX4MB.CRT"));
  EXPECT_TRUE(m.MexPages.empty());
  EXPECT_EQ(Window(), Pattern(kWindowSize, 4));
}

TEST_F(CartridgeTest, TheStoreIsSavedWithWhatWasWrittenToIt) {
  Bytes image = Pattern(100'000, 4);
  WriteAll("mex4mb.crt", image);
  LoadCRT(m, Path("mex4mb.crt"));
  int32_t page = 200;
  PortOut(m, 0xA0, page);
  MemWrite(m, 0xC123, 0x5A);
  EXPECT_TRUE(SaveMex4mb(m));
  image.resize(kStoreSize, 0);
  image[200 * 0x4000 + 0x123] = 0x5A;
  EXPECT_TRUE(ReadAll("mex4mb.bin") == image);
  // Used as a cartridge again it is the same store.
  const auto pages = m.MexPages;
  std::filesystem::rename("mex4mb.bin", "mex4mb.crt");
  LoadCRT(m, Path("mex4mb.crt"));
  EXPECT_TRUE(m.MexPages == pages);
}

TEST_F(CartridgeTest, WithoutAStoreNothingIsSaved) {
  WriteAll("mex4mb.bin", {1, 2});
  EXPECT_FALSE(SaveMex4mb(m));
  ExpectBox("mex4mb.bin", "there is no MEX4MB cartridge");
  EXPECT_EQ(ReadAll("mex4mb.bin"), (Bytes{1, 2}));
}

TEST_F(CartridgeTest, AFailedSaveKeepsTheOldFileAndIsTold) {
  WriteAll("mex4mb.crt", {});
  WriteAll("mex4mb.bin", {1, 2});
  LoadCRT(m, Path("mex4mb.crt"));
  {
    const FullDisk full(1'000'000);
    EXPECT_FALSE(SaveMex4mb(m));
  }
  ExpectBox("mex4mb.bin", "File too large");
  host.messages.clear();
  {
    const ReadOnlyFolder readOnly(folder);
    EXPECT_FALSE(SaveMex4mb(m));
  }
  ExpectBox("mex4mb.bin", "Permission denied");
  EXPECT_EQ(ReadAll("mex4mb.bin"), (Bytes{1, 2}));
  const auto names = Names();
  EXPECT_EQ(names.size(), 5U);  // three ROMs, cartridge, old store
}

}  // namespace

}  // namespace quoll::test
