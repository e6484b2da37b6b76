// The assembler: two passes over a source text, straight into memory. It has no parser: each line is put into
// capitals, its number is cut out, and what remains is looked up as a whole in AsmOpcodeText.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "devtools/AsmSymbols.h"

namespace quoll {

// What the assembler asks of the world. Only Write and ReadFile are needed by every source.
struct AsmHost {
  // Stores a byte. The address is as computed, 0 to kAsmAddressEnd - 1; higher ones are left out.
  std::function<void(int32_t address, uint8_t value)> Write;
  // A file's bytes for INCBIN, at least the first kAsmFileLimit + 1 of them; nothing when it can't be read.
  // The name is as it stands in the source.
  std::function<std::optional<std::vector<uint8_t>>(const std::string& name)> ReadFile;
  // "PMEM=": the image of the memory page register.
  std::function<void(uint8_t value)> SetPage;
  // A clock in milliseconds.
  std::function<int32_t()> Milliseconds;
  // The status has changed and may be shown.
  std::function<void()> Refresh;
};

inline constexpr int32_t kAsmAddressEnd = 0x40000;  // behind every memory there is
inline constexpr size_t kAsmFileLimit = 65536;      // bytes of an INCBIN file
inline constexpr int32_t kAsmSourceEnd =
    100000;  // column at which the source's last line begins at the latest

// Colours as the window system takes them, red in the low byte.
namespace asm_colour {
inline constexpr uint32_t kBusy = 0xC0FFC0;
inline constexpr uint32_t kFailed = 0x8080FF;
inline constexpr uint32_t kCompiling = 0x535353;  // the editor meanwhile
inline constexpr uint32_t kWhite = 0xFFFFFF;
inline constexpr uint32_t kListing = 0x373737;  // the listing's own text colour
inline constexpr uint32_t kNoCode = 0xFF0000;   // labels and directives
inline constexpr uint32_t kComment = 0x379B37;
inline constexpr uint32_t kCommand = 0x1919DE;  // lines that begin with a star
inline constexpr uint32_t kAddress = 0x6E1478;
inline constexpr uint32_t kCode = 0;
}  // namespace asm_colour

// Text in colours. A run lasts to the next one's start or to the end.
struct ColouredText {
  struct Run {
    size_t start = 0;  // counted from 0
    uint32_t colour = 0;
    bool operator==(const Run&) const = default;
  };
  std::string text;
  std::vector<Run> runs;

  void Append(uint32_t colour, std::string_view what);
  bool operator==(const ColouredText&) const = default;
};

struct Assembler {
  int32_t AsmPC = 0;   // address of the line that is being assembled, later where assembling ended
  AsmSymbols Symbols;  // the symbol table and its entries, List1
  std::vector<std::string> List3;  // the symbols as shown: name, then value
  ColouredText RText2;             // the listing; each source line that was reached gives one line

  std::string Text13;                         // status
  std::string Text14;                         // pass
  std::string Label2;                         // AsmPC of a complete compilation, decimal
  uint32_t StatusColor = asm_colour::kWhite;  // background of Text13 and Text14
  uint32_t RText1Color = asm_colour::kWhite;  // background of the editor

  int32_t ErrorLine = 0;  // number of the failing line, counted from 1; 0 when there is none
  int32_t SelStart = 0;   // its place in the source, counted from 0, and its length without the line end
  int32_t SelLength = 0;
  bool CutOff = false;  // the source goes on behind the part that the passes read
};

// Both passes over a source in code page 1250 with lines parted by carriage return and line feed. False when
// a line fails: Text13 says why; what has been written till then stays.
bool Compile(Assembler& a, const AsmHost& host, std::string_view source);

// Errors that a line gives instead of a size.
enum AsmError : int32_t {
  kAsmSyntax = -1,
  kAsmOverflow = -2,
  kAsmTooFar = -3,  // has its text but no line gives it: a jump too far is an overflow
  kAsmExists = -4,
  kAsmInternal = -10,  // no row fits, a file can't be read, a number can't be converted
};

// One pass each; 0 or -1.
int32_t PreComp0(Assembler& a, const AsmHost& host, std::string_view source);
int32_t PreComp1(Assembler& a, const AsmHost& host, std::string_view source);

// One line of a pass: line is normalised (Strim), raw as it stands in the source. Bytes it takes, or an
// AsmError.
int32_t Pass1Line(Assembler& a, const AsmHost& host, std::string line, std::string raw);
int32_t Pass2Line(Assembler& a, const AsmHost& host, std::string line, std::string raw);

}  // namespace quoll
