// The font of values that change: every character is as wide as any other, so that nothing moves.
#pragma once

#include <QFont>

class QWidget;

namespace quoll {

// As large as the widget's own font.
QFont FixedFont(const QWidget& widget);

// Gives the widget that font and room for just so many characters, with its margins and frame: a new text in
// it lays nothing out anew.
void KeepSize(QWidget* widget, int characters, int margins);

}  // namespace quoll
