// The plan of a circuit, drawn as lines and texts: sharp at every size. It keeps its proportions.
#pragma once

#include <QPoint>
#include <QRect>
#include <QString>
#include <QWidget>
#include <vector>

namespace quoll {

// All places are in units of the plan.
struct CircuitPlan {
  struct Pin {
    QPoint at;       // where it meets its chip's edge
    QPoint end;      // its outer end
    QString name;    // inside of the edge; a leading "/" draws a bar over it
    QString number;  // along the pin
  };
  struct Block {
    QRect place;
    QString text;       // may have several lines
    bool chip = false;  // its body, with the text at its upper edge; else a block
  };
  struct Wire {
    std::vector<QPoint> points;
    bool bus = false;    // several lines, drawn thick
    bool arrow = false;  // at its end
  };
  struct Note {
    QRect place;
    QString text;
  };

  QSize units;
  std::vector<Block> blocks{};
  std::vector<Pin> pins{};
  std::vector<Wire> wires{};
  std::vector<Note> notes{};
  std::vector<QPoint> grounds{};
  std::vector<QPoint> speakers{};
};

class CircuitPicture : public QWidget {
  Q_OBJECT

 public:
  // name: what it is the picture of, for those who can't see it.
  CircuitPicture(CircuitPlan planOfCircuit, const QString& name, QWidget* parent = nullptr);

  QSize sizeHint() const override { return plan.units; }
  QSize minimumSizeHint() const override { return plan.units * 3 / 4; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  CircuitPlan plan;
};

}  // namespace quoll
