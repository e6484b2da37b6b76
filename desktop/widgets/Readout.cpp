#include "desktop/widgets/Readout.h"

#include <QHBoxLayout>

#include "desktop/widgets/FixedFont.h"

namespace quoll {

Readout::Readout(const QString& nameOfValue, int digits, const QString& note)
    : name(new QLabel(nameOfValue)), value(new PressLabel) {
  name->setTextFormat(Qt::PlainText);
  value->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  value->setMinimumWidth(fontMetrics().horizontalAdvance(QString(digits, '0')) + 2 * value->frameWidth());
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(name);
  row->addStretch();
  if (!note.isEmpty()) row->addWidget(new QLabel(note));
  row->addWidget(value);
}

void Readout::KeepLetters(int letters) { KeepSize(value, letters, 4 * value->frameWidth() + 2); }

}  // namespace quoll
