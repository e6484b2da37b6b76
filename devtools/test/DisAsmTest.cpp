#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "devtools/DisAsm.h"
#include "devtools/OpcodeTables.h"
#include "devtools/ToolText.h"

namespace quoll {
namespace {

// Memory that holds these bytes from an address on and zeros elsewhere.
ByteReader Bytes(const std::vector<uint8_t>& bytes, int32_t at = 0) {
  return [bytes, at](int32_t address) -> uint8_t {
    const int64_t place = int64_t{address} - at;
    return place >= 0 && place < static_cast<int64_t>(bytes.size()) ? bytes[static_cast<size_t>(place)]
                                                                    : uint8_t{0};
  };
}

struct Case {
  std::vector<uint8_t> bytes;
  int32_t at;
  const char* text;
  int32_t size;
};

TEST(DisAsm, Instructions) {
  const std::vector<Case> cases = {
      {{0x00}, 0, "NOP", 1},
      {{0x08}, 0, "EX AF,AF\x92", 1},
      {{0x01, 0x34, 0x12}, 0, "LD BC,1234", 3},
      {{0x22, 0x05, 0x00}, 0, "LD (0005),HL", 3},
      {{0x32, 0xFF, 0xFF}, 0, "LD (FFFF),A", 3},
      {{0x3E, 0x0A}, 0, "LD A,0A", 2},
      {{0xD3, 0x02}, 0, "OUT (02),A", 2},
      {{0x36, 0xFE}, 0, "LD (HL),FE", 2},
      {{0xC4, 0x00, 0x80}, 0, "CALL NZ,8000", 3},
      {{0xCB, 0x30}, 0, "SLL B*", 2},
      {{0xED, 0x4B, 0x21, 0x43}, 0, "LD BC,(4321)", 4},
      {{0xED, 0x70}, 0, "IN F,(C)* / IN (C)*", 2},
      {{0xDD, 0x21, 0x02, 0x01}, 0, "LD IX,0102", 4},
      {{0xDD, 0x26, 0x05}, 0, "LD IXH,05*", 3},
      // The character behind a displacement's parenthesis is lost, if there is one.
      {{0xDD, 0x70, 0x05}, 0, "LD (IX+05)B", 3},
      {{0xFD, 0x46, 0x80}, 0, "LD B,(IY+80)", 3},
      {{0xDD, 0xCB, 0x05, 0x46}, 0, "BIT 0,(IX+05)", 4},
      {{0xFD, 0xCB, 0xFF, 0x40}, 0, "BIT 0,(IY+FF)", 4},
      {{0xDD, 0xCB, 0x7F, 0x00}, 0, "LD B,RLC (IX+7F)", 4},
      {{0xDD, 0xCB, 0x01, 0x36}, 0, "SLL (IX+01)", 4},
      // Two rows have a form of their own.
      {{0xDD, 0x36, 0x05, 0x0A}, 0, "LD IX+05),0A", 4},
      {{0xFD, 0x36, 0x80, 0xFF}, 0, "LD IY+80),FF", 4},
      // Relative jumps lose their parentheses.
      {{0x18, 0xFE}, 0x1000, "JR 1000", 2},
      {{0x10, 0x00}, 0x1000, "DJNZ 1002", 2},
      {{0x20, 0x7F}, 0x1000, "JR NZ,1081", 2},
      {{0x38, 0x80}, 0x1000, "JR C,0F82", 2},
      // Targets are not wrapped, and no more than six digits are shown.
      {{0x18, 0x7F}, 0xFFFE, "JR 1007F", 2},
      {{0x18, 0x80}, 0, "JR FFFFFF", 2},
      {{0x20, 0x80}, 0, "JR NZ,FFFFFF", 2},
      // Keys that the table does not have.
      {{0xED, 0x00}, 0, ">ED00 Unknown!", 2},
      {{0xFD, 0x00}, 0, ">FD00 Unknown!", 2},
      {{0xDD, 0xDD}, 0, ">DDDD Unknown!", 2},
      {{0xDD, 0xED}, 0, ">DDED Unknown!", 2},
      {{0xDD, 0xCB, 0x05, 0xFB}, 0, ">DDCBFB Unknown!", 3},
      {{0xFD, 0xCB, 0x05, 0xFB}, 0, "LD E,SET 7,(IY+05)", 4},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(DisAsm(Bytes(c.bytes, c.at), c.at, 1, 0), c.text);
    EXPECT_EQ(DisAsmSize(Bytes(c.bytes, c.at), c.at), c.size) << c.text;
  }
}

TEST(DisAsm, Modes) {
  const ByteReader read = Bytes({0x00, 0xFD, 0x00, 0x3E, 0x01}, 0x4000);
  EXPECT_EQ(DisAsm(read, 0x4000, 3, 0), "NOP\r\n>FD00 Unknown!\r\nLD A,01");
  EXPECT_EQ(DisAsm(read, 0x4000, 3, 1), " 4000 NOP\r\n 4001 >FD00 Unknown!\r\n 4003 LD A,01");
  EXPECT_EQ(DisAsm(read, 0x4000, 3, 2), "\r\n\r\n");
  EXPECT_EQ(DisAsm(read, 0x4000, 3, -1), "\r\n\r\n");
}

TEST(DisAsm, Counts) {
  EXPECT_EQ(DisAsm(Bytes({}), 0, 0, 1), "");
  EXPECT_EQ(DisAsm(Bytes({}), 0, -5, 1), "");
  EXPECT_EQ(DisAsm(Bytes({}), 0, 1, 1), " 0000 NOP");
}

TEST(DisAsm, AddressesAreNotWrapped) {
  EXPECT_EQ(DisAsm(Bytes({}), 0xFFFF, 2, 1), " FFFF NOP\r\n 10000 NOP");
  EXPECT_EQ(DisAsm(Bytes({0x3E, 0x07}, 0xFFFF), 0xFFFF, 1, 1), " FFFF LD A,07");
  EXPECT_EQ(DisAsm(Bytes({}), -1, 2, 1), " FFFFFFFF NOP\r\n 0000 NOP");
  EXPECT_EQ(DisAsm(Bytes({}), INT_MAX, 2, 1), " 7FFFFFFF NOP\r\n 80000000 NOP");
}

// What only a displacement stands between: DD CB d op and FD CB d op find a row for each op but one.
TEST(DisAsm, OnlyTheMisprintedKeyIsUnknown) {
  for (const int prefix : {0xDD, 0xFD}) {
    for (int op = 0; op < 256; ++op) {
      const ByteReader read = Bytes({static_cast<uint8_t>(prefix), 0xCB, 0x12, static_cast<uint8_t>(op)});
      const bool unknown = DisAsm(read, 0, 1, 0).ends_with("Unknown!");
      EXPECT_EQ(unknown, prefix == 0xDD && op == 0xFB);
      EXPECT_EQ(DisAsmSize(read, 0), unknown ? 3 : 4);
    }
  }
}

// Only the bytes of the instruction, and the second one of each, are read.
TEST(DisAsm, ReadsNoFurtherThanItMust) {
  for (int first = 0; first < 256; ++first) {
    int32_t last = 0;
    const ByteReader read = [&](int32_t address) {
      last = std::max(last, address);
      return static_cast<uint8_t>(address == 0 ? first : 0xCB);
    };
    const int32_t size = DisAsmSize(read, 0);
    EXPECT_EQ(last, std::max(1, size - 1)) << first;
  }
}

}  // namespace
}  // namespace quoll
