#include "core/Files.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include "core/FileBeside.h"
#include "core/FolderList.h"
#include "core/Host.h"

namespace quoll {

namespace {

namespace fs = std::filesystem;

constexpr const char* kDirectory = "it is a directory";
constexpr const char* kNoFile = "it is not an ordinary file";
constexpr const char* kBadName = "the name holds a zero byte";

std::string Reason(int error, const char* otherwise) {
  return error != 0 ? std::generic_category().message(error) : otherwise;
}

std::string Reason(const std::error_code& error) { return error ? error.message() : std::string(); }

std::string Named(const std::string& file, const std::string& reason) { return file + ": " + reason; }

// A zero byte would end the name early and reach some other file.
bool IsBadName(const std::string& file) { return file.find('\0') != std::string::npos; }

bool IsWriteProtected(fs::perms perms) {
  return (perms & (fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write)) ==
         fs::perms::none;
}

// Why what stands in the target's place must stay there; empty when nothing does.
std::string WhyNotReplaced(const fs::path& target) {
  std::error_code error;
  const fs::file_status status = fs::status(target, error);
  if (!fs::exists(status)) return {};  // what else is wrong shows when the file is written
  if (fs::is_directory(status)) return kDirectory;
  if (!fs::is_regular_file(status)) return kNoFile;
  return IsWriteProtected(status.permissions()) ? "it is write-protected" : "";
}

std::string Replace(const fs::path& target, std::span<const uint8_t> bytes) {
  const std::string reason = WhyNotReplaced(target);
  if (!reason.empty()) return reason;
  RemoveLeftovers(target.parent_path());
  return FileBeside(target).Replace(bytes);
}

// Why the file can't be read; empty when its bytes are in the content.
std::string Read(const fs::path& path, size_t limit, FileContent& content) {
  std::error_code error;
  const fs::file_status status = fs::status(path, error);
  content.missing = status.type() == fs::file_type::not_found;
  if (content.missing) return Reason(ENOENT, "");
  if (!fs::status_known(status)) return Reason(error);
  if (fs::is_directory(status)) return kDirectory;
  if (!fs::is_regular_file(status)) return kNoFile;
  errno = 0;
  std::ifstream in(path, std::ios::binary);
  if (!in) return Reason(errno, "it can't be opened");
  content.size = fs::file_size(path, error);
  if (error) return Reason(error);
  content.bytes.resize(static_cast<size_t>(std::min<uint64_t>(content.size, limit)));
  in.read(reinterpret_cast<char*>(content.bytes.data()), static_cast<std::streamsize>(content.bytes.size()));
  if (in.bad()) return Reason(errno, "it can't be read");
  const auto got = static_cast<size_t>(in.gcount());
  if (got < content.bytes.size()) content.size = got;  // somebody cut it meanwhile
  content.bytes.resize(got);
  return {};
}

}  // namespace

FileContent ReadFile(const std::string& file, size_t limit) {
  FileContent content;
  const std::string reason = IsBadName(file) ? kBadName : Read(file, limit, content);
  if (reason.empty()) return content;
  return {{}, 0, content.missing, Named(file, reason)};
}

std::string SaveFile(const std::string& file, std::span<const uint8_t> bytes) {
  const std::string reason = IsBadName(file) ? kBadName : Replace(file, bytes);
  return reason.empty() ? reason : Named(file, reason);
}

bool SaveFileOrTell(Host& host, const std::string& file, std::span<const uint8_t> bytes) {
  const std::string error = SaveFile(file, bytes);
  if (!error.empty()) TellFileError(host, error);
  return error.empty();
}

void TellFileError(Host& host, std::string_view text) {
  host.MessageBox(text, "Error", MessageIcon::Exclamation);
}

std::string WithExtension(const std::string& name, std::string_view extension) {
  const bool there = name.size() >= extension.size() &&
                     std::equal(extension.rbegin(), extension.rend(), name.rbegin(),
                                [](char a, char b) { return SmallLetter(a) == SmallLetter(b); });
  return there ? name : name + std::string(extension);
}

}  // namespace quoll
