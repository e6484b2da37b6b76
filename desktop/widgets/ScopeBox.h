// A picture box in which a block of sound is drawn point by point, green on black.
#pragma once

#include <QImage>
#include <QWidget>
#include <array>
#include <cstdint>

#include "sound/Mixer.h"

namespace quoll {

class ScopeBox : public QWidget {
 public:
  ScopeBox(const char* name, const QString& accessibleName);

  // Draws the block's bytes at the even places, or, with offset 1, those at the odd ones.
  void Draw(const std::array<uint8_t, kBlockBytes>& block, int offset);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage image;
};

}  // namespace quoll
