#include "cards/Printer.h"

#include "core/NationalCharacters.h"

namespace quoll {

void Senddata(Printer& printer, uint8_t byte) {
  const uint8_t code = byte < kFirstNational ? byte : NationalCode(byte);
  printer.printed.push_back(static_cast<char>(code));
}

void ClearPrinted(Printer& printer) {
  printer.printed.clear();
  ++printer.beginnings;
}

}  // namespace quoll
