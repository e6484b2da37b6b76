#include "desktop/windows/AssemblerPanes.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "desktop/kit/FormKit.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/FileList.h"
#include "desktop/widgets/PressLabel.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

QString Tr(const char* text) { return QCoreApplication::translate("AssemblerPanes", text); }

QFont Fixed(const QFont& like) {
  QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  fixed.setPointSizeF(like.pointSizeF());
  return fixed;
}

// A box whose text is only read.
QLineEdit* ReadBox(FormKit& kit, const char* control, int characters) {
  QLineEdit* box = kit.Text(control);
  box->setReadOnly(true);
  box->setFixedWidth((characters + 2) * box->fontMetrics().horizontalAdvance('0'));
  return box;
}

// Words of the six flags, light on dark: their colours are chosen for that.
QWidget* FlagWords(FormKit& kit) {
  auto* words = new QWidget;
  auto* grid = new QGridLayout(words);
  grid->setContentsMargins(0, 0, 0, 0);
  const ControlRef names = kit.binder.Ref("Label7");
  for (int flag = 0; flag < 6; ++flag) {
    const QString name = ToQt(CaptionOf({names.form, names.control, flag}));
    PressLabel* word = kit.Label("Label7", flag);
    word->setStyleSheet("background: #404040; padding: 1px 3px");
    grid->addWidget(new QLabel(name), flag % 3, flag / 3 * 2);
    grid->addWidget(word, flag % 3, flag / 3 * 2 + 1);
  }
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(3, 1);
  return words;
}

// As narrow as the captions allow.
QWidget* Row(FormKit& kit, std::initializer_list<const char*> buttons) {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  for (const char* name : buttons) {
    QPushButton* button = kit.Button(name);
    button->setMinimumWidth(button->fontMetrics().horizontalAdvance(button->text()) + 12);
    layout->addWidget(button);
  }
  layout->addStretch();
  return row;
}

}  // namespace

QWidget* OpcodeHelpPane(FormKit& kit) {
  auto* pane = new QWidget;
  FileList* list = kit.List("List2");
  list->setFont(Fixed(pane->font()));
  list->setMinimumWidth(14 * list->fontMetrics().horizontalAdvance('0'));
  list->setToolTip(Tr("A double click copies the instruction"));
  auto* left = new QVBoxLayout;
  left->addWidget(list, 1);
  auto* below = new QHBoxLayout;
  below->addWidget(kit.Check("Check1"));
  below->addWidget(kit.Label("Label3"), 1);
  left->addLayout(below);

  auto* boxes = new QGridLayout;
  boxes->addWidget(new QLabel(Tr("Flags")), 0, 0);
  boxes->addWidget(ReadBox(kit, "Text7", 6), 0, 1);
  boxes->addWidget(new QLabel("Size (byte):"), 0, 2);
  boxes->addWidget(ReadBox(kit, "Text8", 1), 0, 3);
  boxes->addWidget(new QLabel("Colock cycles:"), 1, 0, 1, 2);
  boxes->addWidget(ReadBox(kit, "Text10", 5), 1, 2, 1, 2);
  boxes->addWidget(FlagWords(kit), 2, 0, 1, 5);
  QPlainTextEdit* description = kit.Memo("Text11");
  description->setReadOnly(true);
  description->setMinimumHeight(3 * pane->fontMetrics().lineSpacing());
  boxes->addWidget(description, 3, 0, 1, 5);
  boxes->setRowStretch(3, 1);
  boxes->setColumnStretch(4, 1);

  auto* row = new QHBoxLayout(pane);
  row->setContentsMargins(0, 0, 0, 0);
  row->addLayout(left, 1);
  row->addLayout(boxes, 1);
  return pane;
}

QWidget* DisassemblyPane(FormKit& kit) {
  auto* pane = new QWidget;
  auto* top = new QHBoxLayout;
  auto* caption = new QLabel(Tr("Address"));
  top->addWidget(caption);
  top->addWidget(kit.Text("Text15"));
  top->addWidget(kit.Button("Command8"));
  QPlainTextEdit* text = kit.Memo("Text9");
  text->setFont(Fixed(pane->font()));
  text->setReadOnly(true);
  auto* column = new QVBoxLayout(pane);
  column->addLayout(top);
  column->addWidget(text, 1);
  return pane;
}

QWidget* SymbolPane(FormKit& kit) {
  auto* pane = new QWidget;
  auto* column = new QVBoxLayout(pane);
  FileList* symbols = kit.List("List3");
  symbols->setFont(Fixed(pane->font()));
  symbols->setToolTip(Tr("A double click, or Enter, leads to the symbol in the source"));
  column->addWidget(symbols, 1);
  column->addWidget(kit.List("List1"), 1);
  return pane;
}

QWidget* SourceFilesPane(FormKit& kit) {
  auto* pane = new QFrame;
  pane->setFrameShape(QFrame::StyledPanel);
  NameWidget(pane, "Frame2", Tr("File panel"));
  kit.binder.BindLook(kit.binder.Ref("Frame2"), pane);
  auto* grid = new QGridLayout(pane);
  grid->addWidget(kit.Combo("Drive1"), 0, 0);
  grid->addWidget(kit.List("Dir1"), 1, 0, 4, 1);
  grid->addWidget(kit.List("File1"), 0, 1, 5, 1);
  auto* boxes = new QFormLayout;
  QComboBox* type = kit.Combo("Combo1");
  type->setPlaceholderText("asm, tvcasm");
  boxes->addRow(Tr("Type"), type);
  boxes->addRow(Tr("Name"), kit.Text("Text16"));
  grid->addLayout(boxes, 0, 2, 2, 2);
  grid->addWidget(kit.Button("Command14"), 3, 2);
  grid->addWidget(kit.Button("Command15"), 3, 3);
  grid->setColumnStretch(0, 1);
  grid->setColumnStretch(1, 1);
  grid->setRowStretch(4, 1);
  return pane;
}

QWidget* ProgramButtons(FormKit& kit) {
  return Row(kit, {"Command1", "Command6", "Command13", "Command12", "Command7"});
}

QWidget* SourceButtons(FormKit& kit) {
  return Row(kit, {"Command2", "Command3", "Command4", "Command5", "Command11"});
}

}  // namespace quoll
