#include "forms/Fsaa.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <vector>

#include "machine/Machine.h"
#include "core/BinaryFile.h"
#include "core/WaveHeader.h"

namespace quoll {

namespace {

constexpr std::array kControls{
    Control{"Command1", ControlKind::Button, nullptr, [](Machine& m, int) { Fsaa_Command1_Click(m); }},
    Control{"Label11", ControlKind::Label, [](Machine& m) -> ControlField { return &m.fsaa.Label11; }},
};

// What stands for a template that is not there.
std::vector<uint8_t> SilentTemplate() {
  constexpr WaveFormat kOutput{2, 22050, 44100, 2, 8};
  constexpr uint8_t kSilence = 128;
  const auto header = WaveHeader(kOutput, kBlockBytes);
  std::vector<uint8_t> bytes(header.size() + kBlockBytes, kSilence);
  std::ranges::copy(header, bytes.begin());
  return bytes;
}

void CopyTemplate(const Machine& m, const std::string& target) {
  const std::filesystem::path source = std::filesystem::path(m.programFolder) / "techno.wav";
  std::error_code error;
  if (std::filesystem::is_regular_file(source, error) && std::filesystem::copy_file(source, target, error)) {
    using std::filesystem::perms;  // a template may be write-protected
    std::filesystem::permissions(target, perms::owner_write, std::filesystem::perm_options::add, error);
    return;
  }
  const BinaryFile file(target, BinaryFile::Create);
  if (file) file.WriteAt(SilentTemplate(), 0);
}

}  // namespace

void Fsaa_Command1_Click(Machine& m) {
  Fsaa& form = m.fsaa;
  if (form.Command1Color == Fsaa::kRed) {
    form.Command1Color = Fsaa::kWhite;
    form.file.clear();
    return;
  }
  form.file = FullName("record.wav");
  RemoveFile(form.file);
  RemoveFile("saa.dat");
  CopyTemplate(m, form.file);
  form.Command1Color = Fsaa::kRed;
  const BinaryFile data("saa.dat", BinaryFile::Create);  // nothing is ever written to it
}

void FsaaBlockEnded(Machine& m) {
  if (m.fsaa.Command1Color != Fsaa::kRed) return;
  const BinaryFile file(m.fsaa.file, BinaryFile::Write);
  if (file) file.WriteAt(m.mixer.BlockBuffer, kWaveHeaderBytes);
}

std::span<const Control> FsaaControls() { return kControls; }

}  // namespace quoll
