// What the hardware monitor shows, frame by frame.
#include <cstdio>

#include "devtools/ToolText.h"
#include "machine/Machine.h"
#include "machine/Ports.h"

namespace quoll {

namespace {

std::string OneOrZero(bool on) { return on ? "1" : "0"; }

void ShowMemory(TVCmonShown& shown, const PortBytes& ports) {
  constexpr std::array kPage0{"SYS", "CART", "U0", "U3**"}, kPage3{"CART", "SYS", "U3", "EXT"};
  const uint8_t paging = ports[2];
  const bool video1 = (paging & 0x04) != 0, video2 = (paging & 0x20) == 0;
  shown.Slot = {kPage0[(paging >> 3) & 3], video1 ? "VID*" : "U1", video2 ? "VID" : "U2",
                kPage3[paging >> 6]};
  shown.Port2 = Hex2(paging);
  shown.Port3 = Hex2(ports[3]);
  shown.Vid = {};
  if (video1) shown.Vid[ports[0x0F] & 3] = true;
  if (video2) shown.Vid[(ports[0x0F] >> 2) & 3] = true;
  const bool ext = paging >> 6 == 3;
  const size_t card = ports[3] >> 6;
  for (size_t i = 0; i < shown.Iom.size(); ++i) shown.Iom[i] = ext && card == i;
  const size_t floppyPage = (ports[0x18] >> 4) & 3;
  for (size_t i = 0; i < shown.Hbf.size(); ++i) shown.Hbf[i] = ext && card == 0 && floppyPage == i;
}

// The flags are active low.
void ShowInterrupts(TVCmonShown& shown, const Machine& m) {
  constexpr size_t kFlags = 5;
  for (size_t bit = 0; bit < kFlags; ++bit) shown.IntLamp[bit] = (m.PortShadow[kStatusPort] >> bit & 1) == 0;
  shown.IntLamp[kFlags] = m.z80.IrqLine != 0;
}

void ShowSound(TVCmonShown& shown, const Machine& m) {
  const PortBytes& ports = m.PortShadow;
  std::array<char, 8> pitch{};
  std::snprintf(pitch.data(), pitch.size(), "%03X", static_cast<unsigned>(TonePitch(ports)));
  shown.SoundIT = OneOrZero(ToneInterrupts(ports));
  shown.Pitch = pitch.data();
  shown.Volume = std::to_string(ToneAmplitude(ports[6]));
  shown.OutEnable = OneOrZero(ToneIsEnabled(ports));
  shown.Counter = std::to_string(m.run.ToneItCounter);
  shown.SoundLamp = {(ports[kStatusPort] & kCursorToneFlag) == 0, ToneIsOn(ports)};
}

// R11 has no place in the window.
void ShowPicture(TVCmonShown& shown, const Machine& m) {
  constexpr std::array<size_t, 17> kRegisters{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14, 15, 16, 17};
  for (size_t i = 0; i < kRegisters.size(); ++i) shown.Crtc[i] = Hex2(m.crtc.CrtcRegs[kRegisters[i]]);
  shown.Crtc.back() = std::to_string(m.run.FrameClock);
  for (size_t i = 0; i < shown.Palette.size(); ++i) shown.Palette[i] = Hex2(m.PortShadow[0x60 + i]);
  shown.Border = Hex2(m.PortShadow[0]);
  shown.Mode = std::to_string(m.PortShadow[6] & 3);
  shown.SubMode = "VID" + std::to_string(m.PortShadow[0x0F] >> 4 & 3);
}

void ShowSlots(TVCmonShown& shown, const Machine& m) {
  constexpr std::array kCards{"RS232", "?", "Floppy", "Empty"};
  const auto ids = static_cast<uint32_t>(CardIds(m));
  for (size_t slot = 0; slot < shown.SlotId.size(); ++slot)
    shown.SlotId[slot] = kCards[(ids >> (2 * slot)) & 3];
  shown.Cas = {Hex2(m.PortShadow[5]), OneOrZero((m.PortShadow[5] & 0x40) != 0), std::to_string(m.tape.Level)};
}

void ShowSerial(TVCmonShown& shown, const SerialLine& line) {
  constexpr std::array kParities{"", "even", "odd", "mark", "space"};
  const std::string stopBits =
      std::to_string(line.halfStopBits / 2) + (line.halfStopBits % 2 != 0 ? ".5" : "");
  shown.Serial = {OneOrZero(line.open),
                  std::to_string(line.baud),
                  std::to_string(line.dataBits),
                  OneOrZero(line.parity != Parity::None),
                  kParities[static_cast<size_t>(line.parity)],
                  stopBits};
}

void ShowFloppy(TVCmonShown& shown, const Floppy& floppy) {
  shown.Fdd = {Hex2(floppy.FdcStatus),   Hex2(floppy.FdcTrack),    Hex2(floppy.FdcSector),
               Hex2(floppy.FdcData),     Hex2(floppy.FdcHwStatus), Hex2(floppy.FdcCommand),
               Hex2(floppy.FdcParameter)};
  for (size_t drive = 0; drive < shown.FddLamp.size(); ++drive)
    shown.FddLamp[drive] = floppy.FdcDrive == drive;
  if (shown.List4.entries != floppy.Accesses) shown.List4.Fill(floppy.Accesses);
  const BootSector boot = ReadBootSector(floppy);
  shown.Disk = {boot.name.c_str(), std::to_string(boot.bytesPerSector),  std::to_string(boot.totalSectors),
                Hex2(boot.media),  std::to_string(boot.sectorsPerTrack), std::to_string(boot.heads)};
}

}  // namespace

void TVCmon_redraw(Machine& m) {
  TVCmonShown& shown = m.tvcmon.shown;
  ShowMemory(shown, m.PortShadow);
  ShowInterrupts(shown, m);
  ShowSound(shown, m);
  ShowPicture(shown, m);
  ShowSlots(shown, m);
  ShowSerial(shown, m.serial.line);
  ShowFloppy(shown, m.floppy);
}

}  // namespace quoll
