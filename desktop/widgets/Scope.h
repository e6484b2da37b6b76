// The screen of an oscilloscope: a trace of the machine's, in a box of so many units, black ground.
#pragma once

#include <QImage>
#include <QWidget>
#include <algorithm>

#include "core/Form.h"

namespace quoll {

// How a scope is laid out.
struct ScopeBox {
  QSize units{221, 64};  // of the trace that fit into it
  int zoom = 1;          // pixels of the window to a unit
  bool dots = false;     // each point by itself, instead of a line through them
  bool grows = false;    // with its window, and shrinks to half its size; the units go with it
};

class Scope : public QWidget {
  Q_OBJECT

 public:
  explicit Scope(const ScopeBox& layout, QWidget* parent = nullptr);

  // Of a picture, in device pixels: from top to above bottom. Without any, top is not above bottom.
  struct Rows {
    int top = 0, bottom = 0;

    Rows With(const Rows& more) const {
      if (top >= bottom) return more;
      return more.top >= more.bottom ? *this : Rows{std::min(top, more.top), std::max(bottom, more.bottom)};
    }
  };

  // Paints when the trace has been drawn anew and differs from what is shown.
  void Show(const Trace& now);

  // The picture of a trace in device pixels, ratio of them to a pixel of the window. size: in pixels of the
  // window; without it the box's own.
  static QImage Draw(const Trace& trace, const ScopeBox& box, qreal ratio, QSize size = {});

  QSize sizeHint() const override { return box.units * box.zoom; }
  QSize minimumSizeHint() const override { return sizeHint() / 2; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  bool ImageFits() const;

  ScopeBox box;
  Trace trace;
  QImage image;  // of the trace, null when it is not drawn yet
  Rows seen;     // of the image: all others are black
};

}  // namespace quoll
