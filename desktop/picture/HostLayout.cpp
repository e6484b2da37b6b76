#include "desktop/picture/HostLayout.h"

#include <xcb/xcb.h>

#include <QChar>
#include <QGuiApplication>
#include <QKeyEvent>
#include <algorithm>
#include <cstdlib>
#include <memory>
#include <vector>

#include "desktop/picture/KeyCodes.h"

namespace quoll {

namespace {

constexpr uint32_t kFirstKeyCode = 8;
constexpr size_t kSignsOfAGroup = 2;  // of the core protocol: plain and with Shift

struct Free {
  void operator()(void* block) const { std::free(block); }
};
template <class T>
using Reply = std::unique_ptr<T, Free>;

xcb_connection_t* Connection() {
  auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return x11 != nullptr ? x11->connection() : nullptr;
}

// X numbers the signs of Latin 1 and, from a base on, all others as Unicode does. Of the older numbers those
// of the Hungarian letters count.
char32_t SignOf(xcb_keysym_t keysym) {
  constexpr xcb_keysym_t kUnicode = 0x01000000, kLongO = 0x1F5, kLongU = 0x1FB;
  if (keysym == kLongO) return 0x151;
  if (keysym == kLongU) return 0x171;
  if (keysym >= kUnicode && keysym < kUnicode + 0x110000) return keysym - kUnicode;
  const bool latin1 = (keysym > 0x20 && keysym < 0x7F) || (keysym > 0xA0 && keysym <= 0xFF);
  return latin1 ? keysym : 0;
}

std::optional<PlainSigns> ReadSigns(size_t group) {
  xcb_connection_t* connection = Connection();
  if (connection == nullptr) return {};
  constexpr auto kCount = static_cast<uint8_t>(256 - kFirstKeyCode);
  const Reply<xcb_get_keyboard_mapping_reply_t> reply(xcb_get_keyboard_mapping_reply(
      connection, xcb_get_keyboard_mapping(connection, kFirstKeyCode, kCount), nullptr));
  if (reply == nullptr || reply->keysyms_per_keycode == 0) return {};
  const xcb_keysym_t* keysyms = xcb_get_keyboard_mapping_keysyms(reply.get());
  const size_t each = reply->keysyms_per_keycode;
  PlainSigns signs{};
  for (size_t key = 0; key < kCount; ++key) {
    const size_t place = group * kSignsOfAGroup;
    if (place < each) signs[kFirstKeyCode + key] = SignOf(keysyms[key * each + place]);
  }
  return signs;
}

bool IsCapital(int32_t code) { return code >= 'A' && code <= 'Z'; }

}  // namespace

LayoutCodes CodesOfLayout(const PlainSigns& signs) {
  LayoutCodes codes;
  codes.fill(kNoVirtualKey);
  std::vector<size_t> strangers;  // signs at the places of letters
  for (size_t key = kFirstKeyCode + 1; key < signs.size(); ++key) {
    const auto qtKey = static_cast<int>(QChar::toUpper(signs[key]));
    const int32_t code = VirtualKey(ScanCodes::X11, static_cast<uint32_t>(key), qtKey, false);
    if (signs[key] == 0 && IsCapital(code)) continue;
    codes[key] = code;
    if (IsCapital(code) && qtKey != code) strangers.push_back(key);
  }
  const auto given = [&](int32_t code) { return std::ranges::find(codes, code) != codes.end(); };
  const auto printed = [&](int32_t letter) {
    return std::ranges::any_of(signs,
                               [&](char32_t sign) { return QChar::toUpper(sign) == char32_t(letter); });
  };
  // Other alphabets have no such letters: their keys stand for those of their places.
  std::erase_if(strangers, [&](size_t key) { return !printed(codes[key]); });
  for (const size_t key : strangers) codes[key] = kNoVirtualKey;
  for (const size_t key : strangers) {
    const int32_t named = VirtualKey(ScanCodes::None, 0, static_cast<int>(QChar::toUpper(signs[key])), false);
    if (!given(named)) codes[key] = named;
  }
  for (const size_t key : strangers) {
    if (codes[key] != kNoVirtualKey) continue;
    const auto spare = std::ranges::find_if(kOemCodes, [&](int32_t code) { return !given(code); });
    if (spare != kOemCodes.end()) codes[key] = *spare;
  }
  return codes;
}

HostLayout::HostLayout() {
  qGuiApp->installNativeEventFilter(this);
  xcb_connection_t* connection = Connection();
  if (connection == nullptr) return;
  constexpr std::string_view kName = "XKEYBOARD";
  const Reply<xcb_query_extension_reply_t> reply(xcb_query_extension_reply(
      connection, xcb_query_extension(connection, kName.size(), kName.data()), nullptr));
  if (reply != nullptr && reply->present != 0) keyboardEvent = reply->first_event;
}

HostLayout::~HostLayout() {
  if (qGuiApp != nullptr) qGuiApp->removeNativeEventFilter(this);
}

std::optional<int32_t> HostLayout::Code(const QKeyEvent& event) {
  const auto group = static_cast<size_t>(event.nativeModifiers() >> 13 & 3);
  const uint32_t key = event.nativeScanCode();
  if (keyboardEvent < 0 || group >= kGroups || key >= 256) return {};
  if (!codes[group]) {
    const std::optional<PlainSigns> signs = ReadSigns(group);
    if (!signs) return {};
    codes[group] = CodesOfLayout(*signs);
  }
  const int32_t code = (*codes[group])[key];
  return code != kNoVirtualKey ? std::optional(code) : std::nullopt;
}

bool HostLayout::nativeEventFilter(const QByteArray& /*eventType*/, void* message, qintptr* /*result*/) {
  if (keyboardEvent < 0 || message == nullptr) return false;
  const auto* event = static_cast<const xcb_generic_event_t*>(message);
  const int kind = event->response_type & 0x7F;
  constexpr uint8_t kMapChanged = 1;  // or, below it, a new keyboard
  const bool keyboard = kind == keyboardEvent && event->pad0 <= kMapChanged;
  if (keyboard || kind == XCB_MAPPING_NOTIFY) codes = {};
  return false;
}

}  // namespace quoll
