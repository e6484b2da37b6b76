#include "forms/FSID.h"

#include <algorithm>
#include <filesystem>

#include "core/Files.h"
#include "core/FolderList.h"
#include "core/FormTable.h"
#include "core/NumberText.h"
#include "core/Wrap.h"
#include "machine/Machine.h"
#include "machine/Ports.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr int32_t kAddressPort = 56, kDataPort = 57;
constexpr int32_t kFirstAddress = 54272;  // of the chip in the computer that tunes are written for
constexpr float kSweepHertz = 12;         // for each point to the right
constexpr float kSweepMargin = 4;
constexpr size_t kMostSweepPoints = 512;  // a sweep has 111

// The filters' and the time scales' numbers beside their sliders.
void ShowSliders(Machine& m) {
  FSID& form = m.fsid;
  ShowNumber(form.Label1[0], form.HScroll1.value);
  ShowNumber(form.Label1[1], form.HScroll2.value);
  ShowNumber(form.Label1[2], form.HScroll3.value);
  ShowNumber(form.Label2[0], form.HScroll4.value);
  ShowNumber(form.Label2[1], form.HScroll5.value);
}

void Command1_Click(Machine& m) {
  // The chip takes the low byte, whatever was typed.
  int32_t address = WrappingSub(NumberOfText(m.fsid.Text2), kFirstAddress) & 0xFF;
  int32_t value = NumberOfText(m.fsid.Text3) & 0xFF;
  PortOut(m, kAddressPort, address);
  PortOut(m, kDataPort, value);
}

void Label25_Click(Machine& m) {
  m.fsid.Label25 = "0";
  m.fsid.Label26 = "0";
}

// Opens the chosen dump; the user is told what is wrong with it.
void OpenChosen(Machine& m) {
  const FSID& form = m.fsid;
  const bool here = form.File1.selected < form.dumps.inWorkingFolder;
  const std::filesystem::path folder = here ? std::string() : m.programFolder;
  const SidTuneResult result =
      SidTuneOpenFile(m.card.tune, form.dumps.format, (folder / form.File1.Selected()).string());
  if (!result.message.empty()) TellFileError(*m.host, result.message);
}

// Lists the dumps of the working directory, then the program folder's others.
void ListFiles(Machine& m, std::string_view pattern) {
  FSID& form = m.fsid;
  std::vector<std::string> names = FilesIn("", pattern).names;
  form.dumps.inWorkingFolder = static_cast<int32_t>(names.size());
  if (!m.programFolder.empty()) {
    for (std::string& name : FilesIn(m.programFolder, pattern).names) {
      if (std::ranges::find(names, name) == names.end()) names.push_back(std::move(name));
    }
  }
  form.File1.Fill(std::move(names));
}

// The file that was chosen stays so; without one it is the list's first. It plays from its beginning.
void ChooseFormat(Machine& m, SidTuneFormat format, std::string_view pattern) {
  FSID& form = m.fsid;
  const std::string chosen = form.dumps.format == format ? form.File1.Selected() : std::string();
  form.dumps.format = format;
  ListFiles(m, pattern);
  const auto& names = form.File1.entries;
  const auto found = std::ranges::find(names, chosen);
  if (names.empty()) return;
  form.File1.selected = found == names.end() ? 0 : static_cast<int32_t>(found - names.begin());
  OpenChosen(m);
}

void Option1_Click(Machine& m) {
  m.fsid.dumps.format = SidTuneFormat::None;
  m.fsid.File1.Fill({});
}
void Option2_Click(Machine& m) { ChooseFormat(m, SidTuneFormat::Sidx, "*.sidx"); }
void Option3_Click(Machine& m) { ChooseFormat(m, SidTuneFormat::Dmp, "*.dmp"); }

void File1_Click(Machine& m) {
  SidReset(m.card.sid);
  SidDecode(m.card.sid, ChipControls(m.fsid));
  OpenChosen(m);
}

std::string_view WaveText(int control) {
  switch (SidWaveOf(control)) {
    case SidNoiseBit: return "noise";
    case SidPulse: return "pulse";
    case SidSaw: return "saw";
    case SidTriangle: return "triangle";
    default: return "none";
  }
}

std::string EnvelopeText(int attackDecay, int sustainRelease) {
  return std::to_string(attackDecay >> 4) + ' ' + std::to_string(attackDecay & 15) + ' ' +
         std::to_string(sustainRelease >> 4) + ' ' + std::to_string(sustainRelease & 15);
}

// "low+high 1 3": what the chip's filter lets through, and of which voices.
std::string FilterText(int route, int mode) {
  std::string text = (mode & 0x10) != 0 ? "low" : "";
  if ((mode & 0x40) != 0) text += text.empty() ? "high" : "+high";
  if (text.empty()) text = "off";
  for (int voice = 0; voice < kSidVoices; ++voice)
    if (((route >> voice) & 1) != 0) text += ' ' + std::to_string(voice + 1);
  return text;
}

void Timer1_Timer(Machine& m) {
  FSID& form = m.fsid;
  const Sid6581& sid = m.card.sid;
  const auto byte = [&](int reg) { return sid.SID_Reg[reg] & 0xFF; };
  for (int reg = 0; reg < kSidRegisters; ++reg) ShowNumber(form.Label3[reg], sid.SID_Reg[reg]);
  for (int voice = 0; voice < kSidVoices; ++voice) {
    const int base = 7 * voice;
    ShowHertz(form.Label4[voice], SidHertz(sid, voice) / 2.0);  // a phase from -1 to 1 is a wave
    ShowText(form.Label5[voice], WaveText(byte(base + 4)));
    ShowText(form.Label6[voice], EnvelopeText(byte(base + 5), byte(base + 6)));
    ShowNumber(form.Label7[voice], (byte(base + 3) & 15) * 256 + byte(base + 2));
  }
  ShowText(form.Label8, FilterText(byte(23), byte(24)));
  ShowNumber(form.Label17, (byte(21) & 7) + byte(22) * 8);
}

// The level at the sweep's frequency. With the frequency standing still, the point moves up and down.
void DrawSweep(Trace& picture, const Sid6581& sid) {
  if (sid.sweepRestarted) {
    picture.x.clear();
    picture.y.clear();
  }
  const float x = sid.SidTestFreq / kSweepHertz;
  const float y = FSID::kSweepHeight - static_cast<float>(SidMean(sid)) - kSweepMargin;
  ++picture.drawings;
  if (!picture.x.empty() && picture.x.back() == x) {
    picture.y.back() = y;
    return;
  }
  if (picture.x.size() == kMostSweepPoints) {
    picture.x.erase(picture.x.begin());
    picture.y.erase(picture.y.begin());
  }
  picture.x.push_back(x);
  picture.y.push_back(y);
}

void ShowPeaks(FSID& form, const FrameSamples& samples) {
  const auto [lowest, highest] = std::ranges::minmax(samples);
  if (highest > NumberOfText(form.Label25)) ShowNumber(form.Label25, highest);
  if (lowest < NumberOfText(form.Label26)) ShowNumber(form.Label26, lowest);
}

constexpr std::string_view kVoices = "Voice 1|Voice 2|Voice 3";

constexpr On<&Machine::fsid> f;

constexpr std::array kControls{
    f.Check<&FSID::Check1>("Check1", "High Pass"),
    f.Scroll<&FSID::HScroll1>("HScroll1", "Strength of the high pass", ShowSliders),
    f.Check<&FSID::Check2>("Check2", "Low Pass"),
    f.Scroll<&FSID::HScroll2>("HScroll2", "Strength of the low pass", ShowSliders),
    f.Check<&FSID::Check3>("Check3", "Butterfly Pass"),
    f.Scroll<&FSID::HScroll3>("HScroll3", "Strength of the butterfly pass", ShowSliders),
    f.Label<&FSID::Label1>("Label1", "High pass|Low pass|Butterfly pass"),
    f.Text<&FSID::Text1>("Text1", "Repeats of the filters"),
    f.Check<&FSID::Check4>("Check4", "Wobbler"),
    f.Check<&FSID::Check5>("Check5", "440 Hz"),
    f.Label<&FSID::Label15>("Label15", "Sweep, hertz"),
    f.Scope<&FSID::PIC2>("PIC2", "Level over frequency"),
    f.Check<&FSID::Check6>("Check6", "ADSR On"),
    f.Check<&FSID::Check7>("Check7", "Filter On"),
    f.Check<&FSID::Check8>("Check8", "Exp"),
    f.Check<&FSID::Check9>("Check9", kVoices),
    f.Check<&FSID::Check10>("Check10", "Ring On"),
    f.Scroll<&FSID::HScroll4>("HScroll4", "Time scale of attack and release", ShowSliders),
    f.Scroll<&FSID::HScroll5>("HScroll5", "Time scale of decay", ShowSliders),
    f.Label<&FSID::Label2>("Label2", "Attack and release|Decay"),
    f.Scroll<&FSID::HScroll6>("HScroll6", "Cutoff in force"),
    f.Label<&FSID::Label16>("Label16", "Cutoff in force, per cent"),
    f.Label<&FSID::Label17>("Label17", "Cutoff"),
    f.Text<&FSID::Text2>("Text2", "Address"),
    f.Text<&FSID::Text3>("Text3", "Value"),
    Button("Command1", "Poke", Command1_Click),
    f.Option<&FSID::Option1>("Option1", "No File", Option1_Click).Group("dump"),
    f.Option<&FSID::Option2>("Option2", "SIDX", Option2_Click).Group("dump"),
    f.Option<&FSID::Option3>("Option3", "DMP", Option3_Click).Group("dump"),
    f.List<&FSID::File1>("File1", "Dumps", File1_Click),
    f.Label<&FSID::Label3>("Label3", kHexNumbers<kSidRegisters>),
    f.Label<&FSID::Label4>("Label4", "Voice 1, hertz|Voice 2, hertz|Voice 3, hertz"),
    f.Label<&FSID::Label5>("Label5", "Voice 1, wave|Voice 2, wave|Voice 3, wave"),
    f.Label<&FSID::Label6>("Label6", "Voice 1, envelope|Voice 2, envelope|Voice 3, envelope"),
    f.Label<&FSID::Label7>("Label7", "Voice 1, pulse width|Voice 2, pulse width|Voice 3, pulse width"),
    f.Label<&FSID::Label8>("Label8", "Filter"),
    f.Label<&FSID::Label25>("Label25", "Highest sample", Label25_Click),
    f.Label<&FSID::Label26>("Label26", "Lowest sample"),
    f.Scope<&FSID::Pic1>("Pic1", kVoices),
    Timer("Timer1", 100ms, Timer1_Timer),
};

}  // namespace

SidControls ChipControls(const FSID& form) {
  return {.Check1 = form.Check1,
          .Check2 = form.Check2,
          .Check3 = form.Check3,
          .HScroll1 = form.HScroll1.value,
          .HScroll2 = form.HScroll2.value,
          .HScroll3 = form.HScroll3.value,
          .Text1 = NumberOfText(form.Text1),
          .Check4 = form.Check4,
          .Check5 = form.Check5,
          .Check6 = form.Check6,
          .Check7 = form.Check7,
          .Check9 = form.Check9,
          .Check10 = form.Check10,
          .HScroll4 = form.HScroll4.value,
          .HScroll5 = form.HScroll5.value};
}

void FSID_PlayTune(Machine& m) {
  if (m.fsid.File1.selected < 0) return;
  const std::string word = SidTuneStep(m.card.tune, m.fsid.dumps.format, m.card.sid);
  if (!word.empty()) m.host->MessageBox("hiba", word, MessageIcon::None);
}

void DrawChip(FSID& form, const Sid6581& sid, bool /*scopes*/) {
  if (form.Check4) ShowNumber(form.Label15, static_cast<int32_t>(sid.SidTestFreq));
  StoreScroll(form.HScroll6, sid.cutoffPercent);
  ShowNumber(form.Label16, sid.cutoffPercent);
  DrawSweep(form.PIC2, sid);
  ShowPeaks(form, sid.SidOut);
  for (int voice = 0; voice < kSidVoices; ++voice)
    DrawScope(form.Pic1[voice],
              [&](int i) { return kScopeMiddle - sid.SidVoiceOut[voice][i] * kScopeReach; });
}

constexpr Form kFSID{"FSID", "SID_6581", f.State, kControls};

}  // namespace quoll
