#include "forms/TSerial.h"

#include "cards/Companion.h"
#include "core/FormTable.h"
#include "machine/Machine.h"

namespace quoll {

namespace {

using namespace std::chrono_literals;

void Tell(Machine& m, std::string_view text) {
  m.host->MessageBox(text, "QUOLLEMU", MessageIcon::Exclamation);
}

void ShowCount(std::string& label, uint64_t& shown, size_t count) {
  if (shown == count) return;
  shown = count;
  label = std::to_string(count);
}

void ShowCounts(Machine& m) {
  ShowCount(m.tserial.Label4, m.tserial.countIn, m.serial.SerialRx.size());
  ShowCount(m.tserial.Label5, m.tserial.countOut, m.serial.SerialTx.size());
}

// "9600 8N1"; a terminal or a TCP line has neither speed nor form.
std::string LineText(const SerialLine& line) {
  constexpr std::string_view kParities = "NEOMS";
  constexpr std::array kStops{"1", "1.5", "2"};
  if (!line.open) return "Closed";
  if (line.baud == 0 || line.dataBits == 0 || line.halfStopBits < 2) return "Open";
  return std::to_string(line.baud) + " " + std::to_string(line.dataBits) +
         kParities[static_cast<size_t>(line.parity)] + kStops[line.halfStopBits - 2U];
}

// The exchange.
void Timer1_Timer(Machine& m) {
  const std::span<uint8_t> record = m.host->SerialRecord();
  if (record.size() == kSerialMapSize) {
    const SerialLine before = m.serial.line;
    const SerialExchanged done = SerialExchange(m.serial, SerialView(record));
    if (done.received) m.tserial.Text1 = SerialText(m.serial.SerialRx);
    if (m.serial.line != before) m.tserial.Label6 = LineText(m.serial.line);
    if (done.underrun) Tell(m, kSerialUnderrun);
  }
  ShowCounts(m);
}

void Command1_Click(Machine& m) {
  if (!m.host->CallCompanion(CompanionCall::Show, m.programFolder)) Tell(m, kCompanionNotFound);
}

// With no companion there is nothing open.
void Command2_Click(Machine& m) { m.host->CallCompanion(CompanionCall::Close, m.programFolder); }

// Both directions: what waited is lost.
void Command5_Click(Machine& m) {
  m.serial.SerialRx.clear();
  m.serial.SerialTx.clear();
  m.serial.underrunTold = false;
  m.tserial.Text1.clear();
  ShowCounts(m);
}

void Send(Machine& m, std::span<const uint8_t> bytes) {
  SerialSend(m.serial, bytes);
  ShowCounts(m);
}

void Command8_Click(Machine& m) {
  const std::string& text = m.tserial.Text2;
  Send(m, {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
}

// The camera moves as long as the button is held.
template <CameraMove kMove>
void Camera(Machine& m) {
  Send(m, PelcoP(kCameraAddress, kMove));
}

template <CameraMove kMove>
constexpr Control CameraButton(std::string_view name, std::string_view caption) {
  return Button(name, caption, {}).Down(Camera<kMove>).Up(Camera<CameraMove::Stop>);
}

constexpr On<&Machine::tserial> f;

constexpr std::array kControls{
    Button("Command1", "OPEN", Command1_Click),
    Button("Command2", "CLOSE", Command2_Click),
    Button("Command5", "Clear", Command5_Click),
    Button("Command8", "Send", Command8_Click),
    CameraButton<CameraMove::Left>("Command3", "bal"),
    CameraButton<CameraMove::Right>("Command4", "jobb"),
    CameraButton<CameraMove::Up>("Command6", "fel"),
    CameraButton<CameraMove::Down>("Command7", "le"),
    f.Label<&TSerial::Label1>("Label1", ""),
    f.Label<&TSerial::Label2>("Label2", ""),
    f.Label<&TSerial::Label3>("Label3", ""),
    f.Label<&TSerial::Label4>("Label4", "Bytes in"),
    f.Label<&TSerial::Label5>("Label5", "Bytes out"),
    f.Label<&TSerial::Label6>("Label6", "Line"),
    f.Text<&TSerial::Text1>("Text1", "Received"),
    f.Text<&TSerial::Text2>("Text2", "To be sent").Enter(Command8_Click),
    Timer("Timer1", 20ms, Timer1_Timer),
};

}  // namespace

constexpr Form kTSerial{"TSerial", "Serial", f.State, kControls};

}  // namespace quoll
