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

int32_t ReloadTone(Machine& m) {
  m.run.ToneItCounter = TonePeriod(m.PortShadow);
  return 255;
}

// The chip, and the real one that may sit in the computer.
void WriteOpl(Machine& m, uint8_t port, int32_t value) {
  OplWrite(m.card.opl, port, static_cast<uint8_t>(value));
  FYM3812_DirectOut(m, port, value);
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

int32_t CardIds(const Machine& m) {
  int32_t ids = 0xFF;
  if (m.screen.xio0) ids = 0xFE;
  if (m.screen.xio1) ids &= 0xF3;
  return ids;
}

int32_t ReadTape(Machine& m) {
  const int32_t level = TapeRead(m.tape);
  ToneStoreSlot(m.tone, level, m.run.FrameClock);
  return level;
}

void PortOut(Machine& m, int32_t port, int32_t& value) {
  const auto number = static_cast<uint8_t>(port), byte = static_cast<uint8_t>(value);
  switch (number) {
    case 0x00: BorderSet(m.palette, value, m.run.FrameClock); break;
    case 0x01: break;
    case 0x02: return StorePaging(m, number, value, 0xFC);
    case 0x03: return StorePaging(m, number, value, 0xC0);
    case 0x04 ... 0x05: break;
    case 0x06: StrobeAndSample(m, value); break;
    case 0x07: return AcknowledgeIrq(m);
    case 0x0C ... 0x0E: return FloppyWrite(m.floppy, number, byte);
    case 0x0F: return StorePaging(m, number, value, 0x0F);
    case 0x10 ... 0x14: return FloppyWrite(m.floppy, number, byte);
    case 0x18: return StorePaging(m, number, value, 0x30);
    case 0x20: return SerialWrite(m.serial, byte);
    case 0x21: break;
    case 0x30:
    case 0xFD: return SnWrite(m.card.sn, ChipControls(m.fsn76489), byte);
    case 0x32 ... 0x33:
    case 0xFE ... 0xFF: return SaaWrite(m.card.saa, ChipControls(m.fsaa), number, byte);
    case 0x34 ... 0x35: return WriteOpl(m, number, value);
    case 0x36 ... 0x37: return SelectSoundRomPage(m, value);
    case 0x38 ... 0x39: return SidWrite(m.card.sid, number, byte);
    case 0x3A ... 0x3B: return AyWrite(m.card.ay, number, byte);
    case 0x3C ... 0x3D: return OpllWrite(m.card.opll, number, byte);
    case 0x50 ... 0x57: return WriteTapeEdge(m);
    case 0x58:
    case 0x5C: return SetStatus(m, 0x01);
    case 0x59:
    case 0x5D: return SetStatus(m, 0x02);
    case 0x5A:
    case 0x5E: return SetStatus(m, 0x04);
    case 0x5B:
    case 0x5F: return SetStatus(m, 0x08);
    case 0x60 ... 0x6F: PALSet(m.palette, m.PortShadow, m.run.FrameClock); break;
    case 0x70:
    case 0x72:
    case 0x74:
    case 0x76: CrtcSelect(m.crtc, value); break;
    case 0x71:
    case 0x73:
    case 0x75:
    case 0x77: return CrtcWrite(m.crtc, value);
    case 0xA0: return StorePaging(m, number, value, 0xFF);
    case 0xE0 ... 0xF8: return SidWriteDirect(m.card.sid, number, byte);
    default: LogPortWrite(m.screen.List1, number); break;
  }
  m.PortShadow[number] = static_cast<uint8_t>(value);
}

int32_t PortIn(Machine& m, int32_t port) {
  switch (port) {
    case 0x10 ... 0x14: return FloppyRead(m.floppy, static_cast<uint8_t>(port));
    case 0x20: return SerialRead(m.serial);
    case 0x21: return SerialStatus(m.serial);
    case 0x58:
    case 0x5C: return KeyboardRow(m.keyboard, m.PortShadow[3]);
    case 0x59:
    case 0x5D: return ReadStatus(m);
    case 0x5A:
    case 0x5E: return CardIds(m);
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
