#include "forms/TVCmon.h"

#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

void Check1_Click(Machine& m) {
  if (m.tvcmon.Check1) {
    m.tvcmon.Check1 = TapeStartRecording(m.tape, *m.host);
  } else {
    TapeStopRecording(m.tape);
  }
}

void Timer3_Timer(Machine& m) { m.tvcmon.shown.due = true; }

// Of the frame "Disk info": looks at the disk again at once.
void Command1_Click(Machine& m) { Timer3_Timer(m); }

void Refresh(Machine& m) {
  if (!m.tvcmon.shown.due) return;
  m.tvcmon.shown.due = false;
  TVCmon_redraw(m);
}

constexpr On<&Machine::tvcmon> f;
constexpr On<&Machine::tvcmon, &TVCmon::shown> shown;

constexpr std::array kControls{
    f.Check<&TVCmon::Check1>("Check1", "Record", Check1_Click),
    f.Check<&TVCmon::Check2>("Check2", "Int enable"),
    f.Check<&TVCmon::Check3>("Check3", "Int enabled"),

    shown.Label<&TVCmonShown::Slot>("Slot", "0000|4000|8000|C000"),
    shown.Label<&TVCmonShown::Port2>("Port2", "PORT 2"),
    shown.Label<&TVCmonShown::Port3>("Port3", "PORT 3"),
    shown.Lamp<&TVCmonShown::Vid>("Vid", "VID0|VID1|VID2|VID3"),
    shown.Lamp<&TVCmonShown::Iom>("Iom", "IOM0|IOM1|IOM2"),
    shown.Lamp<&TVCmonShown::Hbf>("Hbf", "HBF0|HBF1|HBF2|HBF3"),
    shown.Lamp<&TVCmonShown::IntLamp>("IntLamp", "CSTL0|CSTL1|CSTL2|CSTL3|CU/SO|Cu/ha IT"),

    shown.Label<&TVCmonShown::SoundIT>("SoundIT", "Sound IT"),
    shown.Label<&TVCmonShown::Pitch>("Pitch", "Pitch"),
    shown.Label<&TVCmonShown::Volume>("Volume", "Volume"),
    shown.Label<&TVCmonShown::OutEnable>("OutEnable", " Out Enable"),
    shown.Label<&TVCmonShown::Counter>("Counter", " Counter"),
    shown.Lamp<&TVCmonShown::SoundLamp>("SoundLamp", "IRQ|ACTIVE"),

    shown.Label<&TVCmonShown::Crtc>(
        "Crtc",
        "char\\col-1|char\\col*|H sync-1|HV width|rows\\screen|additional|row\\screen*|V sync-1|interlace|"
        "row\\chrow|Cursor IT|H memory|L memory|H cursor|L cursor|H pen|L pen|Counter"),
    shown.Label<&TVCmonShown::Palette>("Palette", "0|1|2|3"),
    shown.Label<&TVCmonShown::Border>("Border", "Border"),
    shown.Label<&TVCmonShown::Mode>("Mode", "Mode"),
    shown.Label<&TVCmonShown::SubMode>("SubMode", "Bank"),
    shown.Label<&TVCmonShown::Cas>("Cas", "PORT 5|Motor|Level"),
    shown.Label<&TVCmonShown::SlotId>("SlotId", "0|1|2|3"),

    shown.Label<&TVCmonShown::Serial>("Serial", "SER_OK|baud|data bit|parity check|odd/even|stop bit"),
    shown.Label<&TVCmonShown::Fdd>("Fdd", "Status|Track|Sector|Data|HWStat|Command|Parameterf"),
    shown.Lamp<&TVCmonShown::FddLamp>("FddLamp", "0|1|2|3"),
    shown.Label<&TVCmonShown::Disk>("Disk", "Creator|Sector Size|TotalSector|Media|SecPerTrack|Heads"),
    shown.List<&TVCmonShown::List4>("List4", "Accesses to the floppy"),
    Button("Command1", "Look again", Command1_Click),
    Timer("Timer3", 100ms, Timer3_Timer),
};

}  // namespace

constexpr Form kTVCmon{"TVCmon", "HW Monitor", f.State, kControls, Refresh};

}  // namespace quoll
