// The disassembler against a plain one that was written without knowing it: every opcode of all seven pages,
// and long stretches of random memory.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "core/Random.h"
#include "devtools/DisAsm.h"
#include "devtools/test/model/PlainDisAsm.h"

namespace quoll {
namespace {

using Memory = std::vector<uint8_t>;  // 64 KB, seen again and again at higher and lower addresses

constexpr size_t kMemory = 0x10000;

uint8_t At(const Memory& memory, int32_t address) { return memory[static_cast<uint32_t>(address) % kMemory]; }

std::string Real(const Memory& memory, int32_t address, int32_t count, int32_t mode) {
  return DisAsm([&](int32_t at) { return At(memory, at); }, address, count, mode);
}

std::string Model(const Memory& memory, int32_t address, int32_t count, int32_t mode) {
  return plain::DisAsm([&](int32_t at) -> int { return At(memory, at); }, address, count, mode);
}

Memory RandomMemory(uint64_t seed) {
  Random random;
  RandomSeed(random, seed);
  Memory memory(kMemory);
  for (uint8_t& byte : memory) byte = static_cast<uint8_t>(RandomNext(random) * 256);
  return memory;
}

struct Page {
  std::vector<int> before;  // bytes in front of the opcode; the displacement among them is -1
};

const std::array<Page, 7> kPages = {
    {{{}}, {{0xCB}}, {{0xED}}, {{0xDD}}, {{0xFD}}, {{0xDD, 0xCB, -1}}, {{0xFD, 0xCB, -1}}}};

// Puts an instruction of a page at an address; the displacement in front of its opcode stays what it is.
void Put(Memory& memory, int32_t address, const Page& page, int opcode) {
  size_t at = static_cast<size_t>(address);
  for (const int byte : page.before) {
    if (byte >= 0) memory[at % kMemory] = static_cast<uint8_t>(byte);
    ++at;
  }
  memory[at % kMemory] = static_cast<uint8_t>(opcode);
}

TEST(DisAsmModel, EveryOpcodeOfAllPages) {
  constexpr std::array<int32_t, 7> kAddresses = {0, 1, 0x40, 0x1000, 0x7FFF, 0xFFFD, 0x1FFF0};
  Memory memory = RandomMemory(8);
  for (const Page& page : kPages) {
    for (int opcode = 0; opcode < 256; ++opcode) {
      for (const int32_t address : kAddresses) {
        Put(memory, address, page, opcode);
        // Mode 1 shows with the second instruction's address how many bytes the first one took.
        for (const int32_t mode : {0, 1, 2}) {
          ASSERT_EQ(Real(memory, address, 2, mode), Model(memory, address, 2, mode)) << mode;
        }
      }
    }
  }
}

TEST(DisAsmModel, EveryOperandByte) {
  for (const Page& page : kPages) {
    for (int opcode = 0; opcode < 256; opcode += 7) {
      for (int value = 0; value < 256; ++value) {
        Memory memory(kMemory, static_cast<uint8_t>(value));
        Put(memory, 0x1000, page, opcode);
        ASSERT_EQ(Real(memory, 0x1000, 1, 1), Model(memory, 0x1000, 1, 1));
      }
    }
  }
}

TEST(DisAsmModel, RandomMemory) {
  for (uint64_t seed = 1; seed <= 6; ++seed) {
    const Memory memory = RandomMemory(seed);
    for (const int32_t address : {-300, 0, 0x3FFF, 0x8001, 0xFF00, 0x3C000}) {
      for (const int32_t mode : {-1, 0, 1}) {
        ASSERT_EQ(Real(memory, address, 500, mode), Model(memory, address, 500, mode)) << seed;
      }
    }
  }
}

// The model shows with the second line's address how long the first instruction is.
TEST(DisAsmModel, SizeIsTheStepToTheNextInstruction) {
  const Memory memory = RandomMemory(7);
  int32_t address = 0x1000;
  for (int i = 0; i < 2000; ++i) {
    const std::string lines = Model(memory, address, 2, 1);
    const std::string second = lines.substr(lines.find("\r\n") + 3, 4);
    address += DisAsmSize([&](int32_t at) { return At(memory, at); }, address);
    ASSERT_EQ(std::stoi(second, nullptr, 16), address) << lines;
  }
}

}  // namespace
}  // namespace quoll
