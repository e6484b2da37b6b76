// The one look of the sound chips' windows: a heading, dark screens with a scope and what its channel plays,
// titled groups of controls.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <vector>

class QBoxLayout;
class QCheckBox;
class QFrame;
class QGridLayout;
class QLabel;
class QSlider;
class QWidget;

namespace quoll {

class FormKit;
class Readout;
class RegisterGrid;

// The chip's name, in a line what it is, and boxes at the right.
QBoxLayout* ChipHeading(const QString& chip, const QString& line, std::initializer_list<QWidget*> boxes = {});

// A label of the form with its name beside it. It keeps its size whatever it shows, so that a new number
// moves nothing. letters: for how many it has room.
struct ChipValue {
  std::string_view control;
  int index;
  QString name;
  int letters = 6;
  bool fills = false;  // takes all of its cell, with the number at the right
};
Readout* ChipReadout(FormKit& kit, const ChipValue& value);
// Without a name of its own, for one that stands behind a slider.
QLabel* ChipNumber(FormKit& kit, std::string_view control, int index, int letters = 4);

// A dark frame for what only shows.
QFrame* ChipScreen();

// A channel's screen: a head, most often its name or the box that lets it be heard, its scope, and values.
enum class ValuePlace { Beside, Above };  // right of the scope, or in the head's row
QFrame* ChannelScreen(FormKit& kit, QWidget* head, std::string_view scope, int index,
                      const std::vector<ChipValue>& values, ValuePlace place = ValuePlace::Beside);
QLabel* ScreenTitle(const QString& text);
// To be called once the window has its screens: the values of all take the same room, and so do the scopes.
void AlignScopes(QWidget* window);
// Nine of them, three in a row: each has the box of its channel and what values gives for it above the scope.
QGridLayout* NineScreens(FormKit& kit, std::string_view boxes,
                         const std::function<std::vector<ChipValue>(int)>& values);

// All registers of a chip, sixteen in a row. rows: what those of each row are for.
RegisterGrid* ChipRegisters(FormKit& kit, std::string_view control, const QStringList& rows);

// A row of a grid: the slider's name, the slider, its number.
void AddSlider(QGridLayout* grid, int row, const QString& name, QSlider* slider, QWidget* number,
               int column = 0);
// A name before a widget that it belongs to.
QLabel* NameFor(const QString& text, QWidget* widget);

// The part is seen while the box is ticked. The window takes its room and gives it back.
void ShownBy(QCheckBox* box, QWidget* part);

}  // namespace quoll
