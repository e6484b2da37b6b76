// A lamp with its name on it.
#pragma once

#include <QLabel>

namespace quoll {

class Lamp : public QLabel {
  Q_OBJECT

 public:
  explicit Lamp(const QString& name, QWidget* parent = nullptr);

  void Set(bool lit);
  bool IsOn() const { return on; }

 private:
  void Colour();

  bool on = false;
};

}  // namespace quoll
