#include "desktop/windows/ChipLayout.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QFrame>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QSlider>
#include <algorithm>

#include "desktop/kit/FormKit.h"
#include "desktop/widgets/Readout.h"
#include "desktop/widgets/RegisterGrid.h"

namespace quoll {

namespace {

const QColor kScreenFrame(44, 50, 56), kScreenGround(26, 30, 34), kScreenText(170, 184, 180);
const QColor kScreenValue(150, 255, 170);
constexpr int kValueRows = 3;  // that fit beside a scope
constexpr const char* kValues = "Values";

void KeepSize(QLabel* label, int letters) {
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(label->font().pointSizeF());
  label->setFont(fixed);
  const QFontMetrics metrics(fixed);
  label->setFixedSize(metrics.horizontalAdvance(QString(letters, '0')) + 4, metrics.height() + 2);
}

// Values from the top down, then on in the next column.
QWidget* ValueGrid(FormKit& kit, const std::vector<ChipValue>& values) {
  auto* part = new QWidget;
  part->setObjectName(kValues);
  auto* grid = new QGridLayout(part);
  grid->setContentsMargins(6, 0, 0, 0);
  grid->setHorizontalSpacing(12);
  grid->setVerticalSpacing(2);
  int place = 0;
  for (ChipValue value : values) {
    value.fills = true;
    grid->addWidget(ChipReadout(kit, value), place % kValueRows, place / kValueRows);
    ++place;
  }
  grid->setRowStretch(kValueRows, 1);
  return part;
}

}  // namespace

QBoxLayout* ChipHeading(const QString& chip, const QString& line, std::initializer_list<QWidget*> boxes) {
  constexpr double kLarger = 1.5;
  auto* name = new QLabel(chip);
  QFont font = name->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * kLarger);
  name->setFont(font);
  auto* row = new QHBoxLayout;
  row->addWidget(name);
  row->addSpacing(8);
  row->addWidget(new QLabel(line), 0, Qt::AlignBottom);
  row->addStretch();
  for (QWidget* box : boxes) row->addWidget(box);
  return row;
}

Readout* ChipReadout(FormKit& kit, const ChipValue& value) {
  Readout* readout = kit.Readout(value.control, value.index);
  readout->Name()->setText(value.name);
  PressLabel* text = readout->Value();
  text->setForegroundRole(QPalette::Text);
  text->setBackgroundRole(QPalette::Base);
  text->setAutoFillBackground(true);
  KeepSize(text, value.letters);
  if (!value.fills) readout->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
  return readout;
}

QLabel* ChipNumber(FormKit& kit, std::string_view control, int index, int letters) {
  PressLabel* label = kit.Label(control, index);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  KeepSize(label, letters);
  return label;
}

QFrame* ChipScreen() {
  QPalette dark(kScreenFrame, kScreenGround);
  dark.setColor(QPalette::WindowText, kScreenText);
  dark.setColor(QPalette::Text, kScreenValue);
  dark.setColor(QPalette::Base, Qt::black);
  auto* screen = new QFrame;
  screen->setPalette(dark);
  screen->setAutoFillBackground(true);
  screen->setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
  return screen;
}

QFrame* ChannelScreen(FormKit& kit, QWidget* head, std::string_view scope, int index,
                      const std::vector<ChipValue>& values, ValuePlace place) {
  QFrame* screen = ChipScreen();
  auto* column = new QVBoxLayout(screen);
  column->setContentsMargins(8, 4, 8, 8);
  column->setSpacing(4);
  auto* top = new QHBoxLayout;
  top->addWidget(head);
  top->addStretch();
  column->addLayout(top);
  auto* row = new QHBoxLayout;
  row->addWidget(kit.Scope(scope, index, {.grows = true}), 1);
  column->addLayout(row, 1);
  if (place == ValuePlace::Above) {
    for (const ChipValue& value : values) top->addWidget(ChipReadout(kit, value));
  } else {
    row->addWidget(ValueGrid(kit, values));
  }
  return screen;
}

QGridLayout* NineScreens(FormKit& kit, std::string_view boxes,
                         const std::function<std::vector<ChipValue>(int)>& values) {
  constexpr int kChannels = 9, kInARow = 3;
  auto* grid = new QGridLayout;
  for (int c = 0; c < kChannels; ++c) {
    QWidget* head = kit.Check(boxes, c);
    grid->addWidget(ChannelScreen(kit, head, "Pic1", c, values(c), ValuePlace::Above), c / kInARow,
                    c % kInARow);
  }
  return grid;
}

void AlignScopes(QWidget* window) {
  int widest = 0;
  const auto parts = window->findChildren<QWidget*>(kValues);
  for (const QWidget* part : parts) widest = std::max(widest, part->sizeHint().width());
  for (QWidget* part : parts) part->setFixedWidth(widest);
}

RegisterGrid* ChipRegisters(FormKit& kit, std::string_view control, const QStringList& rows) {
  constexpr int kColumns = 16, kDigits = 3;
  RegisterGrid* grid = kit.Registers(control, kColumns, kDigits);
  grid->setAccessibleName(QCoreApplication::translate("quoll::ChipLayout", "Registers"));
  grid->ShowHeaders();
  for (int row = 0; row < grid->rowCount() && row < rows.size(); ++row) {
    QTableWidgetItem* header = grid->verticalHeaderItem(row);
    header->setText(header->text() + "  " + rows[row] + " ");
  }
  grid->verticalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  grid->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Maximum);  // on a small screen it scrolls
  return grid;
}

QLabel* ScreenTitle(const QString& text) {
  auto* title = new QLabel(text);
  QFont font = title->font();
  font.setBold(true);
  title->setFont(font);
  return title;
}

void AddSlider(QGridLayout* grid, int row, const QString& name, QSlider* slider, QWidget* number,
               int column) {
  slider->setMinimumWidth(90);
  grid->addWidget(NameFor(name, slider), row, column);
  grid->addWidget(slider, row, column + 1);
  grid->setColumnStretch(column + 1, 1);
  grid->addWidget(number, row, column + 2);
}

QLabel* NameFor(const QString& text, QWidget* widget) {
  auto* label = new QLabel(text);
  label->setBuddy(widget);
  return label;
}

void ShownBy(QCheckBox* box, QWidget* part) {
  part->hide();
  QObject::connect(box, &QCheckBox::toggled, part, [part, given = QSize()](bool shown) mutable {
    QWidget* window = part->window();
    const QSize hint = window->sizeHint(), before = window->size();
    part->setVisible(shown);
    window->layout()->activate();
    if (!window->isVisible() || window->isMaximized()) return;
    // What hiding has given, which may be less than the part would like, showing takes back.
    const bool back = shown && given.isValid();
    window->resize(before + (back ? given : window->sizeHint() - hint));
    given = shown ? QSize() : before - window->size();
  });
}

}  // namespace quoll
