// A text editor for programs: line numbers, colours while typing, marks for the current line and a failing
// one. It tells which lines the user has changed, so that nobody has to look through all of them.
#pragma once

#include <QPlainTextEdit>
#include <functional>
#include <vector>

class QSyntaxHighlighter;

namespace quoll {

class CodeEditor : public QPlainTextEdit {
  Q_OBJECT

 public:
  // Colours of a line, counted from 0: each from its column on.
  struct Piece {
    int column;
    QColor colour;
  };
  using Colouring = std::function<std::vector<Piece>(int line, const QString& text)>;

  explicit CodeEditor(Colouring colouring, QWidget* parent = nullptr);

  // Shows another text, lines parted by line feeds. Only lines that differ are replaced: caret and view stay,
  // and the user can take it back.
  void Show(const QString& text);
  // The same at once, without a way back: for a text that is only read.
  void ShowAnew(const QString& text);

  // Line with the mark of an error, counted from 1; 0 for none.
  void MarkError(int line);
  // Selects so much from a line's column on and shows it. Lines and columns are counted from 0.
  void SelectFrom(int line, int column, int length);

  // The text has changed but Edited is still to come: lines and columns are those of the new text.
  bool EditPending() const { return changedFrom >= 0; }

  void PaintNumbers(QPaintEvent* event);
  int NumbersWidth() const;

 Q_SIGNALS:
  // The user has replaced count lines from first on by so many others. Not emitted for Show.
  void Edited(int first, int count, int with);
  void DoubleClicked();

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  // Files are for the window: their names are no text.
  void dragEnterEvent(QDragEnterEvent* event) override;

 private:
  void NoteChange(int place, int removed, int added);
  void TellEdit();
  void ShowMarks();
  void ReplaceBlocks(int first, int count, const QString& with);

  QSyntaxHighlighter* highlighter;
  QWidget* numbers;
  int blocks = 1;                       // lines before the change that is under way
  int changedFrom = -1, changedTo = 0;  // places in the new text; -1: no change is under way
  int error = 0;
  bool quiet = false;
};

}  // namespace quoll
