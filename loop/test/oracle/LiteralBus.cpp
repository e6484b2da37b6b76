// The memory map and the I/O ports.
#include "loop/test/oracle/LiteralMachine.h"

namespace oracle {

namespace {

// Beyond this address no page-3 chain is followed any more.
constexpr int32_t kLastAddress = 0x2BFFF;

struct Rgb {
  int32_t red, green, blue;
};

constexpr std::array<Rgb, 16> kQbColours = {{{0, 0, 0},
                                             {0, 0, 128},
                                             {0, 128, 0},
                                             {0, 128, 128},
                                             {128, 0, 0},
                                             {128, 0, 128},
                                             {128, 128, 0},
                                             {192, 192, 192},
                                             {128, 128, 128},
                                             {0, 0, 255},
                                             {0, 255, 0},
                                             {0, 255, 255},
                                             {255, 0, 0},
                                             {255, 0, 255},
                                             {255, 255, 0},
                                             {255, 255, 255}}};

}  // namespace

int32_t LiteralMachine::ImageAt(int32_t offset) const {
  if (offset < 0 || offset >= kMemImageSize) {
    return 0;
  }
  return MemImage[static_cast<size_t>(offset)];
}

void LiteralMachine::StoreImage(int32_t offset, int32_t value) {
  if (offset < 0 || offset >= kMemImageSize) {
    return;
  }
  MemImage[static_cast<size_t>(offset)] = static_cast<uint8_t>(value & 0xFF);
}

bool LiteralMachine::HasMex() const { return CartName == "mex4mb.crt"; }

int32_t LiteralMachine::MexAt(int32_t index) const {
  size_t page = PortShadow[0xA0];
  if (index < 0 || index > 0x3FFF || page >= MexPages.size()) {
    return 0;
  }
  const std::vector<uint8_t>& bytes = MexPages[page];
  size_t at = static_cast<size_t>(index);
  return at < bytes.size() ? bytes[at] : 0;
}

void LiteralMachine::StoreMex(int32_t index, int32_t value) {
  size_t page = PortShadow[0xA0];
  if (index < 0 || index > 0x3FFF || page >= MexPages.size()) {
    return;
  }
  std::vector<uint8_t>& bytes = MexPages[page];
  size_t at = static_cast<size_t>(index);
  if (at < bytes.size()) {
    bytes[at] = static_cast<uint8_t>(value & 0xFF);
  }
}

int32_t LiteralMachine::ReadPage3(int32_t address) {
  switch ((PortShadow[2] >> 6) & 3) {
    case 0: return HasMex() ? MexAt(address - 0xC000) : ImageAt(address + 0x8000);
    case 1: return ImageAt(address + 0xC000);
    case 2: return x32KB ? 0 : ImageAt(address);
    default: break;
  }
  // The extension ROM stands above the window of the selected card.
  if (address > 0xDFFF) {
    return ImageAt(address + 0x10000);
  }
  switch ((PortShadow[3] >> 6) & 3) {
    case 0: break;
    case 1: return ImageAt(address + 0x22000);
    case 2: return ImageAt(address + 0x24000);
    default: return ImageAt(address + 0x26000);
  }
  if (address >= 0xD000) {
    return ImageAt(address + 0x21000);
  }
  switch ((PortShadow[0x18] >> 4) & 3) {
    case 0: return ImageAt(address + 0x2C000);
    case 1: return ImageAt(address + 0x2D000);
    case 2: return ImageAt(address + 0x2E000);
    default: return ImageAt(address + 0x2F000);
  }
}

int32_t LiteralMachine::MemRead(int32_t address) {
  if (address < 0 || address > kLastAddress) {
    return 0;
  }
  if (address < 0x4000) {
    switch ((PortShadow[2] >> 3) & 3) {
      case 0: return ImageAt(address + 0x18000);
      case 1: return HasMex() ? MexAt(address) : ImageAt(address + 0x14000);
      case 2: return ImageAt(address);
      default: return ImageAt(address + 0xC000);
    }
  }
  if (address < 0x8000) {
    if ((PortShadow[2] & 0x04) == 0) {
      return ImageAt(address);
    }
    switch (PortShadow[0x0F] & 3) {
      case 0: return ImageAt(address + 0xC000);
      case 1: return ImageAt(address + 0x1C000);
      case 2: return ImageAt(address + 0x20000);
      default: return ImageAt(address + 0x24000);
    }
  }
  if (address < 0xC000) {
    if ((PortShadow[2] & 0x20) != 0) {
      return x32KB ? 0 : ImageAt(address);
    }
    // The simulated fault damages bank 0, whichever bank is being read.
    if (VideoReadNoise) {
      StoreImage(address + 0x8000, ImageAt(address + 0x8000) | 0x37);
    }
    switch ((PortShadow[0x0F] >> 2) & 3) {
      case 0: return ImageAt(address + 0x8000);
      case 1: return ImageAt(address + 0x18000);
      case 2: return ImageAt(address + 0x1C000);
      default: return ImageAt(address + 0x20000);
    }
  }
  return ReadPage3(address);
}

void LiteralMachine::WritePage3(int32_t address, int32_t value) {
  switch ((PortShadow[2] >> 6) & 3) {
    case 0:
      if (HasMex()) {
        StoreMex(address - 0xC000, value);
      } else {
        StoreImage(address + 0x8000, value);
      }
      return;
    case 1: return;
    case 2:
      // A 32 KB machine stores the byte although it reads it back as 0.
      StoreImage(address, value);
      return;
    default: break;
  }
  if (address > 0xDFFF) {
    return;
  }
  if (((PortShadow[3] >> 6) & 3) != 0) {
    throw ProgramEnd{" CTL 1-3 IOM write????"};
  }
  if (address >= 0xD000) {
    StoreImage(address + 0x21000, value);
  }
}

void LiteralMachine::MemWrite(int32_t address, int32_t value) {
  if (address < 0 || address > kLastAddress) {
    return;
  }
  if (address < 0x4000) {
    switch ((PortShadow[2] >> 3) & 3) {
      case 0: return;
      case 1:
        if (HasMex()) {
          StoreMex(address, value);
        } else {
          StoreImage(address + 0x14000, value);
        }
        return;
      case 2: StoreImage(address, value); return;
      default: StoreImage(address + 0xC000, value); return;
    }
  }
  if (address < 0x8000) {
    if ((PortShadow[2] & 0x04) == 0) {
      StoreImage(address, value);
      return;
    }
    switch (PortShadow[0x0F] & 3) {
      case 0: StoreImage(address + 0xC000, value); return;
      case 1: StoreImage(address + 0x1C000, value); return;
      case 2: StoreImage(address + 0x20000, value); return;
      default: StoreImage(address + 0x24000, value); return;
    }
  }
  if (address < 0xC000) {
    if ((PortShadow[2] & 0x20) != 0) {
      StoreImage(address, value);
      return;
    }
    switch ((PortShadow[0x0F] >> 2) & 3) {
      case 0: StoreImage(address + 0x8000, value); return;
      case 1: StoreImage(address + 0x18000, value); return;
      case 2: StoreImage(address + 0x1C000, value); return;
      default: StoreImage(address + 0x20000, value); return;
    }
  }
  WritePage3(address, value);
}

// Called before the new palette byte is stored, so the filled lines keep the old colours.
void LiteralMachine::PALSet() {
  int32_t end = FrameClock / 245;
  if (end > 256) {
    end = 256;
  }
  if (end < 0) {
    end = 0;
  }
  for (int32_t line = PalNextLine < 0 ? 0 : PalNextLine; line <= end; line++) {
    for (size_t pen = 0; pen < 4; pen++) {
      PalHistory[pen][static_cast<size_t>(line)] = PortShadow[0x60 + pen];
    }
  }
  PalNextLine = end;
}

void LiteralMachine::BorderSet(int32_t value) {
  size_t index = 0;
  if ((value & 0x02) != 0) {
    index += 1;
  }
  if ((value & 0x08) != 0) {
    index += 4;
  }
  if ((value & 0x20) != 0) {
    index += 2;
  }
  if ((value & 0x80) != 0) {
    index += 8;
  }
  const Rgb& rgb = kQbColours[index];
  int32_t colour = rgb.red + 256 * rgb.green + 65536 * rgb.blue;
  int32_t first = FrameClock / 218;
  for (int32_t line = first < 0 ? 0 : first; line < 288; line++) {
    BorderLines[static_cast<size_t>(line)] = colour;
  }
}

void LiteralMachine::ToneReload() {
  ToneItCounter = ((16 - (PortShadow[5] & 0x0F)) * 256 - PortShadow[4]) * 16;
}

void LiteralMachine::StoreSlot(int32_t byte) {
  int32_t slot = FrameClock / 142;
  if (slot > 440) {
    slot = 440;
  }
  if (slot < 0) {
    slot = 0;
  }
  DacSlots[static_cast<size_t>(slot)] = static_cast<uint8_t>(byte);
}

int32_t LiteralMachine::TapeRead() {
  int32_t sample = 0;
  if (TapeNext < TapeIn.size()) {
    sample = TapeIn[TapeNext];
    TapeNext++;
  }
  int32_t level = sample > 90 ? 1 : 0;
  StoreSlot(level == 1 ? 0x11 : 0x10);
  return level;
}

void LiteralMachine::TapeWriteEdge() {
  int32_t now = FrameClock;
  int64_t passed = static_cast<int64_t>(now) - TapeLastCycle;
  if (now < TapeLastCycle) {
    passed += kFrameCycles;
  }
  TapeLastCycle = now;
  if (passed > 62000) {
    return;
  }
  TapeLevel = TapeLevel == 0x1E ? 0xDC : 0x1E;
  // Rounded to whole samples, ties to even.
  int64_t samples = passed / 80;
  int64_t rest = passed % 80;
  if (rest > 40 || (rest == 40 && samples % 2 == 1)) {
    samples++;
  }
  TapeOutPos += static_cast<int32_t>(samples) + 1;
  if (now / 142 > 440) {
    Messages.push_back("hiba hang");
  }
  StoreSlot(TapeLevel == 0x1E ? 0x10 : 0x11);
}

void LiteralMachine::LogPort(char kind, int32_t port) {
  size_t limit = kind == 'W' ? 35 : 100;
  if (List1.size() > limit) {
    List1.clear();
  }
  List1.push_back(kind + std::to_string(port));
}

// The caller's register takes the mask of the selected register as well.
void LiteralMachine::CrtcWrite(int32_t& value) {
  int32_t selected = CrtcRegs[18];
  switch (selected) {
    case 4:
    case 6:
    case 7:
    case 10: value &= 0x7F; break;
    case 5:
    case 9:
    case 11: value &= 0x1F; break;
    case 8: value &= 0xF3; break;
    case 12:
    case 14:
    case 16: value &= 0x3F; break;
    default: break;
  }
  if (selected >= 0 && selected <= 18) {
    CrtcRegs[static_cast<size_t>(selected)] = value;
  }
}

void LiteralMachine::PortOut(int32_t port, int32_t& value) {
  bool store = true;
  bool log = false;
  switch (port) {
    case 0x00: BorderSet(value); break;
    case 0x01:
    case 0x02:
    case 0x03:
    case 0x04:
    case 0x05:
    case 0x0F:
    case 0x18:
    case 0x21:
    case 0xA0: break;
    case 0x0C:
    case 0x0D:
    case 0x0E:
    case 0x10:
      FloppyCommand(value & 0xFF);
      store = false;
      break;
    case 0x11:
      FdcTrack = value & 0xFF;
      store = false;
      break;
    case 0x12:
      FdcSector = value & 0xFF;
      store = false;
      break;
    case 0x13:
      FdcData = value & 0xFF;
      store = false;
      break;
    case 0x14: store = false; break;
    case 0x20:
      SerialTx.push_back(static_cast<uint8_t>(value & 0xFF));
      store = false;
      break;
    case 0x06: {
      if ((value & 0x80) == 0) {
        PortShadow[0x59] = static_cast<uint8_t>(PortShadow[0x59] & 0x7F);
        Printed.push_back(static_cast<char>(PortShadow[1]));
      }
      StoreSlot(((value / 4) & 0x0F) + 0x10);
      break;
    }
    case 0x07:
      PortShadow[0x59] = static_cast<uint8_t>(PortShadow[0x59] | 0x10);
      IrqLine = 0;
      store = false;
      break;
    case 0x36:
    case 0x37:
      // The sound card's ROM file has no place in this model.
      store = false;
      break;
    case 0x50:
    case 0x51:
    case 0x52:
    case 0x53:
    case 0x54:
    case 0x55:
    case 0x56:
    case 0x57:
      TapeWriteEdge();
      store = false;
      break;
    // The sound card's chips have models of their own; here it counts that their ports keep nothing.
    case 0x30:
    case 0x32 ... 0x35:
    case 0x38 ... 0x3D:
    case 0xE0 ... 0xF8:
    case 0xFD ... 0xFF: store = false; break;
    case 0x58:
    case 0x5C:
      PortShadow[0x59] = static_cast<uint8_t>(PortShadow[0x59] | 0x01);
      store = false;
      break;
    case 0x59:
    case 0x5D:
      PortShadow[0x59] = static_cast<uint8_t>(PortShadow[0x59] | 0x02);
      store = false;
      break;
    case 0x5A:
    case 0x5E:
      PortShadow[0x59] = static_cast<uint8_t>(PortShadow[0x59] | 0x04);
      store = false;
      break;
    case 0x5B:
    case 0x5F:
      PortShadow[0x59] = static_cast<uint8_t>(PortShadow[0x59] | 0x08);
      store = false;
      break;
    case 0x70:
    case 0x72:
    case 0x74:
    case 0x76:
      value &= 0x1F;
      CrtcRegs[18] = value;
      break;
    case 0x71:
    case 0x73:
    case 0x75:
    case 0x77:
      CrtcWrite(value);
      store = false;
      break;
    default:
      if (port >= 0x60 && port <= 0x6F) {
        PALSet();
      } else {
        log = true;
      }
      break;
  }
  if (store && port >= 0 && port <= 255) {
    PortShadow[static_cast<size_t>(port)] = static_cast<uint8_t>(value & 0xFF);
  }
  if (log) {
    LogPort('W', port);
  }
}

// The commands that leave something in a register that the machine can read.
void LiteralMachine::FloppyCommand(int32_t value) {
  int32_t high = value & 0xF0;
  if (high == 0x00) {
    FdcTrack = 0;
  }
  if (high == 0x00 || high == 0x10 || high == 0x80 || high == 0x90) {
    FdcHwStatus = 0x80;
  }
  if (high == 0xC0) {
    FdcHwStatus = 0x81;
  }
}

int32_t LiteralMachine::FloppyData() {
  FdcData = 0;
  FdcCount += 1;
  if (FdcCount == 512) {
    FdcCount = 0;
    FdcHwStatus = 1;
  }
  return FdcData;
}

int32_t LiteralMachine::PortIn(int32_t port) {
  switch (port) {
    case 0x10:
    case 0x11: return FdcTrack;
    case 0x12: return FdcSector;
    case 0x13: return FloppyData();
    case 0x14: return FdcHwStatus;
    case 0x20:
    case 0x21: return 0;
    case 0x58:
    case 0x5C: {
      // Rows 11 to 15 have no keys.
      size_t row = PortShadow[3] & 0x0F;
      return row > 10 ? 255 : 255 - KeyMatrix[row];
    }
    case 0x59:
    case 0x5D: {
      int32_t status = PortShadow[0x59];
      status = xScreenBW ? (status & ~0x40) : (status | 0x40);
      status |= 0x80;
      status = TapeRead() != 0 ? (status | 0x20) : (status & ~0x20);
      PortShadow[0x59] = static_cast<uint8_t>(status & 0xFF);
      return status & 0xFF;
    }
    case 0x5A:
    case 0x5E: {
      int32_t cards = 0xFF;
      if (xio0) {
        cards = 0xFE;
      }
      if (xio1) {
        cards &= 0xF3;
      }
      return cards;
    }
    case 0x5B:
    case 0x5F: ToneReload(); return 255;
    case 0x70:
    case 0x72:
    case 0x74:
    case 0x76: return 255;
    case 0x71:
    case 0x73:
    case 0x75:
    case 0x77: {
      int32_t selected = CrtcRegs[18];
      if (selected < 12) {
        return 255;
      }
      return selected <= 18 ? (CrtcRegs[static_cast<size_t>(selected)] & 0xFF) : 0;
    }
    default: LogPort('R', port); return 255;
  }
}

}  // namespace oracle
