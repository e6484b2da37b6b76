#include "desktop/windows/ScrolledWindow.h"

#include <QApplication>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

namespace quoll {

ScrolledWindow::ScrolledWindow(FormKit& kitOfWindow, QWidget* contentOfWindow)
    : FormWindow(kitOfWindow), content(contentOfWindow) {
  auto* scrolled = new QScrollArea;
  scrolled->setWidgetResizable(true);
  scrolled->setFrameShape(QFrame::NoFrame);
  scrolled->setFocusPolicy(Qt::NoFocus);
  scrolled->setAlignment(Qt::AlignTop | Qt::AlignHCenter);
  scrolled->setWidget(content);
  // However the focus has come there, by Alt and a letter too.
  connect(qApp, &QApplication::focusChanged, scrolled,
          [scrolled, in = content](QWidget* /*old*/, QWidget* now) {
            if (now != nullptr && in->isAncestorOf(now)) scrolled->ensureWidgetVisible(now);
          });
  auto* whole = new QVBoxLayout(this);
  whole->setContentsMargins(0, 0, 0, 0);
  whole->addWidget(scrolled);
}

void ScrolledWindow::Appear() {
  if (!sized) {
    sized = true;
    ensurePolished();
    kit.binder.Pull();  // what it shows has a part in its size
    const QSize whole = content->sizeHint(), frame(20, 40);
    content->setMaximumWidth(whole.width() * 5 / 4);  // lines that are too long are hard to follow
    resize(whole.boundedTo(screen()->availableSize() - frame));
  }
  FormWindow::Appear();
}

}  // namespace quoll
