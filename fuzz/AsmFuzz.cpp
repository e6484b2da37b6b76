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

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);

  quoll::Assembler a;
  quoll::AsmHost host;
  host.Write = [](int32_t address, uint8_t) {
    if (address < 0 || address >= quoll::kAsmAddressEnd) std::abort();
  };
  host.ReadFile = [&](const std::string& name) -> std::optional<std::vector<uint8_t>> {
    if (name.size() % 2 == 1) return std::nullopt;
    return std::vector<uint8_t>(data, data + size);
  };
  const bool complete = Compile(a, host, bytes);
  if (complete == (a.ErrorLine != 0) || a.Text13.empty()) std::abort();

  const std::string source = quoll::SourceOfFile(bytes);
  quoll::ConvertTvcasm(source);
  if (quoll::ColouredSource(source).text != source) std::abort();
  quoll::OpcodeHelpList(source, source.size() / 2, true);

  const quoll::ByteReader read = [&](int32_t address) {
    const auto at = static_cast<size_t>(static_cast<uint32_t>(address));
    return at < size ? data[at] : uint8_t{0};
  };
  quoll::DisAsm(read, 0, static_cast<int32_t>(size / 4), 1);
  return 0;
}
