#include "forms/TPrint.h"

#include <algorithm>

#include "cards/CodePage852.h"
#include "core/Files.h"
#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

void Command1_Click(Machine& m) {
  const std::string printer = m.tprint.Combo1.Selected();
  if (printer.empty() || printer == TPrint::kNoPrinter) return;
  const std::string error = m.host->Print(printer, PrintedText(m.printer.printed));
  if (!error.empty()) m.host->MessageBox(error, "QUOLLEMU", MessageIcon::Exclamation);
}

void Command2_Click(Machine& m) { ClearPrinted(m.printer); }

void Command3_Click(Machine& m) {
  if (m.tprint.Text2.empty()) return;
  const std::string text = PrintedText(m.printer.printed);
  SaveFileOrTell(*m.host, m.tprint.Text2, {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
}

// The user's own text in the place of what was there.
void Text1_Change(Machine& m) { ++m.printer.beginnings; }

constexpr On<&Machine::tprint> f;
constexpr On<&Machine::printer> printer;

constexpr std::array kControls{
    f.Combo<&TPrint::Combo1>("Combo1", "Printer"),
    Button("Command1", "Print", Command1_Click),
    Button("Command2", "Clear", Command2_Click),
    Button("Command3", "Save as text", Command3_Click),
    printer.Text<&Printer::printed>("Text1", "What was printed", Text1_Change),
    f.Text<&TPrint::Text2>("Text2", "File name").Enter(Command3_Click),
};

}  // namespace

void TPrint_Show(Machine& m) {
  ListBox& list = m.tprint.Combo1;
  const std::string chosen = list.Selected();
  std::vector<std::string> printers = m.host->Printers();
  printers.insert(printers.begin(), std::string(TPrint::kNoPrinter));
  list.Fill(std::move(printers));
  const auto found = std::ranges::find(list.entries, chosen);
  list.selected = found == list.entries.end() ? 0 : static_cast<int32_t>(found - list.entries.begin());
  ShowForm(m.tprint.window);
}

constexpr Form kTPrint{"TPrint", "Printer", f.State, kControls};

}  // namespace quoll
