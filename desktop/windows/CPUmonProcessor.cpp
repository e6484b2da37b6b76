#include "desktop/windows/CPUmonProcessor.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "desktop/kit/FormKit.h"
#include "desktop/widgets/Colour.h"
#include "desktop/widgets/FixedFont.h"
#include "desktop/widgets/PressLabel.h"
#include "desktop/widgets/ValueBar.h"
#include "desktop/windows/ChipLayout.h"
#include "forms/CPUmon.h"

namespace quoll {

namespace {

template <class Box, size_t kCount>
void MarkChanged(const std::array<Box*, kCount>& boxes, const std::array<std::string, kCount>* before,
                 const std::array<std::string, kCount>& now) {
  for (size_t i = 0; i < kCount; ++i) {
    const bool changed = before != nullptr && (*before)[i] != now[i];
    if (boxes[i]->property("changed").toBool() == changed) continue;
    boxes[i]->setProperty("changed", changed);
    QPalette colours;
    if (changed) {
      for (const auto role : {QPalette::Base, QPalette::Window}) colours.setColor(role, kChangedGround);
      for (const auto role : {QPalette::Text, QPalette::WindowText}) colours.setColor(role, kChangedText);
    }
    boxes[i]->setPalette(colours);
    boxes[i]->setAccessibleDescription(changed ? CPUmonProcessor::tr("changed") : QString());
  }
}

}  // namespace

QLineEdit* MonitorBox(FormKit& kit, const char* control, int index, int characters) {
  QLineEdit* box = kit.Text(control, index);
  // There is a Text11 beside the second one of Text1.
  if (index > 0) box->setObjectName(QString("%1(%2)").arg(control).arg(index));
  KeepSize(box, characters, 14);
  box->setAlignment(Qt::AlignCenter);
  QObject::connect(box, &QLineEdit::returnPressed, box, &QLineEdit::selectAll);
  return box;
}

CPUmonProcessor::CPUmonProcessor(FormKit& kitOfWindow) : kit(kitOfWindow) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(RegisterFrame());
  column->addWidget(FlagFrame());
  column->addWidget(WideFrame());
  column->addWidget(SpecialFrame());
  column->addStretch();
}

QGroupBox* CPUmonProcessor::RegisterFrame() {
  constexpr int kHalf = 7;
  QGroupBox* frame = FormKit::Frame("Registers", tr("8-bit registers"));
  auto* grid = new QGridLayout(frame);
  grid->setVerticalSpacing(2);
  for (int i = 0; i < static_cast<int>(registers.size()); ++i) {
    QLineEdit* box = MonitorBox(kit, "Text1", i, 4);
    registers[static_cast<size_t>(i)] = box;
    const int column = i / kHalf * 3;
    grid->addWidget(NameFor(box->accessibleName(), box), i % kHalf, column);
    grid->addWidget(box, i % kHalf, column + 1);
  }
  grid->setColumnStretch(2, 1);
  return frame;
}

QGroupBox* CPUmonProcessor::FlagFrame() {
  constexpr int kFlags = 8;
  QGroupBox* frame = FormKit::Frame("Flags", tr("Flags, accumulator"));
  auto* grid = new QGridLayout(frame);
  grid->setHorizontalSpacing(2);
  grid->setVerticalSpacing(2);
  for (int i = 0; i < static_cast<int>(flags.size()); ++i) {
    QLineEdit* box = MonitorBox(kit, "Text2", i, 1);
    flags[static_cast<size_t>(i)] = box;
    const int row = i / kFlags + 1, column = i % kFlags + 1;
    if (row == 1) grid->addWidget(NameFor(box->accessibleName(), box), 0, column, Qt::AlignCenter);
    grid->addWidget(box, row, column);
  }
  grid->addWidget(new QLabel(tr("F")), 1, 0);
  grid->addWidget(new QLabel(tr("F'")), 2, 0);
  grid->addWidget(new QLabel(tr("A")), 3, 0);
  for (int i = 0; i < static_cast<int>(bits.size()); ++i) {
    PressLabel* bit = kit.Label("TextA", i);
    bit->setAccessibleName(tr("Accumulator, bit %1").arg(7 - i));
    KeepSize(bit, 1, 14);
    bit->setAlignment(Qt::AlignCenter);
    bit->setAutoFillBackground(true);
    bits[static_cast<size_t>(i)] = bit;
    grid->addWidget(bit, 3, i + 1);
  }
  return frame;
}

QGroupBox* CPUmonProcessor::WideFrame() {
  constexpr int kWide = 4;
  QGroupBox* frame = FormKit::Frame("Wide", tr("16-bit registers"));
  auto* grid = new QGridLayout(frame);
  grid->setVerticalSpacing(2);
  for (int i = 0; i < kWide; ++i) {
    QLineEdit* box = MonitorBox(kit, "Text3", i, 6);
    words[static_cast<size_t>(i)] = box;
    grid->addWidget(NameFor(box->accessibleName(), box), i / 2, i % 2 * 3);
    grid->addWidget(box, i / 2, i % 2 * 3 + 1);
  }
  grid->setColumnStretch(2, 1);
  grid->addWidget(kit.Bar("Shape2"), 2, 0, 1, 5);
  return frame;
}

QGroupBox* CPUmonProcessor::SpecialFrame() {
  QGroupBox* frame = FormKit::Frame("Special", tr("Special registers"));
  auto* grid = new QGridLayout(frame);
  grid->setVerticalSpacing(2);
  const auto add = [grid](QLineEdit* box, int row, int column) {
    grid->addWidget(NameFor(box->accessibleName(), box), row, column);
    grid->addWidget(box, row, column + 1);
  };
  for (int i = 0; i < 2; ++i) {
    words[static_cast<size_t>(4 + i)] = MonitorBox(kit, "Text3", 4 + i, 4);
    add(words[static_cast<size_t>(4 + i)], 0, i * 2);
  }
  for (int i = 0; i < static_cast<int>(modes.size()); ++i) {
    modes[static_cast<size_t>(i)] = MonitorBox(kit, "Text4", i, 2);
    add(modes[static_cast<size_t>(i)], 2, i * 2);
  }
  grid->addWidget(kit.Bar("Shape4"), 1, 0, 1, 6);
  auto* lamps = new QHBoxLayout;
  for (const char* lamp : {"Label8", "Label7"}) {
    lamps->addWidget(kit.Label(lamp));
    lamps->addStretch();
  }
  grid->addLayout(lamps, 3, 0, 1, 6);
  return frame;
}

void CPUmonProcessor::MarkChanges(const CPUmonShown* before, const CPUmonShown& now) {
  const auto part = [before](auto member) { return before != nullptr ? &(before->*member) : nullptr; };
  MarkChanged(bits, part(&CPUmonShown::TextA), now.TextA);
  MarkChanged(registers, part(&CPUmonShown::Text1), now.Text1);
  MarkChanged(flags, part(&CPUmonShown::Text2), now.Text2);
  MarkChanged(words, part(&CPUmonShown::Text3), now.Text3);
  MarkChanged(modes, part(&CPUmonShown::Text4), now.Text4);
}

}  // namespace quoll
