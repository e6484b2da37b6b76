// The development tools: a source of many lines compiled, and memory disassembled.
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

#include "devtools/Assembler.h"
#include "devtools/DisAsm.h"

namespace quoll {
namespace {

// Lines as short as the source's limit asks for, many of them labels and references.
std::string ManyLines(int lines) {
  constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  const auto name = [&](int i) {
    return std::string{kLetters[static_cast<size_t>(i / 36 % 26)], kLetters[static_cast<size_t>(i % 36)],
                       kLetters[static_cast<size_t>(i / 936 % 36)]};
  };
  std::string source = "ORG 0\r\n";
  for (int i = 1; i < lines; ++i) {
    if (i % 25 == 0 && i < 25 * 900)
      source += name(i) + ":";
    else if (i % 25 == 1 && i > 25)
      source += "JP @" + name(i - 1);
    else
      source += i % 3 == 0 ? "RET" : i % 3 == 1 ? "DI" : "NOP";
    source += "\r\n";
  }
  return source;
}

// Wanted: 20,000 lines in half a second, and ten times the time of 2,000.
void CompileLines(benchmark::State& state) {
  const std::string source = ManyLines(static_cast<int>(state.range(0)));
  std::vector<uint8_t> memory(kAsmAddressEnd);
  AsmHost host;
  host.Write = [&](int32_t address, uint8_t value) { memory[static_cast<size_t>(address)] = value; };
  while (state.KeepRunning()) {
    Assembler a;
    if (!Compile(a, host, source)) state.SkipWithError("the source has an error");
    benchmark::DoNotOptimize(a.AsmPC);
  }
}
BENCHMARK(CompileLines)->Arg(2000)->Arg(20000)->Unit(benchmark::kMillisecond);

// Wanted: 10,000 instructions in 20 ms.
void Disassemble(benchmark::State& state) {
  const auto read = [](int32_t address) { return static_cast<uint8_t>(address * 37 + (address >> 8)); };
  while (state.KeepRunning()) benchmark::DoNotOptimize(DisAsm(read, 0, 10000, 1).size());
}
BENCHMARK(Disassemble)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quoll
