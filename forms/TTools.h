// TTools: the tools window, a drawing of the machine's keyboard to press by mouse, and four rows that work a
// paging value out. ToolKeys.h has the drawing.
#pragma once

#include <array>
#include <string>

#include "core/Form.h"

namespace quoll {

template <size_t kCount>
struct PageRow {
  static constexpr std::array<bool, kCount> kFirst{true};
  static constexpr std::array<Look, kCount> Looks(size_t lit) {
    std::array<Look, kCount> looks{};
    for (size_t i = 0; i < kCount; ++i) looks[i].fore = i == lit ? kGreen : 0;
    return looks;
  }
};

struct TTools {
  static constexpr int kKeys = 195;  // of Label1: host keys of the codes 32 to 226

  FormState window;
  std::string Text1;             // code of the last host key, decimal: serves for finding a key
  std::array<bool, 256> Held{};  // by host key code: held by a click of the right button until clicked again

  // What lies in each quarter of memory, as the bits of port 2 tell it; the value is nobody's but the
  // reader's.
  std::array<bool, 4> U0 = PageRow<4>::kFirst, U3 = PageRow<4>::kFirst;
  std::array<bool, 2> U1 = PageRow<2>::kFirst, U2 = PageRow<2>::kFirst;
  std::array<Look, 4> U0Look = PageRow<4>::Looks(0), U3Look = PageRow<4>::Looks(0);
  std::array<Look, 2> U1Look = PageRow<2>::Looks(0), U2Look = PageRow<2>::Looks(0);
  std::string Text2 = "0";  // the value, decimal

  bool operator==(const TTools&) const = default;
};

extern const Form kTTools;

}  // namespace quoll
