// Sums that wrap at their width. Clocks and program counters may be set to anything from outside.
#pragma once

#include <cstdint>
#include <type_traits>

namespace quoll {

template <class Integer>
constexpr Integer WrappingAdd(Integer a, std::type_identity_t<Integer> b) {
  using Unsigned = std::make_unsigned_t<Integer>;
  return static_cast<Integer>(static_cast<Unsigned>(a) + static_cast<Unsigned>(b));
}

template <class Integer>
constexpr Integer WrappingSub(Integer a, std::type_identity_t<Integer> b) {
  using Unsigned = std::make_unsigned_t<Integer>;
  return static_cast<Integer>(static_cast<Unsigned>(a) - static_cast<Unsigned>(b));
}

}  // namespace quoll
