// A bar as long as a value's share of its range.
#pragma once

#include <QWidget>

namespace quoll {

class ValueBar : public QWidget {
  Q_OBJECT

 public:
  explicit ValueBar(QWidget* parent = nullptr);

  // 0 to 1; what lies outside counts as the nearer end.
  void SetShare(float share);
  float Share() const { return share; }

  QSize sizeHint() const override { return {60, 10}; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int Length(float of) const;  // pixels

  float share = 0;
};

}  // namespace quoll
