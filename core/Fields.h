// The fields of a plain record, in order, without a list of them: so that what walks through records (the
// machine's hash) can't miss a field that was added later. Records are aggregates without a base.
#pragma once

#include <cstddef>
#include <tuple>
#include <type_traits>

namespace quoll {

// Stands for a value of any type while the fields are counted.
struct AnyField {
  template <class T>
  operator T() const;  // NOLINT: has to convert by itself
};

template <class T, class... Fields>
constexpr size_t CountFields() {
  if constexpr (requires { T{Fields{}..., AnyField{}}; })
    return CountFields<T, Fields..., AnyField>();
  else
    return sizeof...(Fields);
}

template <class T>
inline constexpr size_t kFieldCount = CountFields<std::remove_const_t<T>>();

// References to all fields. The language takes a record apart only by as many names as it has fields, so
// there is a line for each count.
template <class T>
auto FieldsOf(T& record) {
  static_assert(kFieldCount<T> >= 1 && kFieldCount<T> <= 56, "a line for this many fields is missing");
  if constexpr (kFieldCount<T> == 1) {
    auto& [f0] = record;
    return std::tie(f0);
  }
  if constexpr (kFieldCount<T> == 2) {
    auto& [f0, f1] = record;
    return std::tie(f0, f1);
  }
  if constexpr (kFieldCount<T> == 3) {
    auto& [f0, f1, f2] = record;
    return std::tie(f0, f1, f2);
  }
  if constexpr (kFieldCount<T> == 4) {
    auto& [f0, f1, f2, f3] = record;
    return std::tie(f0, f1, f2, f3);
  }
  if constexpr (kFieldCount<T> == 5) {
    auto& [f0, f1, f2, f3, f4] = record;
    return std::tie(f0, f1, f2, f3, f4);
  }
  if constexpr (kFieldCount<T> == 6) {
    auto& [f0, f1, f2, f3, f4, f5] = record;
    return std::tie(f0, f1, f2, f3, f4, f5);
  }
  if constexpr (kFieldCount<T> == 7) {
    auto& [f0, f1, f2, f3, f4, f5, f6] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6);
  }
  if constexpr (kFieldCount<T> == 8) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7);
  }
  if constexpr (kFieldCount<T> == 9) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8);
  }
  if constexpr (kFieldCount<T> == 10) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9);
  }
  if constexpr (kFieldCount<T> == 11) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10);
  }
  if constexpr (kFieldCount<T> == 12) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11);
  }
  if constexpr (kFieldCount<T> == 13) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12);
  }
  if constexpr (kFieldCount<T> == 14) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13);
  }
  if constexpr (kFieldCount<T> == 15) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14);
  }
  if constexpr (kFieldCount<T> == 16) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15);
  }
  if constexpr (kFieldCount<T> == 17) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16);
  }
  if constexpr (kFieldCount<T> == 18) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17);
  }
  if constexpr (kFieldCount<T> == 19) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18);
  }
  if constexpr (kFieldCount<T> == 20) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19);
  }
  if constexpr (kFieldCount<T> == 21) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20] =
        record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20);
  }
  if constexpr (kFieldCount<T> == 22) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20,
           f21] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21);
  }
  if constexpr (kFieldCount<T> == 23) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22);
  }
  if constexpr (kFieldCount<T> == 24) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23);
  }
  if constexpr (kFieldCount<T> == 25) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24);
  }
  if constexpr (kFieldCount<T> == 26) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25);
  }
  if constexpr (kFieldCount<T> == 27) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26);
  }
  if constexpr (kFieldCount<T> == 28) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27);
  }
  if constexpr (kFieldCount<T> == 29) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28);
  }
  if constexpr (kFieldCount<T> == 30) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29);
  }
  if constexpr (kFieldCount<T> == 31) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30);
  }
  if constexpr (kFieldCount<T> == 32) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31);
  }
  if constexpr (kFieldCount<T> == 33) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32);
  }
  if constexpr (kFieldCount<T> == 34) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33);
  }
  if constexpr (kFieldCount<T> == 35) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34);
  }
  if constexpr (kFieldCount<T> == 36) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35);
  }
  if constexpr (kFieldCount<T> == 37) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36);
  }
  if constexpr (kFieldCount<T> == 38) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37);
  }
  if constexpr (kFieldCount<T> == 39) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38);
  }
  if constexpr (kFieldCount<T> == 40) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39);
  }
  if constexpr (kFieldCount<T> == 41) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40] =
        record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40);
  }
  if constexpr (kFieldCount<T> == 42) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40,
           f41] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41);
  }
  if constexpr (kFieldCount<T> == 43) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42);
  }
  if constexpr (kFieldCount<T> == 44) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43);
  }
  if constexpr (kFieldCount<T> == 45) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44);
  }
  if constexpr (kFieldCount<T> == 46) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45);
  }
  if constexpr (kFieldCount<T> == 47) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46);
  }
  if constexpr (kFieldCount<T> == 48) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47);
  }
  if constexpr (kFieldCount<T> == 49) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47, f48] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48);
  }
  if constexpr (kFieldCount<T> == 50) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47, f48, f49] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49);
  }
  if constexpr (kFieldCount<T> == 51) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47, f48, f49, f50] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49, f50);
  }
  if constexpr (kFieldCount<T> == 52) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47, f48, f49, f50, f51] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49, f50, f51);
  }
  if constexpr (kFieldCount<T> == 53) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52);
  }
  if constexpr (kFieldCount<T> == 54) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52, f53] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52, f53);
  }
  if constexpr (kFieldCount<T> == 55) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52, f53, f54] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52, f53, f54);
  }
  if constexpr (kFieldCount<T> == 56) {
    auto& [f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19, f20, f21,
           f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37, f38, f39, f40, f41,
           f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52, f53, f54, f55] = record;
    return std::tie(f0, f1, f2, f3, f4, f5, f6, f7, f8, f9, f10, f11, f12, f13, f14, f15, f16, f17, f18, f19,
                    f20, f21, f22, f23, f24, f25, f26, f27, f28, f29, f30, f31, f32, f33, f34, f35, f36, f37,
                    f38, f39, f40, f41, f42, f43, f44, f45, f46, f47, f48, f49, f50, f51, f52, f53, f54, f55);
  }
}

}  // namespace quoll
