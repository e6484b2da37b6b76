#include "desktop/widgets/FixedFont.h"

#include <QFontDatabase>
#include <QWidget>

namespace quoll {

QFont FixedFont(const QWidget& widget) {
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(widget.font().pointSizeF());
  return fixed;
}

void KeepSize(QWidget* widget, int characters, int margins) {
  widget->setFont(FixedFont(*widget));
  const int width = widget->fontMetrics().horizontalAdvance(QString(characters, '0'));
  widget->setFixedSize(width + margins, widget->sizeHint().height());
}

}  // namespace quoll
