// Any bytes as an assembler source, and as memory for the disassembler.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "devtools/Assembler.h"
#include "devtools/DisAsm.h"
#include "devtools/OpcodeHelp.h"
#include "devtools/SourceText.h"
#include "fuzz/Fuzz.h"

namespace quoll {

void Fuzz(std::span<const uint8_t> input) {
  const std::string_view bytes(reinterpret_cast<const char*>(input.data()), input.size());

  Assembler a;
  AsmHost host;
  host.Write = [](int32_t address, uint8_t) {
    if (address < 0 || address >= kAsmAddressEnd) std::abort();
  };
  host.ReadFile = [&](const std::string& name) -> std::optional<std::vector<uint8_t>> {
    if (name.size() % 2 == 1) return std::nullopt;
    return std::vector<uint8_t>(input.begin(), input.end());
  };
  const bool complete = Compile(a, host, bytes);
  if (complete == (a.ErrorLine != 0) || a.Text13.empty()) std::abort();

  const std::string source = SourceOfFile(bytes);
  ConvertTvcasm(source);
  if (ColouredSource(source).text != source) std::abort();
  OpcodeHelpList(source, source.size() / 2, true);

  const ByteReader read = [&](int32_t address) {
    const auto at = static_cast<size_t>(static_cast<uint32_t>(address));
    return at < input.size() ? input[at] : uint8_t{0};
  };
  DisAsm(read, 0, static_cast<int32_t>(input.size() / 4), 1);
}

}  // namespace quoll
