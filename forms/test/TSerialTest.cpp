// The serial card's form: its exchange with the companion's record, and each of its controls.
#include <gtest/gtest.h>

#include <array>
#include <memory>
#include <string>
#include <vector>

#include "forms/Forms.h"
#include "forms/TSerial.h"
#include "machine/Machine.h"
#include "machine/Ports.h"

namespace quoll::test {

namespace {

struct SerialHost : Host {
  std::array<uint8_t, kSerialMapSize> record{};
  bool shared = true;
  bool companion = true;
  std::vector<std::string> messages;
  std::vector<CompanionCall> calls;

  std::span<uint8_t> SerialRecord() override {
    return shared ? std::span<uint8_t>(record) : std::span<uint8_t>();
  }
  bool CallCompanion(CompanionCall call, const std::string& folder) override {
    EXPECT_EQ(folder, "the folder");
    calls.push_back(call);
    return companion;
  }
  void MessageBox(std::string_view text, std::string_view, MessageIcon) override {
    messages.emplace_back(text);
  }
};

struct TSerialTest : testing::Test {
  SerialHost host;
  std::unique_ptr<Machine> machine = std::make_unique<Machine>(host);
  Machine& m = *machine;
  TSerial& form = m.tserial;

  TSerialTest() { m.programFolder = "the folder"; }

  void Click(const char* name) { Press(m, TheControl("TSerial", name)); }
  void Tick() { TheControl("TSerial", "Timer1").control->timer(m, 0); }
  void Out(int32_t port, int32_t value) { PortOut(m, port, value); }
  void Arrive(std::string_view text) {
    std::copy(text.begin(), text.end(), host.record.begin());
    host.record[512] = static_cast<uint8_t>(text.size());
  }
  std::string Sent() const { return {m.serial.SerialTx.begin(), m.serial.SerialTx.end()}; }
};

TEST_F(TSerialTest, TheMenuShowsIt) {
  Press(m, TheControl("TScreen", "xSerial"));
  EXPECT_TRUE(form.window.visible && form.window.raise);
}

TEST_F(TSerialTest, TextsAndCaptions) {
  const std::pair<const char*, const char*> buttons[] = {
      {"Command1", "OPEN"}, {"Command2", "CLOSE"}, {"Command5", "Clear"}, {"Command8", "Send"},
      {"Command3", "bal"},  {"Command4", "jobb"},  {"Command6", "fel"}};
  for (const auto& [name, caption] : buttons) EXPECT_EQ(CaptionOf(TheControl("TSerial", name)), caption);
  EXPECT_EQ(form.Label1, "Buffer in: ");
  EXPECT_EQ(form.Label2, "Buffer out:");
  EXPECT_EQ(form.Label3, "PTZ PelcoP Address 1");
}

TEST_F(TSerialTest, TheTimerHandsBytesOver) {
  for (const int byte : {0x41, 0, 0xFF}) Out(0x20, byte);
  Arrive(std::string_view("x\0y", 3));
  Tick();
  EXPECT_EQ(host.record[513], 3);
  EXPECT_EQ(host.record[256], 'A');
  EXPECT_EQ(host.record[257], 0);
  EXPECT_EQ(host.record[258], 0xFF);
  EXPECT_EQ(host.record[512], 0);
  EXPECT_EQ(form.Text1, "x.y");
  EXPECT_EQ(form.Label4, "3");
  EXPECT_EQ(form.Label5, "0");
  EXPECT_EQ(PortIn(m, 0x21), 0xFF);
  EXPECT_EQ(PortIn(m, 0x20), 'x');
  EXPECT_EQ(PortIn(m, 0x20), 0);
  EXPECT_EQ(PortIn(m, 0x20), 'y');
  EXPECT_EQ(PortIn(m, 0x21), 0);
  EXPECT_EQ(PortIn(m, 0x20), 0);
  Out(0x20, 'B');
  Tick();  // the companion has not taken the last ones
  EXPECT_EQ(host.record[256], 'A');
  EXPECT_EQ(form.Label4, "0");
  EXPECT_EQ(form.Label5, "1");
  EXPECT_EQ(form.Text1, "x.y") << "as of the last arrival";
}

// The box is shown once until the queue is empty, and nothing is lost.
TEST_F(TSerialTest, TooMuchIsToldOnceAndKept) {
  std::string expected;
  for (int i = 0; i < 600; ++i) {
    Out(0x20, i % 251);
    expected.push_back(static_cast<char>(i % 251));
  }
  std::string got;
  for (const int count : {255, 255, 90, 0}) {
    Tick();
    EXPECT_EQ(host.record[513], count);
    EXPECT_EQ(host.messages, std::vector<std::string>{"Buffer underrun TX!"});
    got.append(host.record.begin() + 256, host.record.begin() + 256 + count);
    host.record[513] = 0;
  }
  EXPECT_EQ(got, expected);
  for (int i = 0; i < 255; ++i) Out(0x20, i);
  Tick();
  EXPECT_EQ(host.messages.size(), 1U) << "255 bytes fit";
  host.record[513] = 0;
  for (int i = 0; i < 256; ++i) Out(0x20, i);
  Tick();
  EXPECT_EQ(host.messages.size(), 2U);
}

TEST_F(TSerialTest, WithoutARecordNothingHappens) {
  host.shared = false;
  Out(0x20, 'A');
  Tick();
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(form.Label5, "1");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(TSerialTest, TheLineIsNamed) {
  const std::pair<SerialLine, const char*> rows[] = {
      {{true, 9600, 8, Parity::None, 2}, "9600 8N1"},      {{true, 300, 7, Parity::Even, 4}, "300 7E2"},
      {{true, 50, 5, Parity::Odd, 3}, "50 5O1.5"},         {{true, 1200, 6, Parity::Mark, 2}, "1200 6M1"},
      {{true, 115200, 8, Parity::Space, 2}, "115200 8S1"}, {{true, 0, 0, Parity::None, 0}, "Open"},
      {{false, 9600, 8, Parity::None, 2}, "Closed"}};
  EXPECT_EQ(form.Label6, "Closed");
  for (const auto& [line, text] : rows) {
    TellLine(SerialView(host.record), line);
    Tick();
    EXPECT_EQ(form.Label6, text);
  }
}

TEST_F(TSerialTest, OpenAndCloseCallTheCompanion) {
  Click("Command1");
  Click("Command2");
  EXPECT_EQ(host.calls, (std::vector{CompanionCall::Show, CompanionCall::Close}));
  EXPECT_TRUE(host.messages.empty());
  host.companion = false;
  Click("Command2");
  EXPECT_TRUE(host.messages.empty());
  Click("Command1");
  EXPECT_EQ(host.messages, std::vector<std::string>{"Not Found : QUOLLserial.exe"});
}

TEST_F(TSerialTest, SendAndClear) {
  Click("Command8");
  EXPECT_EQ(Sent(), "");
  SetText(m, TheControl("TSerial", "Text2"), "AT\r");
  Click("Command8");
  PressEnter(m, TheControl("TSerial", "Text2"));
  EXPECT_EQ(Sent(), "AT\rAT\r");
  EXPECT_EQ(form.Label5, "6");
  Arrive("OK");
  host.record[513] = 1;  // nothing goes out
  Tick();
  EXPECT_EQ(form.Text1, "OK");
  Click("Command5");
  EXPECT_EQ(Sent(), "");
  EXPECT_EQ(form.Text1, "");
  EXPECT_EQ(form.Label4 + form.Label5, "00");
  EXPECT_EQ(PortIn(m, 0x21), 0);
  EXPECT_EQ(form.Text2, "AT\r");
}

// Eight bytes: start, address, four of data, end, and the exclusive or of those before.
TEST_F(TSerialTest, CameraButtonsMoveWhileTheyAreHeld) {
  using Frame = std::array<uint8_t, 8>;
  constexpr Frame kStop{0xA0, 1, 0, 0, 0, 0, 0xAF, 0x0E};
  const std::pair<const char*, Frame> rows[] = {{"Command3", {0xA0, 1, 0, 0x04, 0x20, 0, 0xAF, 0x2A}},
                                                {"Command4", {0xA0, 1, 0, 0x02, 0x20, 0, 0xAF, 0x2C}},
                                                {"Command6", {0xA0, 1, 0, 0x08, 0, 0x20, 0xAF, 0x26}},
                                                {"Command7", {0xA0, 1, 0, 0x10, 0, 0x20, 0xAF, 0x3E}}};
  const auto text = [](const Frame& frame) { return std::string(frame.begin(), frame.end()); };
  for (const auto& [name, frame] : rows) {
    m.serial.SerialTx.clear();
    MouseDown(m, TheControl("TSerial", name));
    EXPECT_EQ(Sent(), text(frame)) << name;
    MouseUp(m, TheControl("TSerial", name));
    EXPECT_EQ(Sent(), text(frame) + text(kStop)) << name;
    EXPECT_EQ(form.Label5, "16");
  }
}

TEST_F(TSerialTest, PortsOfTheCard) {
  m.PortShadow[0x20] = 1;
  Out(0x20, 0x141);
  EXPECT_EQ(Sent(), "A");
  EXPECT_EQ(m.PortShadow[0x20], 1) << "not kept";
  Out(0x21, 0x55);
  EXPECT_EQ(m.PortShadow[0x21], 0x55);
  EXPECT_EQ(PortIn(m, 0x21), 0);
  EXPECT_EQ(m.screen.List1.count, 0U);
}

}  // namespace

}  // namespace quoll::test
