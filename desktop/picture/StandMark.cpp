#include "desktop/picture/StandMark.h"

#include <QEvent>

#include "desktop/kit/QtText.h"
#include "machine/Machine.h"

namespace quoll {

StandMark::StandMark(QWidget* picture) : QLabel(picture) {
  NameWidget(this, "StandMark", tr("State of the machine"));
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setTextFormat(Qt::PlainText);
  setStyleSheet("background: rgba(0, 0, 0, 170); color: #e0e0e0; border-radius: 4px; padding: 3px 8px");
  hide();
  picture->installEventFilter(this);
}

void StandMark::Tell(std::string_view text) {
  setVisible(!text.empty());
  if (text.empty()) return;
  ShowText(this, ToQt(text));
  Place();
}

// Above the machine's own pixels where the border leaves room there.
void StandMark::Place() {
  constexpr int kMargin = 6;
  adjustSize();
  move(parentWidget()->width() - width() - kMargin, kMargin);
  raise();
}

bool StandMark::eventFilter(QObject* object, QEvent* event) {
  if (event->type() == QEvent::Resize && !isHidden()) Place();
  return QLabel::eventFilter(object, event);
}

// Before the first frame has been drawn it is only being started.
std::string_view WhyItStands(const Machine& m) {
  if (m.loops > 0 || m.picture.shown == 0) return {};
  if (m.screen.xS1) return "Paused";
  return m.run.CpuError != 0 ? "Processor error" : "Stopped";
}

}  // namespace quoll
