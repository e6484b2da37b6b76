#include "desktop/windows/AssemblerSource.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QTextBlock>
#include <QVBoxLayout>

#include "desktop/QtHost.h"
#include "desktop/kit/FormKit.h"
#include "desktop/kit/QtText.h"
#include "desktop/widgets/CodeEditor.h"
#include "desktop/widgets/Colour.h"
#include "desktop/widgets/FindBar.h"
#include "desktop/widgets/PressLabel.h"
#include "desktop/windows/AssemblerPanes.h"
#include "devtools/CodePage.h"
#include "devtools/SourceText.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

// Characters at which Qt would begin a line where the source has none are shown as unknown ones.
QString ShownLine(std::string_view line) {
  QString text = ToQt(line);
  for (QChar& c : text)
    if (c == QChar::ParagraphSeparator || c == QChar(0xFDD0) || c == QChar(0xFDD1))
      c = QChar::ReplacementCharacter;
  return text;
}

QString ShownText(const std::string& source) { return ShownLine(WithLineEnd(source, "\n")); }

std::string LineOf(const QTextBlock& block) { return block.text().toStdString(); }

// Colours as "Format" gives them.
std::vector<CodeEditor::Piece> ColoursOf(int /*line*/, const QString& text) {
  // Characters beyond the code page count as one each, as they do in the editor.
  std::string letters;
  for (const QChar c : text) {
    const auto letter = Cp1250FromUtf8(QString(c).toStdString());
    letters += letter && letter->size() == 1 ? *letter : "?";
  }
  std::vector<CodeEditor::Piece> pieces;
  for (const ColouredText::Run& run : ColouredSource(letters).runs)
    pieces.push_back({static_cast<int>(run.start), ToColour(static_cast<int32_t>(run.colour))});
  return pieces;
}

// A caret's place in the record's text, in bytes.
int32_t BytePlace(const std::string& text, const QTextDocument& document, int position) {
  const QTextBlock block = document.findBlock(position);
  const LinePlace line = PlaceOfLine(text, static_cast<size_t>(block.blockNumber()));
  const QString before = block.text().left(position - block.position());
  return static_cast<int32_t>(line.start + before.toUtf8().size());
}

QString CodeName(SourceCode code) {
  switch (code) {
    case SourceCode::Cp1250: return "CP1250";
    case SourceCode::Utf8WithMark: return "UTF-8 BOM";
    case SourceCode::Utf8: break;
  }
  return "UTF-8";
}

}  // namespace

AssemblerSource::AssemblerSource(FormKit& kitOfWindow, QWidget* parent)
    : QWidget(parent),
      kit(kitOfWindow),
      editor(new CodeEditor(ColoursOf)),
      finder(new FindBar(editor)),
      place(new QLabel),
      file(new QLabel) {
  const ControlRef ref = kit.binder.Ref("RText1");
  NameWidget(editor, "RText1", ToQt(CaptionOf(ref)));
  kit.binder.BindLook(ref, editor);
  NameWidget(place, "CaretPlace", tr("Line and column"));
  NameWidget(file, "SourceFile", tr("File, code, state"));

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(SourceButtons(kit));
  column->addWidget(editor, 1);
  column->addWidget(finder);
  column->addWidget(Status());
  connect(editor, &CodeEditor::Edited, this, &AssemblerSource::TakeEdit);
  connect(editor, &CodeEditor::cursorPositionChanged, this, &AssemblerSource::TakeSelection);
  connect(editor, &CodeEditor::selectionChanged, this, &AssemblerSource::TakeSelection);
}

QWidget* AssemblerSource::Status() {
  auto* status = new QWidget;
  auto* row = new QHBoxLayout(status);
  row->setContentsMargins(0, 0, 0, 0);
  QLineEdit* pass = kit.Text("Text14");
  QLineEdit* text = kit.Text("Text13");
  for (QLineEdit* box : {pass, text}) {
    box->setReadOnly(true);
    box->setFocusPolicy(Qt::ClickFocus);
  }
  pass->setFixedWidth(8 * fontMetrics().horizontalAdvance('0'));
  text->setMinimumWidth(fontMetrics().horizontalAdvance("Internal Error P2!0000"));
  file->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  row->addWidget(pass);
  row->addWidget(text, 1);
  row->addWidget(kit.Label("Label1"));
  row->addWidget(kit.Label("Label2"));
  row->addWidget(place);
  row->addWidget(file, 1);
  return status;
}

void AssemblerSource::TakeEdit(int first, int count, int with) {
  std::vector<std::string> lines;
  QTextBlock block = editor->document()->findBlockByNumber(first);
  for (int i = 0; i < with; ++i, block = block.next()) lines.push_back(LineOf(block));
  kit.host.Act(kit.m, [&] {
    EditSource(kit.m, static_cast<size_t>(first), static_cast<size_t>(count), lines);
    texts = kit.m.asse.editor.texts;
  });
  TakeSelection();
}

void AssemblerSource::TakeSelection() {
  if (following || editor->EditPending() || texts != kit.m.asse.editor.texts) return;
  const QTextCursor cursor = editor->textCursor();
  const std::string& text = kit.m.asse.source.RText1;
  const int32_t start = BytePlace(text, *editor->document(), cursor.selectionStart());
  const int32_t end =
      cursor.hasSelection() ? BytePlace(text, *editor->document(), cursor.selectionEnd()) : start;
  kit.host.Act(kit.m, [&] { SelectSource(kit.m, start, end - start); });
}

void AssemblerSource::ShowSelection() {
  const AsseEditor& record = kit.m.asse.editor;
  const std::string_view text = kit.m.asse.source.RText1;
  const auto start = std::min(static_cast<size_t>(record.SelStart.value), text.size());
  const size_t line = LineOfPlace(text, start);
  const LinePlace of = PlaceOfLine(text, line);
  const auto column = ToQt(text.substr(of.start, start - of.start)).size();
  const std::string selected(text.substr(start, static_cast<size_t>(record.SelLength.value)));
  const auto length = ToQt(WithLineEnd(selected, "\n")).size();
  editor->SelectFrom(static_cast<int>(line), static_cast<int>(column), static_cast<int>(length));
}

void AssemblerSource::ShowStatus() {
  const Asse& form = kit.m.asse;
  const QTextCursor cursor = editor->textCursor();
  ShowText(place, tr("%1:%2").arg(cursor.blockNumber() + 1).arg(cursor.positionInBlock() + 1));
  const bool changed = form.editor.texts != form.editor.savedTexts;
  const QString name = form.source.folder.empty() ? QString() : ToQt(form.files.Text16);
  const QString cut = form.listing.CutOff ? tr("too long: the end is not compiled  ") : QString();
  ShowText(file, tr("%1%2  %3%4").arg(cut, CodeName(form.source.code), name, changed ? "*" : ""));
  file->setToolTip(file->text());
}

void AssemblerSource::ShowRecord() {
  const AsseEditor& record = kit.m.asse.editor;
  following = true;
  if (texts != record.texts) {
    editor->Show(ShownText(kit.m.asse.source.RText1));
    texts = record.texts;
  }
  if (selections != record.selections) {
    selections = record.selections;
    ShowSelection();
  }
  following = false;
  editor->MarkError(record.ErrorLine);
  ShowStatus();
}

void AssemblerSource::GoToError() {
  const int line = kit.m.asse.editor.ErrorLine;
  if (line == 0) return;
  editor->SelectFrom(line - 1, 0, 0);
  editor->setFocus();
}

}  // namespace quoll
