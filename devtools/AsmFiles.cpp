#include "devtools/AsmFiles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "devtools/Assembler.h"
#include "devtools/CodePage.h"

namespace quoll {

namespace {

std::optional<std::vector<uint8_t>> ReadOrdinary(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
  std::ifstream in(file, std::ios::binary);
  std::vector<uint8_t> bytes(kAsmFileLimit + 1);
  in.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (in.bad() || (in.fail() && !in.eof())) return std::nullopt;
  bytes.resize(static_cast<size_t>(in.gcount()));
  return bytes;
}

void StoreWord(std::vector<uint8_t>& bytes, size_t at, size_t value) {
  bytes[at] = static_cast<uint8_t>(value & 0xFF);
  bytes[at + 1] = static_cast<uint8_t>(value >> 8 & 0xFF);
}

}  // namespace

std::optional<std::vector<uint8_t>> ReadIncluded(const std::string& sourceFolder, std::string_view name) {
  const std::string file = Utf8FromCp1250(name);
  if (file.empty() || file.find('\0') != std::string::npos) return std::nullopt;
  if (!sourceFolder.empty()) {
    if (auto bytes = ReadOrdinary(std::filesystem::path(sourceFolder) / file)) return bytes;
  }
  return ReadOrdinary(file);
}

std::vector<uint8_t> CassetteFile(const std::vector<uint8_t>& program) {
  constexpr size_t kHeader = 144;
  constexpr size_t kBlock = 128;
  const size_t total = program.size() + kHeader;
  std::vector<uint8_t> file(total);
  file[0] = 0x11;
  StoreWord(file, 2, total / kBlock);
  file[4] = static_cast<uint8_t>(total % kBlock);
  file[129] = 1;
  StoreWord(file, 130, program.size());
  std::copy(program.begin(), program.end(), file.begin() + kHeader);
  return file;
}

}  // namespace quoll
