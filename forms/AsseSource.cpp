// The source editor's buttons, compiling, and ways into the listing and the source.
#include <algorithm>

#include "devtools/AsmFiles.h"
#include "devtools/CodePage.h"
#include "devtools/SourceText.h"
#include "forms/Asse.h"
#include "forms/AsseParts.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr size_t kNone = std::string::npos;

void Changed(AsseEditor& editor, size_t size) {
  ++editor.texts;
  editor.SelStart.value = std::min(editor.SelStart.value, static_cast<int32_t>(size));
  editor.SelLength.value =
      std::min(editor.SelLength.value, static_cast<int32_t>(size) - editor.SelStart.value);
}

// By a handler, which the window has to follow.
void Select(AsseEditor& editor, size_t start, size_t length) {
  editor.SelStart.value = static_cast<int32_t>(start);
  editor.SelLength.value = static_cast<int32_t>(length);
  ++editor.selections;
}

std::vector<std::string> Utf8Of(const std::vector<std::string>& texts) {
  std::vector<std::string> result;
  result.reserve(texts.size());
  for (const std::string& text : texts) result.push_back(Utf8FromCp1250(text));
  return result;
}

void ShowListing(AsseListing& listing, const ColouredText& from) {
  listing.RText2.clear();
  listing.RText2Runs.clear();
  for (size_t i = 0; i < from.runs.size(); ++i) {
    const size_t start = from.runs[i].start;
    const size_t end = i + 1 < from.runs.size() ? from.runs[i + 1].start : from.text.size();
    listing.RText2Runs.push_back({listing.RText2.size(), from.runs[i].colour});
    listing.RText2 += Utf8FromCp1250(std::string_view(from.text).substr(start, end - start));
  }
  ++listing.listings;
}

// Shows what the assembler has reached. Each pass begins by emptying what is its own.
void ShowResults(Asse& form, const Assembler& a, bool complete) {
  AsseListing& listing = form.listing;
  listing.Text13 = a.Text13;
  listing.Text14 = a.Text14;
  listing.StatusLook.back = static_cast<int32_t>(a.StatusColor);
  form.editor.RText1Look.back = static_cast<int32_t>(a.RText1Color);
  listing.AsmPC = a.AsmPC;
  listing.CutOff = complete && a.CutOff;
  listing.List1.Fill(Utf8Of(a.Symbols.List1));
  listing.List3.Fill(Utf8Of(a.List3));
  if (a.Text14 == "Pass2") ShowListing(listing, a.RText2);
  if (complete) listing.Label2 = a.Label2;
}

// The page register's image while code is written: RAM in all pages. The machine's own comes back.
struct CompilePages {
  uint8_t& port;
  uint8_t saved;

  explicit CompilePages(Machine& m) : port(m.PortShadow[2]), saved(port) { port = 0xB0; }
  CompilePages(const CompilePages&) = delete;
  CompilePages& operator=(const CompilePages&) = delete;
  ~CompilePages() { port = saved; }
};

}  // namespace

void SetSource(Machine& m, std::string_view text) {
  Asse& form = m.asse;
  form.source.RText1 = Cp1250FromUtf8(text) ? std::string(text) : Utf8FromCp1250(text);
  form.editor.ErrorLine = 0;
  Changed(form.editor, form.source.RText1.size());
}

void EditSource(Machine& m, size_t first, size_t count, std::span<const std::string> with) {
  Asse& form = m.asse;
  ReplaceLines(form.source.RText1, first, count, with);
  AsseEditor& editor = form.editor;
  const auto failing = static_cast<size_t>(std::max(editor.ErrorLine - 1, 0));
  if (editor.ErrorLine > 0 && failing >= first + count)
    editor.ErrorLine += static_cast<int32_t>(with.size()) - static_cast<int32_t>(count);
  else if (editor.ErrorLine > 0 && failing >= first)
    editor.ErrorLine = 0;
  Changed(editor, form.source.RText1.size());
  asse::RestartHelp(m);
}

void SelectSource(Machine& m, int32_t start, int32_t length) {
  m.asse.editor.SelStart.value = start;
  m.asse.editor.SelLength.value = length;
  asse::RestartHelp(m);
}

bool Asse_Compile(Machine& m) {
  Asse& form = m.asse;
  const CompilePages pages(m);
  form.files.Frame2Look.visible = false;

  AsmHost host;
  host.Write = [&m](int32_t address, uint8_t value) { MemWrite(m, address, value); };
  host.ReadFile = [&form](const std::string& name) { return ReadIncluded(form.source.folder, name); };
  host.SetPage = [&m](uint8_t value) { m.PortShadow[2] = value; };
  host.Milliseconds = [&m] { return static_cast<int32_t>(m.host->TickCount() & 0x3FFFFFFF); };

  Assembler a;
  const bool complete = Compile(a, host, SourceOfFile(form.source.RText1));
  ShowResults(form, a, complete);
  form.editor.ErrorLine = complete ? 0 : a.ErrorLine;
  if (complete) return true;
  const LinePlace line = PlaceOfLine(form.source.RText1, static_cast<size_t>(a.ErrorLine - 1));
  Select(form.editor, line.start, line.length);
  return false;
}

void Dline(Machine& m, std::string_view text) {
  constexpr int32_t kAddressLength = 6;  // "0x2710"
  AsseListing& listing = m.asse.listing;
  const size_t found = FindIgnoringCase(listing.RText2, text);
  if (found == kNone) return;
  listing.SelStart = static_cast<int32_t>(found);
  listing.SelLength = kAddressLength;
  ++listing.selections;
}

namespace asse {

void RText1_Change(Machine& m) {
  SetSource(m, std::string(m.asse.source.RText1));
  RestartHelp(m);
}

void SelStart_Change(Machine& m) {
  ++m.asse.editor.selections;
  RestartHelp(m);
}

// "Compile"
void Command1_Click(Machine& m) { Asse_Compile(m); }

// "Clear"
void Command2_Click(Machine& m) { SetSource(m, {}); }

// "Del TABS"
void Command3_Click(Machine& m) {
  std::string text = m.asse.source.RText1;
  std::ranges::replace(text, '\t', ' ');
  SetSource(m, text);
}

// "Ucase"
void Command4_Click(Machine& m) { SetSource(m, UpperCaseUtf8(m.asse.source.RText1)); }

// "Lcase"
void Command5_Click(Machine& m) { SetSource(m, LowerCaseUtf8(m.asse.source.RText1)); }

// "Convert tvcasm"
void Command11_Click(Machine& m) {
  const std::string& text = m.asse.source.RText1;
  const std::string end(LineEndOf(text));
  SetSource(m, WithLineEnd(ConvertTvcasm(WithBothLineEnds(text)), end));
}

void Check2_Click(Machine& m) { m.asse.listing.RText2Look.visible = m.asse.Check2; }

// To where the symbol is named first.
void List3_DoubleClick(Machine& m) {
  const std::string& text = m.asse.source.RText1;
  const std::string entry = m.asse.listing.List3.Selected();
  const std::string name = entry.substr(0, entry.find(' '));
  const size_t found = UpperCaseUtf8(text).find(UpperCaseUtf8(name));
  if (name.empty() || found == kNone) return;
  const size_t end = std::min(text.find_first_of("\r\n", found), text.size());
  Select(m.asse.editor, found, end - found);
}

// The colours follow the text by themselves.
void Format(Machine& m) {
  StopHelp(m);
  m.asse.editor.RText1Look.back = kWhite;
}

}  // namespace asse
}  // namespace quoll
