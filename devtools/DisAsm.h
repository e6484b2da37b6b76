// The disassembler: memory into the texts of OpcodeText.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quoll {

// Reads the byte at an address, which may be any 32-bit number.
using ByteReader = std::function<uint8_t(int32_t address)>;

// Text of so many instructions from the address on, lines parted by carriage return and line feed. Mode 1
// puts a blank, the address and a blank before each, mode 0 gives the instructions alone, any other mode
// gives nothing but the line ends.
std::string DisAsm(const ByteReader& read, int32_t address, int32_t count, int32_t mode);

// Bytes that DisAsm takes for the instruction at this address: 1 to 4.
int32_t DisAsmSize(const ByteReader& read, int32_t address);

}  // namespace quoll
