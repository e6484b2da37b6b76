// The mark on a picture whose machine stands: a quiet plate in the upper right corner of the widget, which is
// no part of the machine's picture. It takes no clicks.
#pragma once

#include <QLabel>
#include <string_view>

namespace quoll {

struct Machine;

class StandMark : public QLabel {
  Q_OBJECT

 public:
  explicit StandMark(QWidget* picture);

  // Shows the text, or nothing for an empty one.
  void Tell(std::string_view text);

 protected:
  bool eventFilter(QObject* object, QEvent* event) override;

 private:
  void Place();
};

// Why the machine stands: "Paused", "Processor error" or "Stopped". Empty while it runs.
std::string_view WhyItStands(const Machine& m);

}  // namespace quoll
