// What the hardware monitor shows, against a plain telling of it, in machines of any state.
#include <array>
#include <cstdio>
#include <map>

#include "forms/test/MonitorBench.h"

namespace quoll::test {
namespace {

std::string Hex(int32_t value, int digits = 2) {
  std::array<char, 16> text{};
  std::snprintf(text.data(), text.size(), "%0*X", digits, static_cast<unsigned>(value));
  return text.data();
}

struct TVCmonViews : MonitorBench {
  TVCmonViews() { form = "TVCmon"; }

  int32_t Port(int number) const { return m->PortShadow[static_cast<size_t>(number)]; }
  void SetPort(int number, int value) {
    m->PortShadow[static_cast<size_t>(number)] = static_cast<uint8_t>(value);
  }
  void Look() { RunTimer("Timer3"); }
  // All lamps of an array, "1" or "0" for each.
  std::string Lamps(const char* lamp) {
    std::string text;
    for (int i = 0; i < Ref(lamp).control->count; ++i) text += Lit(lamp, i) ? '1' : '0';
    return text;
  }
  // All labels of an array, a blank before each.
  std::string Labels(const char* label) {
    std::string text;
    for (int i = 0; i < Ref(label).control->count; ++i) text += " " + Text(label, i);
    return text;
  }

  void Randomize(Dice& dice);
  void ExpectMemory();
  void ExpectSignals();
  void ExpectPicture();
  void ExpectCards();
};

void TVCmonViews::Randomize(Dice& dice) {
  for (uint8_t& port : m->PortShadow) port = static_cast<uint8_t>(Roll(dice, 256));
  for (size_t i = 0; i < 18; ++i) m->crtc.CrtcRegs[i] = Roll(dice, 256);
  m->z80.IrqLine = Roll(dice, 2);
  m->run.FrameClock = Roll(dice, 62501);
  m->run.ToneItCounter = Roll(dice, 70000) - 100;
  m->screen.xio0 = Roll(dice, 2) != 0;
  m->screen.xio1 = Roll(dice, 2) != 0;
  m->tape.Level = Roll(dice, 2);
  SerialLine& line = m->serial.line;
  line.open = Roll(dice, 2) != 0;
  line.baud = static_cast<uint32_t>(300 * (1 + Roll(dice, 64)));
  line.dataBits = static_cast<uint8_t>(5 + Roll(dice, 4));
  line.parity = static_cast<Parity>(Roll(dice, 5));
  line.halfStopBits = static_cast<uint8_t>(2 + Roll(dice, 3));
  Floppy& floppy = m->floppy;
  for (uint8_t* byte : {&floppy.FdcStatus, &floppy.FdcTrack, &floppy.FdcSector, &floppy.FdcData,
                        &floppy.FdcHwStatus, &floppy.FdcCommand, &floppy.FdcParameter})
    *byte = static_cast<uint8_t>(Roll(dice, 256));
  floppy.FdcDrive = static_cast<uint8_t>(Roll(dice, 5));
  std::vector<uint8_t> disk(512);
  for (uint8_t& byte : disk) byte = static_cast<uint8_t>('0' + Roll(dice, 64));
  PlaceDisk(floppy, disk);
  floppy.Accesses.assign(static_cast<size_t>(Roll(dice, 4)), "Read Data: " + std::to_string(Roll(dice, 99)));
}

void TVCmonViews::ExpectMemory() {
  std::string slots;
  switch (Port(2) & 0x18) {
    case 0x08: slots += " CART"; break;
    case 0x10: slots += " U0"; break;
    case 0x18: slots += " U3**"; break;
    default: slots += " SYS";
  }
  slots += (Port(2) & 0x04) != 0 ? " VID*" : " U1";
  slots += (Port(2) & 0x20) != 0 ? " U2" : " VID";
  switch (Port(2) & 0xC0) {
    case 0x40: slots += " SYS"; break;
    case 0x80: slots += " U3"; break;
    case 0xC0: slots += " EXT"; break;
    default: slots += " CART";
  }
  EXPECT_EQ(Labels("Slot"), slots);
  EXPECT_EQ(Text("Port2") + Text("Port3"), Hex(Port(2)) + Hex(Port(3)));

  std::string vid = "0000", iom = "000", hbf = "0000";
  if ((Port(2) & 0x04) != 0) vid[static_cast<size_t>(Port(0x0F) & 3)] = '1';
  if ((Port(2) & 0x20) == 0) vid[static_cast<size_t>((Port(0x0F) & 0x0C) / 4)] = '1';
  if ((Port(2) & 0xC0) == 0xC0) {
    const int32_t card = (Port(3) & 0xC0) / 0x40;
    if (card < 3) iom[static_cast<size_t>(card)] = '1';
    if (card == 0) hbf[static_cast<size_t>((Port(0x18) & 0x30) / 0x10)] = '1';
  }
  EXPECT_EQ(Lamps("Vid"), vid);
  EXPECT_EQ(Lamps("Iom"), iom);
  EXPECT_EQ(Lamps("Hbf"), hbf);
}

void TVCmonViews::ExpectSignals() {
  std::string interrupts;
  for (const int flag : {0x01, 0x02, 0x04, 0x08, 0x10}) interrupts += (Port(0x59) & flag) == 0 ? '1' : '0';
  interrupts += m->z80.IrqLine != 0 ? '1' : '0';
  EXPECT_EQ(Lamps("IntLamp"), interrupts);

  const int32_t pitch = (Port(5) & 15) * 256 + Port(4);
  const bool enabled = (Port(5) & 16) != 0;
  EXPECT_EQ(Text("SoundIT"), (Port(5) & 32) != 0 ? "1" : "0");
  EXPECT_EQ(Text("Pitch"), Hex(pitch, 3));
  EXPECT_EQ(Text("Volume"), std::to_string(Port(6) / 4 % 16));
  EXPECT_EQ(Text("OutEnable"), enabled ? "1" : "0");
  EXPECT_EQ(Text("Counter"), std::to_string(m->run.ToneItCounter));
  EXPECT_EQ(Lamps("SoundLamp"),
            std::string((Port(0x59) & 0x10) == 0 ? "1" : "0") + (enabled && pitch <= 4080 ? "1" : "0"));
  EXPECT_EQ(Labels("Cas"),
            " " + Hex(Port(5)) + ((Port(5) & 64) != 0 ? " 1 " : " 0 ") + std::to_string(m->tape.Level));
}

void TVCmonViews::ExpectPicture() {
  std::string crtc;
  for (size_t i = 0; i < 18; ++i) {
    if (i != 11) crtc += " " + Hex(m->crtc.CrtcRegs[i]);
  }
  EXPECT_EQ(Labels("Crtc"), crtc + " " + std::to_string(m->run.FrameClock));
  std::string palette;
  for (int port = 0x60; port < 0x64; ++port) palette += " " + Hex(Port(port));
  EXPECT_EQ(Labels("Palette"), palette);
  EXPECT_EQ(Text("Border"), Hex(Port(0)));
  EXPECT_EQ(Text("Mode"), std::to_string(Port(6) % 4));
  EXPECT_EQ(Text("SubMode"), "VID" + std::to_string((Port(0x0F) & 0x30) / 0x10));
}

void TVCmonViews::ExpectCards() {
  EXPECT_EQ(Labels("SlotId"), std::string(m->screen.xio0 ? " Floppy" : " Empty") +
                                  (m->screen.xio1 ? " RS232" : " Empty") + " Empty Empty");
  const SerialLine& line = m->serial.line;
  const std::map<Parity, std::string> parities{{Parity::None, " 0 "},
                                               {Parity::Odd, " 1 odd"},
                                               {Parity::Even, " 1 even"},
                                               {Parity::Mark, " 1 mark"},
                                               {Parity::Space, " 1 space"}};
  EXPECT_EQ(Labels("Serial"), std::string(line.open ? " 1 " : " 0 ") + std::to_string(line.baud) + " " +
                                  std::to_string(line.dataBits) + parities.at(line.parity) +
                                  (line.halfStopBits == 2   ? " 1"
                                   : line.halfStopBits == 3 ? " 1.5"
                                                            : " 2"));
  const Floppy& floppy = m->floppy;
  std::string registers;
  for (const uint8_t byte : {floppy.FdcStatus, floppy.FdcTrack, floppy.FdcSector, floppy.FdcData,
                             floppy.FdcHwStatus, floppy.FdcCommand, floppy.FdcParameter})
    registers += " " + Hex(byte);
  EXPECT_EQ(Labels("Fdd"), registers);
  std::string drive = "0000";
  if (floppy.FdcDrive < 4) drive[floppy.FdcDrive] = '1';
  EXPECT_EQ(Lamps("FddLamp"), drive);

  const auto byte = [&](size_t at) { return static_cast<int>(floppy.DiskData[at][0]); };
  const auto word = [&](size_t at) { return byte(at) + 256 * byte(at + 1); };
  std::string disk = " ";
  for (size_t at = 3; at < 10; ++at) disk += static_cast<char>(byte(at));
  disk += " " + std::to_string(word(11)) + " " + std::to_string(word(32) + int64_t{65536} * word(34)) + " " +
          Hex(byte(21)) + " " + std::to_string(word(24)) + " " + std::to_string(word(26));
  EXPECT_EQ(Labels("Disk"), disk);
  EXPECT_EQ(m->tvcmon.shown.List4.entries, floppy.Accesses);
}

TEST_F(TVCmonViews, AThousandMachines) {
  Dice dice(77);
  for (int trial = 0; trial < 1000 && !HasFailure(); ++trial) {
    SCOPED_TRACE(trial);
    Randomize(dice);
    const auto before = CopyOf(*m);
    Look();
    ExpectMemory();
    ExpectSignals();
    ExpectPicture();
    ExpectCards();
    before->tvcmon.shown = m->tvcmon.shown;
    EXPECT_TRUE(static_cast<MachineState&>(*m) == *before) << "looking has changed the machine";
  }
}

TEST_F(TVCmonViews, FollowTheTimerAndTheButton) {
  EXPECT_EQ(Ref("Timer3").control->period, std::chrono::milliseconds(100));
  EXPECT_EQ(Text("Border"), "00");
  SetPort(0, 0x12);
  EXPECT_EQ(Text("Border"), "00");
  Look();
  EXPECT_EQ(Text("Border"), "12");
  SetPort(0, 0x34);
  Press("Command1");
  EXPECT_EQ(Text("Border"), "34");
}

TEST_F(TVCmonViews, WithoutADiskAllIsZero) { EXPECT_EQ(Labels("Disk"), "  0 0 00 0 0"); }

// A disk of zeros is one that was not formatted.
TEST_F(TVCmonViews, TheCreatorEndsAtAZero) {
  std::vector<uint8_t> disk(512);
  PlaceDisk(m->floppy, disk);
  Look();
  EXPECT_EQ(Text("Disk"), "");
  for (size_t i = 0; i < 4; ++i) disk[3 + i] = "MSX\0"[i];
  disk[8] = 'x';
  PlaceDisk(m->floppy, disk);
  Look();
  EXPECT_EQ(Text("Disk"), "MSX");
}

// What the machine itself does is seen in its place.
TEST_F(TVCmonViews, PortsAreSeenAsTheyAreWritten) {
  const auto out = [&](int32_t port, int32_t value) { PortOut(*m, port, value); };
  out(0x02, 0xF4);
  out(0x03, 0x05);
  out(0x0F, 0x26);
  out(0x18, 0x20);
  out(0x70, 0x0E);
  out(0x71, 0x7F);
  out(0x14, 0x54);
  out(0x11, 0x07);
  Look();
  EXPECT_EQ(Labels("Slot"), " U0 VID* U2 EXT");
  EXPECT_EQ(Lamps("Vid") + Lamps("Iom") + Lamps("Hbf"),
            "0010"
            "100"
            "0010");
  EXPECT_EQ(Text("SubMode"), "VID2");
  EXPECT_EQ(Text("Crtc", 13), "3F");
  EXPECT_EQ(Lamps("FddLamp"), "0010");
  EXPECT_EQ(Text("Fdd", 1) + Text("Fdd", 6), "0754");
  EXPECT_EQ(m->tvcmon.shown.List4.entries.size(), 2U);
}

}  // namespace
}  // namespace quoll::test
