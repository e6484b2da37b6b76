// The machine's keyboard, drawn: its keys on a case, in their proportions at every size. Tab comes to the
// whole of it, the arrow keys move from key to key.
#pragma once

#include <QWidget>
#include <vector>

#include "forms/ToolKeys.h"

namespace quoll {

class KeyCap;

class DrawnKeyboard : public QWidget {
  Q_OBJECT

 public:
  explicit DrawnKeyboard(QWidget* parent = nullptr);

  // In the order of kToolKeys.
  const std::vector<KeyCap*>& Keys() const { return keys; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  // The key that lies next from that one in a direction; the same one at the edge.
  size_t Next(size_t from, int key) const;
  void MoveTo(size_t key);
  QRectF Place() const;

  std::vector<KeyCap*> keys;
  size_t current = 0;  // where Tab comes to
};

}  // namespace quoll
