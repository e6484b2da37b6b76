#include "desktop/widgets/FileList.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QStyle>

#include "desktop/kit/QtText.h"

namespace quoll {

FileList::FileList(QWidget* parent) : QListWidget(parent) {
  setUniformItemSizes(true);
  connect(this, &QListWidget::itemClicked, this, [this](QListWidgetItem* item) { Clicked(row(item)); });
  connect(this, &QListWidget::itemDoubleClicked, this, [this](QListWidgetItem* item) { Open(row(item)); });
}

void FileList::SetIcons(QIcon (*iconOf)(const QString& entry)) { icon = iconOf; }

void FileList::Show(const ListRef& entries) {
  const int wanted = static_cast<int>(entries.EntryCount());
  shown.resize(entries.EntryCount());
  while (count() > wanted) delete takeItem(count() - 1);
  for (int i = 0; i < wanted; ++i) {
    std::string entry = entries.Entry(static_cast<size_t>(i));
    if (i < count() && shown[static_cast<size_t>(i)] == entry) continue;
    if (i == count()) addItem(new QListWidgetItem);
    const QString text = ToQt(entry);
    shown[static_cast<size_t>(i)] = std::move(entry);
    item(i)->setText(text);
    if (icon != nullptr) item(i)->setIcon(icon(text));
  }
  const int selected = *entries.selected < wanted ? std::max(*entries.selected, -1) : -1;
  if (currentRow() != selected) setCurrentRow(selected);
}

void FileList::Open(int entry) {
  const bool oneClick =
      oneClickOpens && style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, this) != 0;
  // The second click of a double click must not open what has come under the mouse by the first one.
  if (oneClick && sinceOpened.isValid() && sinceOpened.elapsed() < QApplication::doubleClickInterval())
    return;
  sinceOpened.start();
  QMetaObject::invokeMethod(
      this, [this, entry] { Q_EMIT Opened(entry); }, Qt::QueuedConnection);
}

void FileList::Clicked(int entry) {
  Q_EMIT Chosen(entry);
  if (oneClickOpens && style()->styleHint(QStyle::SH_ItemView_ActivateItemOnSingleClick, nullptr, this) != 0)
    Open(entry);
}

void FileList::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    if (currentRow() >= 0) return Open(currentRow());
    return event->ignore();
  }
  const int before = currentRow();
  QListWidget::keyPressEvent(event);
  if (currentRow() >= 0 && (currentRow() != before || event->key() == Qt::Key_Space))
    Q_EMIT Chosen(currentRow());
}

// Qt makes the first entry the current one here.
void FileList::focusInEvent(QFocusEvent* event) {
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
}

}  // namespace quoll
