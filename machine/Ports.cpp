// The port map, one line a port; the work stands in the device's file. A line that breaks has the byte kept
// in PortShadow, a line that returns has not, or sees to it itself. Ports without a function keep their byte
// and leave a line in the main window's log.
//
// Whoever adds a port whose access can bring an interrupt or a counter's end nearer names it in MovesEvents.
#include "machine/Ports.h"

#include <optional>

#include "machine/Machine.h"
#include "machine/RomFiles.h"

namespace quoll {

namespace {

// A port whose byte selects memory pages: the map is renewed only when one of the bits that count changes.
void StorePaging(Machine& m, uint8_t port, int32_t value, uint8_t bits) {
  const bool changed = ((m.PortShadow[port] ^ value) & bits) != 0;
  m.PortShadow[port] = static_cast<uint8_t>(value);
  if (changed) RenewPages(m);
}

void SetStatus(Machine& m, uint8_t bits) { m.PortShadow[kStatusPort] |= bits; }

void AcknowledgeIrq(Machine& m) {
  SetStatus(m, kCursorToneFlag);
  m.z80.IrqLine = 0;
}

// Port 6: printer strobe while bit 7 is 0, and a sample of the amplitude whatever it is.
void StrobeAndSample(Machine& m, int32_t value) {
  if ((value & 0x80) == 0) {
    m.PortShadow[kStatusPort] &= 0x7F;
    Senddata(m.printer, m.PortShadow[1]);
  }
  ToneWriteSlot(m.tone, value, m.run.FrameClock);
}

// Colour or monochrome, the tape's next sample, and the interrupt flags as they stand.
int32_t ReadStatus(Machine& m) {
  uint8_t& status = m.PortShadow[kStatusPort];
  status = static_cast<uint8_t>((status & kIrqFlags) | 0x80 | (m.screen.xScreenBW ? 0 : 0x40) |
                                (ReadTape(m) != 0 ? 0x20 : 0));
  return status;
}

// The cards in slots 0 and 1 name themselves; those in slots 2 and 3 can't.
int32_t ReadCardIds(const Machine& m) {
  int32_t ids = 0xFF;
  if (m.screen.xio0) ids = 0xFE;
  if (m.screen.xio1) ids &= 0xF3;
  return ids;
}

int32_t ReloadTone(Machine& m) {
  m.run.ToneItCounter = TonePeriod(m.PortShadow);
  return 255;
}

// An edge is heard; the frame has 441 slots, which its last T-states lie behind.
void WriteTapeEdge(Machine& m) {
  constexpr int32_t kLastSlotTState = 62621;
  const std::optional<int32_t> level = TapeWriteEdge(m.tape, m.run.FrameClock);
  if (!level) return;
  if (m.run.FrameClock > kLastSlotTState) m.host->MessageBox("hiba hang", "QUOLLEMU", MessageIcon::None);
  ToneStoreSlot(m.tone, *level, m.run.FrameClock);
}

}  // namespace

int32_t ReadTape(Machine& m) {
  const int32_t level = TapeRead(m.tape);
  ToneStoreSlot(m.tone, level, m.run.FrameClock);
  return level;
}

void PortOut(Machine& m, int32_t port, int32_t& value) {
  const auto number = static_cast<uint8_t>(port);
  uint8_t& shadow = m.PortShadow[number];
  switch (number) {
    case 0x00: BorderSet(m.palette, value, m.run.FrameClock); break;
    case 0x01: break;
    case 0x02: return StorePaging(m, number, value, 0xFC);
    case 0x03: return StorePaging(m, number, value, 0xC0);
    case 0x04:
    case 0x05: break;
    case 0x06: StrobeAndSample(m, value); break;
    case 0x07: return AcknowledgeIrq(m);
    case 0x0F: return StorePaging(m, number, value, 0x0F);
    case 0x18: return StorePaging(m, number, value, 0x30);
    case 0x36:
    case 0x37: return SelectSoundRomPage(m, value);
    case 0x50:
    case 0x51:
    case 0x52:
    case 0x53:
    case 0x54:
    case 0x55:
    case 0x56:
    case 0x57: return WriteTapeEdge(m);
    case 0x58:
    case 0x5C: return SetStatus(m, 0x01);
    case 0x59:
    case 0x5D: return SetStatus(m, 0x02);
    case 0x5A:
    case 0x5E: return SetStatus(m, 0x04);
    case 0x5B:
    case 0x5F: return SetStatus(m, 0x08);
    case 0x60:
    case 0x61:
    case 0x62:
    case 0x63:
    case 0x64:
    case 0x65:
    case 0x66:
    case 0x67:
    case 0x68:
    case 0x69:
    case 0x6A:
    case 0x6B:
    case 0x6C:
    case 0x6D:
    case 0x6E:
    case 0x6F: PALSet(m.palette, m.PortShadow, m.run.FrameClock); break;
    case 0x70:
    case 0x72:
    case 0x74:
    case 0x76: CrtcSelect(m.crtc, value); break;
    case 0x71:
    case 0x73:
    case 0x75:
    case 0x77: return CrtcWrite(m.crtc, value);
    case 0xA0: return StorePaging(m, number, value, 0xFF);
    default: LogPortWrite(m.screen.List1, number); break;
  }
  shadow = static_cast<uint8_t>(value);
}

int32_t PortIn(Machine& m, int32_t port) {
  switch (port) {
    case 0x58:
    case 0x5C: return KeyboardRow(m.keyboard, m.PortShadow[3]);
    case 0x59:
    case 0x5D: return ReadStatus(m);
    case 0x5A:
    case 0x5E: return ReadCardIds(m);
    case 0x5B:
    case 0x5F: return ReloadTone(m);
    case 0x70:
    case 0x72:
    case 0x74:
    case 0x76: return 255;
    case 0x71:
    case 0x73:
    case 0x75:
    case 0x77: return CrtcRead(m.crtc) & 0xFF;
    default: LogPortRead(m.screen.List1, port); return 255;
  }
}

}  // namespace quoll
