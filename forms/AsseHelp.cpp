// The opcode help: what the caret's line may go on like, and what an opcode does.
#include "core/Host.h"
#include "devtools/AsmLine.h"
#include "devtools/CodePage.h"
#include "devtools/OpcodeHelp.h"
#include "devtools/SourceText.h"
#include "devtools/ToolText.h"
#include "forms/Asse.h"
#include "forms/AsseParts.h"
#include "machine/Machine.h"

namespace quoll::asse {

namespace {

constexpr int32_t kDelay = 3;  // ticks of Timer1

// In code page 1250.
std::string SourceText(std::string_view utf8) { return Cp1250FromUtf8(utf8).value_or(std::string()); }

// The list follows the caret.
void Follow(Machine& m) {
  Asse& form = m.asse;
  const std::string_view text = form.source.RText1;
  const auto caret = static_cast<size_t>(form.editor.SelStart.value);
  if (caret == 0 || caret > text.size()) return;
  const LinePlace place = PlaceOfLine(text, LineOfPlace(text, caret));
  const std::string line = SourceText(text.substr(place.start, place.length));
  const std::string before = SourceText(text.substr(place.start, caret - place.start));

  // A line end before it: it may be any line of the source.
  const auto rows = OpcodeHelpList("\n" + line, 1 + before.size(), form.Check1);
  if (!rows) return;
  std::vector<std::string> entries;
  for (const std::string& row : *rows) entries.push_back(Utf8FromCp1250(row));
  form.help.List2.Fill(entries);
  if (rows->size() != 1) return;
  // A single opcode that begins like the line is chosen.
  const std::string statement = Strim(line);
  const std::string_view typed = Trim(std::string_view(statement).substr(0, statement.find('\'')));
  if (FindIgnoringCase(rows->front(), typed) != 0) return;
  form.help.List2.selected = 0;
  List2_Click(m);
}

void ShowFlag(Machine& m, size_t flag, char c) {
  AsseHelp& help = m.asse.help;
  help.Label7Look[flag].fore = static_cast<int32_t>(kFlagSlotColour);
  const FlagWord word = WordOfFlag(c);
  if (word.word.empty()) return m.host->MessageBox({&c, 1}, "error", MessageIcon::None);
  help.Label7[flag] = word.word;
  if (word.colour) help.Label7Look[flag].fore = static_cast<int32_t>(*word.colour);
}

}  // namespace

void RestartHelp(Machine& m) { m.asse.help.wait = kDelay; }

void StopHelp(Machine& m) { m.asse.help.wait = 0; }

void Timer1_Timer(Machine& m) {
  int32_t& wait = m.asse.help.wait;
  if (wait > 0 && --wait == 0) Follow(m);
}

void List2_Click(Machine& m) {
  AsseHelp& help = m.asse.help;
  const auto record = FindOpcodeRecord(SourceText(help.List2.Selected()));
  const OpcodeRecord shown = record.value_or(OpcodeRecord());
  help.Text7 = shown.flags;
  help.Text8 = shown.size;
  help.Text10 = shown.clock;
  help.Text11 = shown.description;
  if (!record) {
    help.Label7.fill({});
    help.Label7Look.fill({});
    return;
  }
  for (size_t flag = 0; flag < help.Label7.size() && flag < shown.flags.size(); ++flag)
    ShowFlag(m, flag, shown.flags[flag]);
}

void List2_DoubleClick(Machine& m) { m.host->SetClipboard(m.asse.help.List2.Selected()); }

}  // namespace quoll::asse
