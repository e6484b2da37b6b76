#include "desktop/windows/ToolsWindow.h"

#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

#include "desktop/widgets/DrawnKeyboard.h"
#include "desktop/widgets/KeyCap.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

QLineEdit* Narrow(QLineEdit* box) {
  box->setMaximumWidth(box->fontMetrics().horizontalAdvance("00000000"));
  return box;
}

}  // namespace

ToolsWindow::ToolsWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow), keyboard(new DrawnKeyboard) {
  BindKeys();
  auto* numbers = new QFormLayout;
  QLineEdit* code = Narrow(kit.Text("Text1"));
  code->setReadOnly(true);
  numbers->addRow(tr("Key code"), code);
  numbers->addRow(tr("Paging value"), Narrow(kit.Text("Text2")));
  auto* below = new QHBoxLayout;
  below->addLayout(numbers);
  below->addStretch();
  below->addWidget(PagingBox());
  auto* column = new QVBoxLayout(this);
  column->addWidget(keyboard, 1);
  column->addLayout(below);
}

void ToolsWindow::BindKeys() {
  for (size_t i = 0; i < kToolKeys.size(); ++i) {
    const ToolKey& key = kToolKeys[i];
    KeyCap* cap = keyboard->Keys()[i];
    const int index = key.control == "Label1" ? key.code - kFirstKeyCode : 0;
    kit.binder.Bind(kit.binder.Ref(key.control, index), static_cast<PressLabel*>(cap));
    // A click leaves the focus where it is, and Tab comes to one key only.
    cap->setFocusPolicy(i == 0 ? Qt::TabFocus : Qt::NoFocus);
    const ControlRef held = kit.binder.Ref("Held", key.code);
    connect(cap, &KeyCap::HoldAsked, this, [this, held] {
      host.Act(m, [&] { SetTick(m, held, !m.tools.Held[static_cast<size_t>(held.index)]); });
    });
  }
}

void ToolsWindow::ShowRecord() {
  for (size_t i = 0; i < kToolKeys.size(); ++i) keyboard->Keys()[i]->SetHeld(m.tools.Held[kToolKeys[i].code]);
}

QWidget* ToolsWindow::PagingBox() {
  QGroupBox* box = FormKit::Frame("", tr("Memory pages"));
  auto* grid = new QGridLayout(box);
  int row = 0;
  for (const char* name : {"U0", "U1", "U2", "U3"}) AddRow(grid, row++, name);
  return box;
}

void ToolsWindow::AddRow(QGridLayout* grid, int row, const char* name) {
  grid->addWidget(new QLabel(name), row, 0);
  for (int option = 0; option < kit.Count(name); ++option)
    grid->addWidget(kit.Option(name, option), row, 1 + option);
}

}  // namespace quoll
