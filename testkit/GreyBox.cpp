#include "testkit/GreyBox.h"

#include "display/Palette.h"

namespace quoll::test {

Picture GreyBox(int32_t left, int32_t top, int32_t width, int32_t height) {
  constexpr uint8_t kGrey = 0x40;
  constexpr int32_t kRedBorder = 0x0000FF, kBlueBorder = 0xFF0000;
  Picture picture;
  picture.Left = left;
  picture.Top = top;
  picture.Width = width;
  picture.Height = height;
  picture.ScreenBits.assign(static_cast<size_t>(width) * height * 4, kGrey);
  picture.Border.assign(Palette::kBands, kRedBorder);
  picture.Border.back() = kBlueBorder;
  return picture;
}

}  // namespace quoll::test
