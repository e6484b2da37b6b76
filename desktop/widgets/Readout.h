// A value with its name beside it.
#pragma once

#include <QWidget>

#include "desktop/widgets/PressLabel.h"

namespace quoll {

class Readout : public QWidget {
  Q_OBJECT

 public:
  // digits: for how many the value has room. note: where the value comes from, between the two; may be empty.
  Readout(const QString& name, int digits, const QString& note = {});

  // The value's place is just as wide as so many characters, whatever it shows.
  void KeepLetters(int letters);

  QLabel* Name() const { return name; }
  PressLabel* Value() const { return value; }

 private:
  QLabel* name;
  PressLabel* value;
};

}  // namespace quoll
