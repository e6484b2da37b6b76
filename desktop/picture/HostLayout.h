// The layout of the host's keyboard: what each of its keys gives when it is pressed alone. With it a key
// means the same key of the machine whatever is held with it, and on every layout each key of the machine has
// one.
#pragma once

#include <QAbstractNativeEventFilter>
#include <array>
#include <cstdint>
#include <optional>

class QKeyEvent;

namespace quoll {

// By X11 key code: the sign as a Unicode character, 0 for a key without one.
using PlainSigns = std::array<char32_t, 256>;
// By X11 key code: the virtual key code, kNoVirtualKey where the sign and the place tell none.
using LayoutCodes = std::array<int32_t, 256>;

// Letters count by what is printed on them, all other keys by their place. Where a sign stands at the place
// of a letter that is printed elsewhere (Dvorak, the French comma), it gets the key of its own name, or,
// where that has a place already, one that no place gives.
LayoutCodes CodesOfLayout(const PlainSigns& signs);

class HostLayout : public QAbstractNativeEventFilter {
 public:
  HostLayout();
  ~HostLayout() override;
  HostLayout(const HostLayout&) = delete;
  HostLayout& operator=(const HostLayout&) = delete;

  // nullopt where the host does not tell its layout.
  std::optional<int32_t> Code(const QKeyEvent& event);

  // Notes that the layout has changed.
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  static constexpr size_t kGroups = 2;  // layouts that can be switched between without setting up another

  std::array<std::optional<LayoutCodes>, kGroups> codes;
  int keyboardEvent = -1;  // number of the X server's events about keyboards, -1 for none
};

}  // namespace quoll
