// A bar below an editor that finds and replaces.
#pragma once

#include <QTextDocument>
#include <QWidget>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace quoll {

class FindBar : public QWidget {
  Q_OBJECT

 public:
  explicit FindBar(QPlainTextEdit* editorBeside, QWidget* parent = nullptr);

  // Shows the bar with what is selected as the text to find.
  void Open();
  // The next hit, or the one before; from the other end of the text when there is none. False without any.
  bool Find(QTextDocument::FindFlags direction = {});

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Replace();
  void ReplaceAll();
  bool HitIsSelected() const;
  QTextDocument::FindFlags Flags() const;
  void Tell(const QString& text);

  QPlainTextEdit* editor;
  QLineEdit* what;
  QLineEdit* with;
  QCheckBox* sameCase;
  QLabel* result;
};

}  // namespace quoll
