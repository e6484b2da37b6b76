// A machine with its sound card in, for the tests of the chips' windows.
#pragma once

#include <string>

#include "forms/Forms.h"
#include "loop/SoundFrame.h"
#include "machine/Ports.h"
#include "testkit/FolderTest.h"

namespace quoll::test {

struct ChipBench : FolderTest {
  ChipBench() { m.screen.xio2 = true; }

  void Out(int port, int value) {
    int32_t variable = value;
    PortOut(m, port, variable);
  }
  // A register of a chip whose address port differs from its data port in bit 0.
  void OutRegister(int addressPort, int reg, int value) {
    Out(addressPort, reg);
    Out(addressPort ^ 1, value);
  }

  void Frame() {
    SoundFrame(m);
    if (m.mixer.FrameInBlock == kFramesPerBlock) m.mixer.FrameInBlock = 0;
  }
  void Block() {
    for (int frame = 0; frame < kFramesPerBlock; ++frame) Frame();
  }
  void Tick(const char* form, const char* control, bool on = true, int index = 0) {
    SetTick(m, TheControl(form, control, index), on);
  }
  void Slide(const char* form, const char* control, int value, int index = 0) {
    SetScroll(m, TheControl(form, control, index), value);
  }
  void Press(const char* form, const char* control, int index = 0) {
    quoll::Press(m, TheControl(form, control, index));
  }
  void RunTimer(const char* form) { TheControl(form, "Timer1").control->timer(m, 0); }
  std::string Text(const char* form, const char* control, int index = 0) {
    return *FieldOf<std::string>(m, TheControl(form, control, index));
  }
  const Trace& Scope(const char* form, const char* control, int index = 0) {
    return *FieldOf<Trace>(m, TheControl(form, control, index));
  }
};

}  // namespace quoll::test
