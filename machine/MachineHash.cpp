#include "machine/MachineHash.h"

#include <array>
#include <bit>
#include <cstring>

#include "core/Fields.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Fowler, Noll and Vo's scheme (FNV-1a) over words of 64 bits, with a turn of the bits so that high ones
// count too.
struct Hash {
  uint64_t state = 0xCBF29CE484222325U;

  void Add(uint64_t word) { state = std::rotl((state ^ word) * 0x100000001B3U, 29); }

  void AddBytes(const void* bytes, size_t count) {
    const auto* from = static_cast<const uint8_t*>(bytes);
    for (; count >= sizeof(uint64_t); count -= sizeof(uint64_t), from += sizeof(uint64_t)) {
      uint64_t word = 0;
      std::memcpy(&word, from, sizeof word);
      Add(word);
    }
    for (; count > 0; --count) Add(*from++);
  }
};

template <class T>
concept Number = std::is_arithmetic_v<T> || std::is_enum_v<T>;

template <class T>
concept Series = requires(const T& series) {
  series.data();
  series.size();
};

// A series that does not lie in one piece.
template <class T>
concept Queue = !Series<T> && requires(const T& queue) {
  queue.begin();
  queue.size();
};

// Numbers side by side and nothing between them.
template <class T>
inline constexpr bool kFlat = Number<T>;
template <Number T, size_t kSize>
inline constexpr bool kFlat<std::array<T, kSize>> = true;

// No part of the machine's state: what windows look like, and records that say so of themselves.
template <class T>
concept ShownOnly = requires {
  typename T::ShownOnly;
};
template <class T>
concept Shown = ShownOnly<T> || std::is_same_v<T, FormState> || std::is_same_v<T, Look> ||
    std::is_same_v<T, Trace> || std::is_same_v<T, PixelImage>;

template <class T>
void AddTo(Hash& hash, const T& value) {
  if constexpr (Shown<T>) {
    return;
  } else if constexpr (Number<T>) {
    uint64_t word = 0;
    std::memcpy(&word, &value, sizeof value);
    hash.Add(word);
  } else if constexpr (Series<T>) {
    using Element = std::remove_cvref_t<decltype(*value.data())>;
    hash.Add(value.size());
    if constexpr (kFlat<Element>)
      hash.AddBytes(value.data(), value.size() * sizeof(Element));
    else
      for (const auto& element : value) AddTo(hash, element);
  } else if constexpr (Queue<T>) {
    hash.Add(value.size());
    for (const auto& element : value) AddTo(hash, element);
  } else if constexpr (std::is_same_v<T, Z80State>) {
    hash.AddBytes(&value, sizeof value);  // integers all through
  } else {
    std::apply([&hash](const auto&... fields) { (AddTo(hash, fields), ...); }, FieldsOf(value));
  }
}

}  // namespace

uint64_t MachineHash(const MachineState& state) {
  Hash hash;
  AddTo(hash, state);
  return hash.state;
}

}  // namespace quoll
