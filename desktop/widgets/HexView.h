// A view of memory: rows of address, bytes and characters, with a scroll bar of addresses. The rows
// themselves come from the machine; the mouse wheel and the keys move the scroll bar.
#pragma once

#include <QWidget>
#include <vector>

class QPlainTextEdit;
class QScrollBar;

namespace quoll {

class HexView : public QWidget {
  Q_OBJECT

 public:
  // header: the line above the rows; may be empty. rows: how many are seen, of rowBytes each.
  HexView(const QString& header, int rows, int rowBytes = 16, QWidget* parent = nullptr);

  // The rows, with a line break between them.
  void SetRows(const QString& text);
  QString Rows() const;

  // So many characters of a row, from the column on. All are counted from 0.
  struct Mark {
    int row, column, length;
    bool operator==(const Mark&) const = default;
  };
  // Marks these parts of the rows in colour, and no others any more.
  void SetMarks(const std::vector<Mark>& parts);

  // The first and the last address that the view can begin at.
  void SetRange(int first, int last);
  int Address() const;
  void SetAddress(int address);

  // A step of it is a row, a page as many as are seen.
  QScrollBar* Bar() const { return bar; }

 Q_SIGNALS:
  void Moved(int address);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  bool Scroll(int key);

  QPlainTextEdit* text;
  QScrollBar* bar;
};

}  // namespace quoll
