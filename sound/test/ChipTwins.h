// Each chip beside its plain model: both get the same writes and the same random numbers, and all that both
// have must be equal after every frame.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "sound/Ay38910.h"
#include "sound/Saa1099.h"
#include "sound/Sid6581.h"
#include "sound/Sn76489.h"
#include "sound/Ym2413.h"
#include "sound/Ym3812.h"
#include "sound/test/model/PlainAy38910.h"
#include "sound/test/model/PlainSaa1099.h"
#include "sound/test/model/PlainSid6581.h"
#include "sound/test/model/PlainSn76489.h"
#include "sound/test/model/PlainYm2413.h"
#include "sound/test/model/PlainYm3812.h"

namespace quoll::test {

struct Dice {
  Random source;

  // 0 to below sides.
  int Roll(int sides) { return static_cast<int>(RandomNext(source) * sides); }
  bool Once(int in) { return Roll(in) == 0; }
  uint8_t Byte() { return static_cast<uint8_t>(Roll(256)); }
};

// What all twins have: the machine's random numbers, once for each side.
struct TwinRandoms {
  Random forChip, forModel;

  void ExpectEqual() const { EXPECT_EQ(forChip, forModel); }
};

// At a chip's two ports, which differ in bit 0.
template <class Twins>
void WriteRegister(Twins& twins, int addressPort, int reg, int value) {
  twins.Port(addressPort, reg);
  twins.Port(addressPort ^ 1, value);
}

struct SnTwins : TwinRandoms {
  Sn76489 chip;
  PlainSn76489 model;

  SnTwins() {
    SnInit(chip);
    model.Reset();
    model.own = chip.whiteNoise;
  }
  void Write(int value) {
    SnRegisterWrite(chip, static_cast<uint8_t>(value));
    model.Write(value);
  }
  void Reset() {
    SnReset(chip);
    model.Reset();
  }
  void WriteAny(Dice& dice) { Write(dice.Byte()); }
  void HoldTone();
  void RenderChip() { SnRender(chip, forChip); }
  void RenderModel() { model.Render(forModel, kSnNoiseSeed); }
  void ExpectEqual() const;
};

struct AyTwins : TwinRandoms {
  Ay38910 chip;
  PlainAy38910 model;

  AyTwins() { AyInit(chip); }
  void Port(int port, int value) {
    AyWrite(chip, static_cast<uint8_t>(port), static_cast<uint8_t>(value));
    model.Write(port, value);
  }
  void Write(int reg, int value) { WriteRegister(*this, 0x3A, reg, value); }
  void Reset() {
    AyReset(chip);
    model.Reset();
  }
  void WriteAny(Dice& dice);
  void HoldTone();
  void RenderChip() { AyRender(chip, forChip); }
  void RenderModel() { model.Render(forModel); }
  void ExpectEqual() const;
};

struct SaaTwins : TwinRandoms {
  Saa1099 chip;
  PlainSaa1099 model;
  SaaControls controls;

  SaaTwins() { Reset(); }
  void Port(int port, int value) {
    SaaRegisterWrite(chip, static_cast<uint8_t>(port), static_cast<uint8_t>(value));
    model.Write(port, value);
  }
  void Write(int reg, int value) { WriteRegister(*this, 0x33, reg, value); }
  void Reset() {
    SaaReset(chip);
    model.Reset();
  }
  void WriteAny(Dice& dice);
  void HoldTone();
  void RenderChip() { SaaRender(chip, controls, forChip); }
  void RenderModel() { model.Render(forModel, controls.patch2, controls.patch5); }
  void ExpectEqual() const;
};

struct OplTwins : TwinRandoms {
  Ym3812 chip;
  PlainYm3812 model;
  OplControls controls;

  OplTwins() { Reset(); }
  void Port(int port, int value) {
    OplWrite(chip, static_cast<uint8_t>(port), static_cast<uint8_t>(value));
    model.Write(port, value);
  }
  void Write(int reg, int value) { WriteRegister(*this, 0x34, reg, value); }
  void Reset() {
    OplReset(chip);
    model.Reset();
  }
  void WriteAny(Dice& dice);
  void HoldTone();
  void RenderChip() { OplRender(chip, controls); }
  void RenderModel() {
    model.enabled = controls.Check1;
    model.Render();
  }
  void ExpectEqual() const;
};

struct OpllTwins : TwinRandoms {
  Ym2413 chip;
  PlainYm2413 model;
  OpllControls controls;

  OpllTwins() { Reset(); }
  void Port(int port, int value) {
    OpllWrite(chip, static_cast<uint8_t>(port), static_cast<uint8_t>(value));
    model.Write(port, value);
  }
  void Write(int reg, int value) { WriteRegister(*this, 0x3C, reg, value); }
  void Reset() {
    OpllReset(chip);
    model.Reset();
  }
  void WriteAny(Dice& dice);
  void HoldTone();
  void RenderChip() { OpllRender(chip, controls); }
  void RenderModel() {
    model.enabled = controls.Check7;
    model.Render();
  }
  void ExpectEqual() const;
};

struct SidTwins : TwinRandoms {
  Sid6581 chip;
  PlainSid6581 model;
  SidControls controls;

  SidTwins() { Reset(); }
  void Port(int port, int value) {
    SidWrite(chip, static_cast<uint8_t>(port), static_cast<uint8_t>(value));
    model.Write(port, value);
  }
  void Write(int reg, int value) { WriteRegister(*this, 0x38, reg, value); }
  void Reset() {
    SidReset(chip);
    model.Reset();
  }
  void WriteAny(Dice& dice);
  void HoldTone();
  void RenderChip() { SidRender(chip, controls, forChip); }
  void RenderModel();
  void ExpectEqual() const;
};

}  // namespace quoll::test
