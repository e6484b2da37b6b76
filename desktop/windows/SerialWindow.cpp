#include "desktop/windows/SerialWindow.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "desktop/Printing.h"
#include "desktop/widgets/PressLabel.h"

namespace quoll {

SerialWindow::SerialWindow(FormKit& kitOfWindow) : FormWindow(kitOfWindow) {
  auto* below = new QHBoxLayout;
  below->addWidget(SendBox(), 1);
  below->addWidget(CameraBox());
  auto* column = new QVBoxLayout(this);
  column->addLayout(LineRow());
  column->addWidget(ReceivedBox(), 1);
  column->addLayout(below);
}

QLayout* SerialWindow::LineRow() {
  auto* row = new QHBoxLayout;
  row->addWidget(kit.Button("Command1"));
  row->addWidget(kit.Button("Command2"));
  row->addWidget(kit.Label("Label6"), 1);
  row->addWidget(kit.Button("Command5"));
  return row;
}

QLayout* SerialWindow::Count(const char* name, const char* count) {
  auto* row = new QHBoxLayout;
  row->addWidget(kit.Label(name));
  row->addWidget(kit.Label(count), 1);
  return row;
}

QWidget* SerialWindow::ReceivedBox() {
  QGroupBox* box = FormKit::Frame("", tr("Received, not yet read by the machine"));
  QPlainTextEdit* text = kit.Memo("Text1");
  text->setReadOnly(true);
  text->setFont(PrinterFont());
  text->setWordWrapMode(QTextOption::WrapAnywhere);
  auto* column = new QVBoxLayout(box);
  column->addLayout(Count("Label1", "Label4"));
  column->addWidget(text);
  return box;
}

QWidget* SerialWindow::SendBox() {
  QGroupBox* box = FormKit::Frame("", tr("To be sent"));
  QLineEdit* text = kit.Text("Text2");
  text->setMinimumWidth(text->fontMetrics().horizontalAdvance("0000000000000000"));
  auto* row = new QHBoxLayout;
  row->addWidget(text, 1);
  row->addWidget(kit.Button("Command8"));
  auto* column = new QVBoxLayout(box);
  column->addLayout(Count("Label2", "Label5"));
  column->addLayout(row);
  column->addStretch();
  return box;
}

// The keys lie as the camera turns.
QWidget* SerialWindow::CameraBox() {
  QGroupBox* box = FormKit::Frame("", tr("Camera"));
  auto* grid = new QGridLayout(box);
  grid->addWidget(kit.Label("Label3"), 0, 0, 1, 3, Qt::AlignHCenter);
  grid->addWidget(kit.Button("Command6"), 1, 1);
  grid->addWidget(kit.Button("Command3"), 2, 0);
  grid->addWidget(kit.Button("Command4"), 2, 2);
  grid->addWidget(kit.Button("Command7"), 3, 1);
  return box;
}

}  // namespace quoll
