// quollasm: the assembler as a command.
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/Files.h"
#include "devtools/AsmFiles.h"
#include "devtools/Assembler.h"
#include "devtools/CodePage.h"
#include "devtools/SourceText.h"

namespace quoll {
namespace {

constexpr const char* kUsage =
    "usage: quollasm SOURCE.asm [-o OUT.bin | -o OUT.cas] [--listing FILE] [--symbols FILE]\n"
    "\n"
    "Assembles a source for the TV Computer.\n"
    "  -o FILE         the bytes from the lowest to the highest address written; as a cassette file when\n"
    "                  the name ends in .cas, and then they must start at 6639 (19EF hexadecimal), where\n"
    "                  BASIC programs lie\n"
    "  --listing FILE  the listing, UTF-8\n"
    "  --symbols FILE  the symbols, a value and a name in each line\n"
    "Errors are told as FILE:LINE: TEXT.\n"
    "Exit status: 0, or 1 when the source has an error or a file can't be read or written.\n";

constexpr size_t kSourceMost = size_t{1} << 24;  // bytes; what the assembler reads is much less

struct Options {
  std::string source, out, listing, symbols;
};

std::optional<Options> ReadOptions(std::span<char*> arguments) {
  Options options;
  for (size_t i = 0; i < arguments.size(); ++i) {
    const std::string argument = arguments[i];
    std::string* value = argument == "-o"          ? &options.out
                         : argument == "--listing" ? &options.listing
                         : argument == "--symbols" ? &options.symbols
                                                   : nullptr;
    if (value != nullptr) {
      if (++i == arguments.size()) return std::nullopt;
      *value = arguments[i];
    } else if (argument.starts_with('-') || !options.source.empty()) {
      return std::nullopt;
    } else {
      options.source = argument;
    }
  }
  if (options.source.empty()) return std::nullopt;
  return options;
}

// What the source has written, from its lowest address to its highest one.
struct Output {
  std::vector<uint8_t> memory = std::vector<uint8_t>(kAsmAddressEnd);
  int32_t first = kAsmAddressEnd;
  int32_t end = 0;

  void Write(int32_t address, uint8_t value) {
    memory[static_cast<size_t>(address)] = value;
    first = std::min(first, address);
    end = std::max(end, address + 1);
  }
  std::vector<uint8_t> Bytes() const {
    return first < end ? std::vector<uint8_t>(memory.begin() + first, memory.begin() + end)
                       : std::vector<uint8_t>();
  }
};

int Complain(const std::string& text) {
  std::cerr << text << '\n';
  return 1;
}

std::vector<uint8_t> BytesOf(std::string_view text) { return {text.begin(), text.end()}; }

// Lines as this system's editors like them.
std::string PlainLines(std::string_view text) {
  std::string plain = Utf8FromCp1250(text);
  std::erase(plain, '\r');
  return plain;
}

std::string SymbolLines(const AsmSymbols& symbols) {
  std::string lines;
  for (const std::string& entry : symbols.List1) lines += entry + "\n";
  return PlainLines(lines);
}

int Run(const Options& options) {
  const FileContent content = ReadFile(options.source, kSourceMost);
  if (!content.error.empty()) return Complain(content.error);
  const std::string source =
      SourceOfFile({reinterpret_cast<const char*>(content.bytes.data()), content.bytes.size()});

  Output output;
  AsmHost host;
  host.Write = [&](int32_t address, uint8_t value) { output.Write(address, value); };
  const std::string folder = std::filesystem::path(options.source).parent_path().string();
  host.ReadFile = [&](const std::string& name) { return ReadIncluded(folder, name); };
  host.Milliseconds = [] {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<int32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count() &
                                0x3FFFFFFF);
  };

  Assembler a;
  const bool complete = Compile(a, host, source);
  if (!complete) return Complain(options.source + ":" + std::to_string(a.ErrorLine) + ": " + a.Text13);
  if (a.CutOff) {
    return Complain(options.source + ": is too long: no line may begin behind character " +
                    std::to_string(kAsmSourceEnd));
  }

  std::vector<uint8_t> bytes = output.Bytes();
  if (options.out.ends_with(".cas")) {
    constexpr int32_t kProgramStart = 0x19EF;
    if (output.first != kProgramStart) {
      return Complain(options.source + ": a cassette file must begin with ORG " +
                      std::to_string(kProgramStart));
    }
    bytes = CassetteFile(bytes);
  }
  const struct {
    const std::string& file;
    std::vector<uint8_t> content;
  } results[] = {
      {options.out, bytes},
      {options.listing, BytesOf(PlainLines(a.RText2.text))},
      {options.symbols, BytesOf(SymbolLines(a.Symbols))},
  };
  for (const auto& [file, bytesOfFile] : results) {
    if (file.empty()) continue;
    if (const std::string error = SaveFile(file, bytesOfFile); !error.empty()) return Complain(error);
  }
  return 0;
}

}  // namespace
}  // namespace quoll

int main(int argc, char** argv) {
  const std::span<char*> arguments(argv + 1, argc < 1 ? 0 : static_cast<size_t>(argc - 1));
  for (const char* argument : arguments) {
    if (std::string_view(argument) != "--help") continue;
    std::cout << quoll::kUsage;
    return 0;
  }
  const std::optional<quoll::Options> options = quoll::ReadOptions(arguments);
  if (!options) {
    std::cerr << quoll::kUsage;
    return 1;
  }
  return quoll::Run(*options);
}
