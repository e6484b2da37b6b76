#include "desktop/widgets/ElidedLabel.h"

#include <QPainter>
#include <QStyle>

namespace quoll {

ElidedLabel::ElidedLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
}

QSize ElidedLabel::minimumSizeHint() const { return {0, QLabel::minimumSizeHint().height()}; }

void ElidedLabel::paintEvent(QPaintEvent* /*event*/) {
  const QRect place = contentsRect();
  const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, place.width());
  const QString tip = shown == text() ? QString() : text();
  if (toolTip() != tip) setToolTip(tip);
  QPainter painter(this);
  style()->drawItemText(&painter, place, static_cast<int>(alignment()), palette(), isEnabled(), shown,
                        foregroundRole());
}

QString PlainCaption(const QString& text, const QFontMetrics& metrics, int limit) {
  return metrics.elidedText(text, Qt::ElideMiddle, limit).replace('&', "&&");
}

}  // namespace quoll
