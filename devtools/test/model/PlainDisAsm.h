// The disassembler told step by step, the slow way.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

namespace quoll::plain {

using ReadByte = std::function<int(int32_t address)>;

std::string DisAsm(const ReadByte& read, int32_t address, int32_t count, int32_t mode);

}  // namespace quoll::plain
