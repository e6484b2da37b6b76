// What each fuzzer is: one function that takes an input and aborts when something is wrong.
#pragma once

#include <cstdint>
#include <span>

namespace quoll {

void Fuzz(std::span<const uint8_t> input);

}  // namespace quoll
