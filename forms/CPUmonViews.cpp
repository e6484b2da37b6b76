#include "forms/CPUmonViews.h"

#include <algorithm>
#include <cmath>

#include "core/NationalCharacters.h"
#include "devtools/DisAsm.h"
#include "devtools/ToolText.h"
#include "forms/CPUmonFields.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

constexpr int kRows = 8, kRowBytes = 16;
constexpr const char* kLineEnd = "\r\n";

char DumpCharacter(uint8_t byte) {
  if (byte < 0x20) return '.';
  return static_cast<char>(byte < kFirstNational ? byte : NationalCode(byte));
}

// Eight rows of address, bytes and characters. What lies beyond the last address shows as the byte there.
template <class Read>
std::string Dump(int32_t first, int32_t last, Read read) {
  std::string text;
  for (int row = 0; row < kRows; ++row) {
    const int32_t address = first + row * kRowBytes;
    std::string bytes, characters;
    for (int i = 0; i < kRowBytes; ++i) {
      const uint8_t byte = read(std::min(address + i, last));
      bytes += Hex2(byte) + ' ';
      characters += DumpCharacter(byte);
    }
    text += Hex4(address) + ": " + bytes + characters;
    if (row + 1 < kRows) text += kLineEnd;
  }
  return text;
}

void ShowRegisters(CPUmonShown& form, const Z80State& z80) {
  for (size_t i = 0; i < form.TextA.size(); ++i) form.TextA[i] = (z80.A >> (7 - i) & 1) != 0 ? "1" : "0";
  for (size_t i = 0; i < form.Text1.size(); ++i) form.Text1[i] = Hex2(z80.*kMonitorRegisters[i]);
  for (size_t i = 0; i < form.Text2.size(); ++i) form.Text2[i] = z80.*kMonitorFlags[i] != 0 ? "1" : "0";
  for (size_t i = 0; i < form.Text3.size(); ++i) {
    const int32_t value = z80.*kMonitorWords[i];
    form.Text3[i] = i < kMonitorWide ? Hex4(value) : Hex2(value);
  }
  for (size_t i = 0; i < form.Text4.size(); ++i) form.Text4[i] = std::to_string(z80.*kMonitorModes[i]);
  StoreScroll(form.Shape2, z80.PC);
  StoreScroll(form.Shape4, z80.R);
  form.Label7Look.fore = z80.Halted != 0 ? kRed : kBlack;
  form.Label8Look.fore = z80.IrqLine != 0 ? kRed : kBlack;
}

ByteReader Peek(Machine& m) {
  return [&m](int32_t address) { return MemPeek(m, address); };
}

}  // namespace

int32_t CPUmon_ViewAddress(const std::string& text) {
  constexpr double kLastAddress = 0xFFFF;
  return static_cast<int32_t>(std::nearbyint(std::clamp(NumberValue(text), 0.0, kLastAddress)));
}

void PrintLastOPS(Machine& m) {
  std::string& text = m.cpumon.shown.Picture4;
  text.clear();
  for (size_t i = 0; i < PcTrail::kShown; ++i) {
    if (i > 0) text += kLineEnd;
    text += DisAsm(Peek(m), m.run.PcHistory[i], 1, 1);
  }
}

void CPUmon_ShowState(Machine& m) {
  constexpr int32_t kInstructions = 10, kLastAddress = 0xFFFF, kLastPort = 0xFF;
  const CPUmon& boxes = m.cpumon;
  CPUmonShown& form = m.cpumon.shown;
  form.Picture1 = DisAsm(Peek(m), m.z80.PC, kInstructions, 1);
  ShowRegisters(form, m.z80);
  form.Text8 = std::to_string(m.run.TotalCycles + m.run.Cycles);
  PrintLastOPS(m);
  form.Picture2 = Dump(CPUmon_ViewAddress(boxes.Text10), kLastAddress, Peek(m));
  form.Picture3 = Dump(CPUmon_ViewAddress(boxes.Text11), kLastPort,
                       [&m](int32_t port) { return m.PortShadow[static_cast<size_t>(port)]; });
}

}  // namespace quoll
