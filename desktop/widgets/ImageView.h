// A picture out of a form's record.
#pragma once

#include <QImage>
#include <QWidget>

#include "core/Form.h"

namespace quoll {

class ImageView : public QWidget {
  Q_OBJECT

 public:
  // place: its size in the window, which the picture is stretched to.
  explicit ImageView(QSize place, QWidget* parent = nullptr);

  // Paints when the picture has been drawn anew since it was shown.
  void Show(const PixelImage& now);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage image;
  uint32_t drawings = 0;
};

}  // namespace quoll
