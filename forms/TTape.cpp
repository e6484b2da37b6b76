#include "forms/TTape.h"

#include <array>
#include <filesystem>

#include "machine/Machine.h"
#include "core/NumberText.h"

namespace quoll {

namespace {

constexpr int32_t kRewind = -40, kPlay = 10, kForward = 40;
constexpr uint8_t kMotor = 0x40;  // of port 5

void Wind(Machine& m, int32_t speed) {
  m.ttape.WindSpeed = speed;
  m.ttape.Label1 = "0";
}

void Command1_Click(Machine& m, int) {
  Wind(m, kRewind);
  TapeRewind(m);
}

void Command2_Click(Machine& m, int) { Wind(m, kPlay); }

// Winding forward has the tape begin anew, too: it only looks different.
void Command3_Click(Machine& m, int) {
  Wind(m, kForward);
  TapeRewind(m);
}

void Command8_Click(Machine& m, int) {
  TapeRewind(m);
  m.ttape.Label2 = "0";
}

void Command9_Click(Machine& m, int) {
  m.ttape.listShown = true;
  m.ttape.folder = m.panel.folder;
  ++m.ttape.listRefreshes;
}

void File1_Click(Machine& m, int) {
  TTape_Insert(m, (std::filesystem::path(m.ttape.folder) / m.ttape.File1).string());
}

template <auto kField>
constexpr Control Value(std::string_view name, ControlKind kind, void (*changed)(Machine&, int) = nullptr) {
  return {name, kind, [](Machine& m) -> ControlField { return &(m.ttape.*kField); }, changed};
}

constexpr Control Button(std::string_view name, void (*pressed)(Machine&, int)) {
  return {name, ControlKind::Button, nullptr, pressed};
}

constexpr std::array kControls{
    Button("Command1", Command1_Click),
    Button("Command2", Command2_Click),
    Button("Command3", Command3_Click),
    Button("Command8", Command8_Click),
    Button("Command9", Command9_Click),
    Value<&TTape::File1>("File1", ControlKind::Text, File1_Click),
    Value<&TTape::Label1>("Label1", ControlKind::Label),
    Value<&TTape::Label2>("Label2", ControlKind::Label),
    Value<&TTape::Label3>("Label3", ControlKind::Label),
};

}  // namespace

int32_t ReelPicture(const TTape& form) { return form.phase / (TTape::kPhases / TTape::kPictures); }

void TTape_Timer1(Machine& m) {
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

void TTape_Insert(Machine& m, const std::string& file) {
  TapeOpen(m, file);
  TapeRewind(m);
  m.ttape.Label1 = "0";
  m.ttape.Label3 = std::filesystem::path(file).filename().string();
}

std::span<const Control> TTapeControls() { return kControls; }

}  // namespace quoll
