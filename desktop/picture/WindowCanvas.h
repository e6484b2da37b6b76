// The inside of the machine's window as an image: 640 x 576, the border bands with the picture box on them.
#pragma once

#include <QImage>
#include <array>

#include "display/Compose.h"

namespace quoll {

inline constexpr int kCanvasWidth = kWindowWidth;
inline constexpr int kCanvasHeight = kWindowHeight;

class WindowCanvas {
 public:
  WindowCanvas();

  // Brings the pixels up to date. first to last: the rows that differ now, last < first for none.
  struct Rows {
    int first = kCanvasHeight;
    int last = -1;
    bool Any() const { return last >= first; }
  };
  Rows Compose(const Picture& picture);

  const QImage& Image() const { return image; }
  // Colour of the border band of a canvas row, black before the first painting.
  QRgb BandColour(int row) const;

 private:
  QImage image;
  std::array<QRgb, kCanvasHeight / kBandRows> bands{};
  std::array<QRgb, kCanvasWidth> line{};
};

// The picture box's pixels, Width x Height as far as it has any; shares the record's memory.
QImage PictureImage(const Picture& picture);

}  // namespace quoll
