#include "forms/TTape.h"

#include <filesystem>

#include "core/Files.h"
#include "core/FolderList.h"
#include "core/FormTable.h"
#include "core/NumberText.h"
#include "forms/FileActions.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

constexpr int32_t kRewind = -40, kPlay = 10, kForward = 40;
constexpr uint8_t kMotor = 0x40;  // of port 5

void Wind(Machine& m, int32_t speed) {
  m.ttape.WindSpeed = speed;
  m.ttape.Label1 = "0";
}

void Command1_Click(Machine& m) {
  Wind(m, kRewind);
  TapeRewind(m.tape);
}

void Command2_Click(Machine& m) { Wind(m, kPlay); }

// Winding forward has the tape begin anew, too: it only looks different.
void Command3_Click(Machine& m) {
  Wind(m, kForward);
  TapeRewind(m.tape);
}

void Command8_Click(Machine& m) {
  TapeRewind(m.tape);
  m.ttape.Label2 = "0";
}

void Command9_Click(Machine& m) {
  TTape& form = m.ttape;
  form.folder = m.panel.folder;
  form.File1.Fill(FilesIn(form.folder, "*.wav").names);
  form.File1Look.visible = true;
}

void File1_Click(Machine& m) {
  const std::string file = (std::filesystem::path(m.ttape.folder) / m.ttape.File1.Selected()).string();
  if (const std::string error = WhyUnreadable(file); !error.empty()) return TellFileError(*m.host, error);
  TTape_Insert(m, file);
}

// Moves reels and counter on.
void Timer1_Timer(Machine& m) {
  TTape& form = m.ttape;
  form.playSpeed = 0;
  if ((m.PortShadow[5] & kMotor) != 0) {
    form.playSpeed = 2;
    form.Label1 = std::to_string(int64_t{NumberOfText(form.Label1)} + 1);
    form.Label2 = form.Label1;
  }
  form.phase = (form.phase + form.WindSpeed + form.playSpeed + TTape::kPhases) % TTape::kPhases;
  if (form.WindSpeed > 0) --form.WindSpeed;
  if (form.WindSpeed < 0) ++form.WindSpeed;
}

constexpr On<&Machine::ttape> f;

constexpr std::array kControls{
    Button("Command1", "Rewind", Command1_Click),
    Button("Command2", "Play", Command2_Click),
    Button("Command3", "Fast forward", Command3_Click),
    Button("Command8", "Rewind the second deck", Command8_Click),
    Button("Command9", "Eject: choose a tape", Command9_Click),
    f.List<&TTape::File1>("File1", "Tapes", File1_Click).Looks(f.Look<&TTape::File1Look>),
    f.Label<&TTape::Label1>("Label1", "Counter"),
    f.Label<&TTape::Label2>("Label2", "Counter of the second deck"),
    f.Label<&TTape::Label3>("Label3", "Name of the tape"),
    Timer("Timer1", 100ms, Timer1_Timer),
};

}  // namespace

int32_t ReelPicture(const TTape& form) { return form.phase / (TTape::kPhases / TTape::kPictures); }

void TTape_Insert(Machine& m, const std::string& file) {
  TapeOpen(m.tape, file);
  TapeRewind(m.tape);
  m.ttape.Label1 = "0";
  m.ttape.Label3 = std::filesystem::path(file).filename().string();
}

constexpr Form kTTape{"TTape", "Tape", f.State, kControls};

}  // namespace quoll
