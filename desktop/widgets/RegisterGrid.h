// A grid of cells with a value each, for arrays of registers. A cell is pressed by a click, or by Space or
// Enter after the arrow keys have gone to it.
#pragma once

#include <QTableWidget>
#include <cstdint>

namespace quoll {

class RegisterGrid : public QTableWidget {
  Q_OBJECT

 public:
  // cells: how many, from the left to the right and from the top down. digits: for how many each has room.
  RegisterGrid(int cells, int columns, int digits, QWidget* parent = nullptr);

  int Cells() const { return cells; }
  // Headers count in hexadecimal, from 0: the columns, and the rows by their first cell. Without this call
  // there are none.
  void ShowHeaders();
  // Shown with the cell under the mouse and told to those who hear the grid.
  void SetName(int cell, const QString& name);
  void SetValue(int cell, const QString& value);
  QString Value(int cell) const;
  // Of text and ground, red + 256 x green + 65536 x blue, or kOwnColour.
  void SetColours(int cell, int32_t fore, int32_t back);

  QSize sizeHint() const override;

 Q_SIGNALS:
  void Pressed(int cell);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;  // Tab leaves the grid

 private:
  QTableWidgetItem* At(int cell) const { return item(cell / columnCount(), cell % columnCount()); }

  int cells;
};

}  // namespace quoll
