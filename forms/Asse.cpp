#include "forms/Asse.h"

#include <cstdio>

#include "core/FormTable.h"
#include "core/NumberText.h"
#include "devtools/CodePage.h"
#include "devtools/DisAsm.h"
#include "devtools/ToolText.h"
#include "forms/AsseParts.h"
#include "loop/RunLoop.h"
#include "machine/Machine.h"
#include "machine/MachineInit.h"

namespace quoll {

namespace {

using namespace asse;
using namespace std::chrono_literals;

constexpr int32_t kStart = 10000;  // where programs begin

// "RUN"
void Command6_Click(Machine& m) { m.z80.PC = kStart; }

// "RUN CPU"
void Command13_Click(Machine& m) {
  m.run.CpuRunning = 1;
  RunLoop(m);
}

// "STOP CPU"
void Command12_Click(Machine& m) { m.run.CpuRunning = 0; }

// "RESET"
void Command7_Click(Machine& m) {
  m.MemImage[kWarmStartMark] = 0xFF;
  CpuReset(m);
  MachineReset(m);
}

// "Disassemly"
void Command8_Click(Machine& m) {
  constexpr int32_t kInstructions = 500;
  Asse& form = m.asse;
  form.Text9.clear();
  const auto read = [&m](int32_t address) { return MemRead(m, address); };
  form.Text9 = Utf8FromCp1250(DisAsm(read, NumberOfText(form.Text15), kInstructions, 1));
}

std::string Hex(int32_t value) {
  char text[9];
  std::snprintf(text, sizeof text, "%X", static_cast<uint32_t>(value));
  return text;
}

void Text5_Enter(Machine& m) {
  const std::optional<int32_t> value = RoundedToInt32(NumberValue(m.asse.Text5));
  if (!value) return;
  m.asse.Text5 = std::to_string(*value);
  m.asse.Text6 = Hex(*value);
}

void Text6_Enter(Machine& m) {
  const std::optional<int32_t> value = HexValue(m.asse.Text6);
  if (value) m.asse.Text5 = std::to_string(*value);
}

void xhelp_Click(Machine& m) { m.asse.Text4Look.visible = !m.asse.Text4Look.visible; }

constexpr On<&Machine::asse> f;
constexpr On<&Machine::asse, &Asse::source> source;
constexpr On<&Machine::asse, &Asse::editor> editor;
constexpr On<&Machine::asse, &Asse::listing> listing;
constexpr On<&Machine::asse, &Asse::help> help;
constexpr On<&Machine::asse, &Asse::files> files;
constexpr auto kFrame2 = files.Look<&AsseFiles::Frame2Look>;

constexpr std::array kControls{
    MenuEntry("File", "xOpen", "Open", xOpen_Click),
    MenuEntry("File", "xSave", "Save", xSave_Click),
    MenuEntry("Edit", "xEdit", "Edit", xEdit_Click),
    MenuEntry("Edit", "xFormat", "Format", Format),
    MenuEntry("Help", "xhelp", "Help", xhelp_Click),

    Button("Command1", "Compile", Command1_Click),
    Button("Command6", "RUN", Command6_Click),
    Button("Command13", "RUN CPU", Command13_Click),
    Button("Command12", "STOP CPU", Command12_Click),
    Button("Command7", "RESET", Command7_Click),
    Button("Command2", "Clear", Command2_Click),
    Button("Command3", "Del TABS", Command3_Click),
    Button("Command4", "Ucase", Command4_Click),
    Button("Command5", "Lcase", Command5_Click),
    Button("Command11", "Convert tvcasm", Command11_Click),

    source.Text<&AsseSource::RText1>("RText1", "Source", RText1_Change)
        .Looks(editor.Look<&AsseEditor::RText1Look>),
    editor.Scroll<&AsseEditor::SelStart>("SelStart", "Selection of the source: start", SelStart_Change),
    editor.Scroll<&AsseEditor::SelLength>("SelLength", "Selection of the source: length"),

    f.Check<&Asse::Check2>("Check2", "Debug", Check2_Click),
    listing.Text<&AsseListing::RText2>("RText2", "Listing")
        .DoubleClick(RText2_DoubleClick)
        .Looks(listing.Look<&AsseListing::RText2Look>),
    listing.List<&AsseListing::List1>("List1", "Symbol table").Looks(listing.Look<&AsseListing::List1Look>),
    listing.List<&AsseListing::List3>("List3", "Symbols").DoubleClick(List3_DoubleClick),
    listing.Text<&AsseListing::Text13>("Text13", "Status").Looks(listing.Look<&AsseListing::StatusLook>),
    listing.Text<&AsseListing::Text14>("Text14", "Pass").Looks(listing.Look<&AsseListing::StatusLook>),
    listing.Label<&AsseListing::Label1>("Label1", "Size:"),
    listing.Label<&AsseListing::Label2>("Label2", "Size"),

    help.List<&AsseHelp::List2>("List2", "Opcodes", List2_Click).DoubleClick(List2_DoubleClick),
    f.Check<&Asse::Check1>("Check1", "Undocumented*"),
    help.Label<&AsseHelp::Label3>("Label3", "Sample"),
    help.Text<&AsseHelp::Text7>("Text7", "Flags"),
    help.Text<&AsseHelp::Text8>("Text8", "Size (byte):"),
    help.Text<&AsseHelp::Text10>("Text10", "Colock cycles:"),
    help.Text<&AsseHelp::Text11>("Text11", "Description"),
    help.Label<&AsseHelp::Label7>("Label7", "C:|N:|P/V:|H:|Z:|S:").Looks(help.Look<&AsseHelp::Label7Look>),
    Timer("Timer1", 100ms, Timer1_Timer),

    f.Text<&Asse::Text5>("Text5", "dec").Enter(Text5_Enter),
    f.Text<&Asse::Text6>("Text6", "hex").Enter(Text6_Enter),
    f.Text<&Asse::Text15>("Text15", "Address"),
    Button("Command8", "Disassemly", Command8_Click),
    f.Text<&Asse::Text9>("Text9", "Disassembly"),

    files.Label<&AsseFiles::Command14Caption>("Frame2", "File panel").Looks(kFrame2),
    files.Combo<&AsseFiles::Drive1>("Drive1", "Drive", Drive1_Click).Looks(kFrame2),
    files.List<&AsseFiles::Dir1>("Dir1", "Folders").DoubleClick(asse::Dir1_DoubleClick).Looks(kFrame2),
    files.List<&AsseFiles::File1>("File1", "Files", asse::File1_Click)
        .DoubleClick(File1_DoubleClick)
        .Looks(kFrame2),
    files.Combo<&AsseFiles::Combo1>("Combo1", "Type", Combo1_Click).Looks(kFrame2),
    files.Text<&AsseFiles::Text16>("Text16", "File name").Enter(Command14_Click).Looks(kFrame2),
    Button("Command14", "OPEN", Command14_Click).Looks(kFrame2),
    Button("Command15", "CANCEL", xEdit_Click).Looks(kFrame2),
    files.Image<&AsseFiles::ResPic>("ResPic", "Picture"),
    files.Image<&AsseFiles::Image1>("Image1", "Picture in small"),
    files.Scroll<&AsseFiles::HScroll1>("HScroll1", "Threshold"),

    Button("Command9", "LOAD PIC 2", LoadPic2),
    Button("Command10", "LOAD PIC 4", LoadPic4),
    Button("Command17", "LOAD PIC 4", LoadPic4),
    Button("Command19", "LOAD PIC 4", LoadPic4),
    Button("Command16", "LOAD PIC 16", LoadPic16),
    Button("Command18", "LOAD PIC 16", LoadPic16),
    Button("Command20", "LOAD PIC 16", LoadPic16),

    f.Text<&Asse::Text4>("Text4", "Help").Looks(f.Look<&Asse::Text4Look>),
};

}  // namespace

void Asse_Show(Machine& m) {
  m.asse.opened = true;
  ShowForm(m.asse.window);
}

constexpr Form kAsse{"asse", "Assembler", f.State, kControls};

}  // namespace quoll
