#include "desktop/widgets/FindBar.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "desktop/kit/QtText.h"

namespace quoll {

FindBar::FindBar(QPlainTextEdit* editorBeside, QWidget* parent)
    : QWidget(parent),
      editor(editorBeside),
      what(new QLineEdit),
      with(new QLineEdit),
      sameCase(new QCheckBox(tr("Match case"))),
      result(new QLabel) {
  NameWidget(what, "FindText", tr("Find"));
  NameWidget(with, "ReplaceText", tr("Replace with"));
  sameCase->setObjectName("FindCase");
  NameWidget(result, "FindResult", tr("Result of the search"));
  const auto button = [](const QString& text, const char* name) {
    auto* made = new QPushButton(text);
    made->setObjectName(name);
    made->setAutoDefault(true);
    return made;
  };
  QPushButton* next = button(tr("Next"), "FindNext");
  QPushButton* previous = button(tr("Previous"), "FindPrevious");
  QPushButton* replace = button(tr("Replace"), "FindReplace");
  QPushButton* all = button(tr("All"), "FindReplaceAll");

  auto* grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(new QLabel(tr("Find")), 0, 0);
  grid->addWidget(what, 0, 1);
  grid->addWidget(next, 0, 2);
  grid->addWidget(previous, 0, 3);
  grid->addWidget(sameCase, 0, 4);
  grid->addWidget(new QLabel(tr("Replace with")), 1, 0);
  grid->addWidget(with, 1, 1);
  grid->addWidget(replace, 1, 2);
  grid->addWidget(all, 1, 3);
  grid->addWidget(result, 1, 4);
  grid->setColumnStretch(1, 1);

  connect(what, &QLineEdit::returnPressed, this, [this] { Find(); });
  connect(with, &QLineEdit::returnPressed, this, &FindBar::Replace);
  connect(next, &QPushButton::clicked, this, [this] { Find(); });
  connect(previous, &QPushButton::clicked, this, [this] { Find(QTextDocument::FindBackward); });
  connect(replace, &QPushButton::clicked, this, &FindBar::Replace);
  connect(all, &QPushButton::clicked, this, &FindBar::ReplaceAll);
  hide();
}

void FindBar::Open() {
  const QString selected = editor->textCursor().selectedText();
  if (!selected.isEmpty() && !selected.contains(QChar::ParagraphSeparator)) what->setText(selected);
  Tell({});
  show();
  what->setFocus();
  what->selectAll();
}

QTextDocument::FindFlags FindBar::Flags() const {
  return sameCase->isChecked() ? QTextDocument::FindCaseSensitively : QTextDocument::FindFlags();
}

void FindBar::Tell(const QString& text) { ShowText(result, text); }

bool FindBar::Find(QTextDocument::FindFlags direction) {
  Tell({});
  if (what->text().isEmpty()) return false;
  if (editor->find(what->text(), Flags() | direction)) return true;
  const QTextCursor before = editor->textCursor();
  editor->moveCursor((direction & QTextDocument::FindBackward) != 0 ? QTextCursor::End : QTextCursor::Start);
  if (editor->find(what->text(), Flags() | direction)) {
    Tell(tr("from the other end"));
    return true;
  }
  editor->setTextCursor(before);
  Tell(tr("not found"));
  return false;
}

bool FindBar::HitIsSelected() const {
  const Qt::CaseSensitivity sensitivity = sameCase->isChecked() ? Qt::CaseSensitive : Qt::CaseInsensitive;
  const QString& wanted = what->text();
  return !wanted.isEmpty() && editor->textCursor().selectedText().compare(wanted, sensitivity) == 0;
}

// The hit that is selected, then on to the next one.
void FindBar::Replace() {
  if (HitIsSelected()) editor->textCursor().insertText(with->text());
  Find();
}

// One step for undo.
void FindBar::ReplaceAll() {
  if (what->text().isEmpty()) return;
  int count = 0;
  QTextCursor edit(editor->document());
  edit.beginEditBlock();
  for (QTextCursor hit = editor->document()->find(what->text(), 0, Flags()); !hit.isNull();
       hit = editor->document()->find(what->text(), hit, Flags())) {
    hit.insertText(with->text());
    ++count;
  }
  edit.endEditBlock();
  Tell(tr("%1 replaced").arg(count));
}

void FindBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QWidget::keyPressEvent(event);
  hide();
  editor->setFocus();
}

}  // namespace quoll
