#include "sound/BlockRecording.h"

#include <algorithm>
#include <filesystem>
#include <vector>

#include "core/BinaryFile.h"
#include "core/WaveHeader.h"
#include "sound/Mixer.h"

namespace quoll {

namespace {

// What stands for a template that is not there.
std::vector<uint8_t> SilentTemplate() {
  constexpr uint8_t kSilence = 128;
  const auto header = WaveHeader(kMachineSound, kBlockBytes);
  std::vector<uint8_t> bytes(header.size() + kBlockBytes, kSilence);
  std::ranges::copy(header, bytes.begin());
  return bytes;
}

void CopyTemplate(const std::string& programFolder, const std::string& target) {
  const std::filesystem::path source = std::filesystem::path(programFolder) / "techno.wav";
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

void StartBlockRecording(BlockRecording& recording, const std::string& programFolder) {
  recording.file = FullName("record.wav");
  RemoveFile(recording.file);
  RemoveFile("saa.dat");
  CopyTemplate(programFolder, recording.file);
  const BinaryFile data("saa.dat", BinaryFile::Create);  // nothing is ever written to it
}

void StopBlockRecording(BlockRecording& recording) { recording.file.clear(); }

void RecordBlock(const BlockRecording& recording, std::span<const uint8_t> block) {
  if (recording.file.empty()) return;
  const BinaryFile file(recording.file, BinaryFile::Write);
  if (file) file.WriteAt(block, kWaveHeaderBytes);
}

}  // namespace quoll
