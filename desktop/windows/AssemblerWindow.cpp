#include "desktop/windows/AssemblerWindow.h"

#include <QFileInfo>
#include <QGridLayout>
#include <QImageReader>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSplitter>
#include <QTabWidget>

#include "desktop/kit/Drop.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/CodeEditor.h"
#include "desktop/widgets/FindBar.h"
#include "desktop/windows/AssemblerListing.h"
#include "desktop/windows/AssemblerPanes.h"
#include "desktop/windows/AssemblerPictures.h"
#include "desktop/windows/AssemblerSource.h"
#include "forms/FileActions.h"
#include "machine/Machine.h"

namespace quoll {

AssemblerWindow::AssemblerWindow(FormKit& kitOfWindow)
    : FormWindow(kitOfWindow),
      source(new AssemblerSource(kit)),
      listing(new AssemblerListing(kit)),
      pictures(new AssemblerPictures(kit)),
      tabs(new QTabWidget),
      files(SourceFilesPane(kit)) {
  escapeCloses = false;
  setAcceptDrops(true);
  press = files->findChild<QPushButton*>("Command14");
  tabs->setAccessibleName(tr("Listing, symbols, disassembly, pictures"));

  auto* split = new QSplitter(Qt::Horizontal);
  split->setChildrenCollapsible(false);
  split->addWidget(Left());
  split->addWidget(Right());
  split->setStretchFactor(0, 3);
  split->setStretchFactor(1, 2);
  split->setSizes({sizeHint().width() * 3 / 5, sizeHint().width() * 2 / 5});

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(ProgramButtons(kit));
  buttons->addStretch();
  buttons->addWidget(Converter());
  auto* column = new QVBoxLayout(this);
  column->setMenuBar(Menus());
  column->addLayout(buttons);
  column->addWidget(split, 1);
}

QWidget* AssemblerWindow::Left() {
  auto* left = new QSplitter(Qt::Vertical);
  left->setChildrenCollapsible(false);
  left->addWidget(files);
  left->addWidget(source);
  left->setStretchFactor(1, 1);
  return left;
}

QWidget* AssemblerWindow::Right() {
  tabs->addTab(listing, tr("&Listing"));
  tabs->addTab(SymbolPane(kit), tr("S&ymbols"));
  tabs->addTab(DisassemblyPane(kit), tr("&Disassembly"));
  auto* scrolled = new QScrollArea;
  scrolled->setWidgetResizable(true);
  scrolled->setFrameShape(QFrame::NoFrame);
  scrolled->setWidget(pictures);
  tabs->addTab(scrolled, tr("P&icture"));
  picturePane = scrolled;
  QPlainTextEdit* help = kit.Memo("Text4");
  help->setReadOnly(true);
  auto* right = new QSplitter(Qt::Vertical);
  right->setChildrenCollapsible(false);
  right->addWidget(help);
  right->addWidget(tabs);
  right->addWidget(OpcodeHelpPane(kit));
  right->setStretchFactor(1, 1);
  right->setSizes({sizeHint().height() / 4, sizeHint().height() * 2 / 3, sizeHint().height() / 4});
  return right;
}

QWidget* AssemblerWindow::Converter() {
  auto* converter = new QWidget;
  converter->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
  auto* row = new QHBoxLayout(converter);
  row->setContentsMargins(0, 0, 0, 0);
  for (const char* control : {"Text5", "Text6"}) {
    QLineEdit* box = kit.Text(control);
    box->setToolTip(tr("Enter converts the number"));
    box->setMaximumWidth(12 * fontMetrics().horizontalAdvance('0'));
    row->addWidget(new QLabel(box->accessibleName()));
    row->addWidget(box);
  }
  return converter;
}

void AssemblerWindow::PressByKey(QMenu* menu, const char* control, const QKeySequence& keys) {
  const ControlRef ref = kit.binder.Ref(control);
  QAction* action = menu->addAction(ToQt(CaptionOf(ref)), this,
                                    [this, ref] { host.Act(m, [this, ref] { Press(m, ref); }); });
  action->setShortcut(keys);
}

QMenuBar* AssemblerWindow::Menus() {
  QMenuBar* bar = kit.Menus();
  const QList<QAction*> menus = bar->actions();
  QMenu* edit = menus[1]->menu();
  CodeEditor* editor = source->Editor();
  FindBar* finder = source->Finder();
  edit->addSeparator();
  edit->addAction(tr("&Undo"), editor, &CodeEditor::undo)->setShortcut(QKeySequence::Undo);
  edit->addAction(tr("&Redo"), editor, &CodeEditor::redo)->setShortcut(QKeySequence::Redo);
  edit->addSeparator();
  edit->addAction(tr("&Find and replace..."), finder, &FindBar::Open)->setShortcut(QKeySequence::Find);
  edit->addAction(tr("Find &next"), finder, [finder] { finder->Find(); })->setShortcut(Qt::Key_F3);
  edit->addAction(tr("Find &previous"), finder, [finder] { finder->Find(QTextDocument::FindBackward); })
      ->setShortcut(Qt::SHIFT | Qt::Key_F3);
  edit->addAction(tr("To the failing &line"), source, &AssemblerSource::GoToError)->setShortcut(Qt::Key_F4);
  edit->addSeparator();
  edit->addAction(tr("&Larger"), editor, [editor] { editor->zoomIn(); })->setShortcut(QKeySequence::ZoomIn);
  edit->addAction(tr("&Smaller"), editor, [editor] { editor->zoomOut(); })
      ->setShortcut(QKeySequence::ZoomOut);

  auto* program = new QMenu(tr("&Program"), bar);
  PressByKey(program, "Command1", Qt::Key_F7);
  PressByKey(program, "Command6", Qt::Key_F6);
  PressByKey(program, "Command13", Qt::Key_F5);
  PressByKey(program, "Command12", Qt::SHIFT | Qt::Key_F5);
  PressByKey(program, "Command7", {});
  bar->insertMenu(menus[2], program);

  for (const auto& [name, keys] : {std::pair{"xOpen", QKeySequence(QKeySequence::Open)},
                                   {"xSave", QKeySequence(QKeySequence::Save)},
                                   {"xhelp", QKeySequence(Qt::Key_F1)}}) {
    QAction* action = bar->findChild<QAction*>(name);
    if (action != nullptr) action->setShortcut(keys);
  }
  return bar;
}

void AssemblerWindow::ShowRecord() {
  source->ShowRecord();
  listing->ShowRecord();
  pictures->ShowRecord();
  const AsseFiles& panel = m.asse.files;
  const QString caption = ToQt(panel.Command14Caption);
  if (!caption.isEmpty() && press->text() != caption) {
    press->setText(caption);
    press->setAccessibleName(caption);
  }
  const QString now = panel.Frame2Look.visible ? caption : QString();
  if (filesShown == now) return;
  filesShown = now;
  if (now.isEmpty()) return source->Editor()->setFocus();
  files->findChild<QWidget*>(now == "SAVE" ? "Text16" : "File1")->setFocus();
}

void AssemblerWindow::Appear() {
  FormWindow::Appear();
  source->Editor()->setFocus();
}

// Escape leaves what lies over the source; the window stays.
void AssemblerWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && m.asse.files.Frame2Look.visible)
    return host.Act(m, [this] { Press(m, kit.binder.Ref("Command15")); });
  FormWindow::keyPressEvent(event);
}

void AssemblerWindow::dragEnterEvent(QDragEnterEvent* event) { TakeDrag(event); }

// Pictures are for the import, the machine's own files for the machine; any other is a source.
void AssemblerWindow::dropEvent(QDropEvent* event) {
  const auto dropped = DroppedFile(event);
  if (!dropped) return;
  const std::string suffix = QFileInfo(ToQt(*dropped)).suffix().toLower().toStdString();
  host.Act(m, [&] {
    if (QImageReader::supportedImageFormats().contains(suffix.c_str())) {
      if (OpenPicture(m, *dropped)) tabs->setCurrentWidget(picturePane);
    } else if (suffix != "asm" && suffix != "tvcasm" && FindFileAction("*." + suffix) != nullptr) {
      OpenBySuffix(m, *dropped);
    } else {
      OpenSource(m, *dropped);
    }
  });
}

}  // namespace quoll
