#include "cards/Printer.h"

#include <array>

#include "machine/Machine.h"

namespace quoll {
namespace {

constexpr uint8_t kFirstTranslated = 0x7F;
constexpr uint8_t kUnprintable = '.';

// The accented letters and frame pieces of the machine, from 0x7F on, in the printer's code page.
constexpr std::array<uint8_t, 33> kPrinterCodes = {
    0xDB,                                            // 0x7F
    0xB5, 0x90, 0x92, 0xE0, 0x99, 0x8A, 0xE9, 0x9A,  // 0x80
    0xEB, 0xDA, 0xC0, 0xB3, 0xC3, 0xC2, 0xC5, 0xC6,  // 0x88
    0xA0, 0x82, 0x8C, 0xA2, 0x94, 0x8B, 0xA3, 0x81,  // 0x90
    0xFB, 0xBF, 0xD9, 0xC4, 0xB4, 0xC1, 0xAC, 0xE6,  // 0x98
};

constexpr std::array kControls{
    Control{"Text1", ControlKind::Text, [](Machine& m) -> ControlField { return &m.printer.Text1; }},
    Control{"Command2", ControlKind::Button, nullptr, [](Machine& m, int) { m.printer.Text1.clear(); }},
};

uint8_t PrinterCode(uint8_t byte) {
  if (byte < kFirstTranslated) return byte;
  const unsigned place = byte - kFirstTranslated;
  return place < kPrinterCodes.size() ? kPrinterCodes[place] : kUnprintable;
}

}  // namespace

void Senddata(TPrint& printer, uint8_t byte) {
  printer.Text1.push_back(static_cast<char>(PrinterCode(byte)));
}

std::span<const Control> TPrintControls() { return kControls; }

}  // namespace quoll
