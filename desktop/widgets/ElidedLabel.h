// A line of text that takes what width there is: one that is longer loses its middle, and is told in whole as
// the label's tip.
#pragma once

#include <QLabel>

namespace quoll {

class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  explicit ElidedLabel(QWidget* parent = nullptr);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
};

// A caption for a menu or a button: its "&" are meant as they stand, its width in pixels has a limit.
QString PlainCaption(const QString& text, const QFontMetrics& metrics, int limit);

}  // namespace quoll
