#include "sound/test/ChipTwins.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace quoll::test {

namespace {

// The model's table has a row for each sample, the chip's a row for each channel.
template <class Rows, class Columns>
void ExpectTurned(const Rows& model, const Columns& chip, const char* what) {
  for (size_t c = 0; c < std::size(chip); ++c) {
    for (int i = 0; i < kFrameSamples; ++i)
      ASSERT_EQ(chip[c][i], model[i][c]) << what << ' ' << c << ' ' << i;
  }
}

template <class Model, class Chip>
void ExpectRows(const Model& model, const Chip& chip, const char* what) {
  for (int i = 0; i < kFrameSamples; ++i) {
    for (size_t c = 0; c < chip[0].size(); ++c)
      ASSERT_EQ(chip[i][c], model[i][c]) << what << ' ' << i << ' ' << c;
  }
}

template <class Model, class Chip>
void ExpectFrame(const Model& model, const Chip& chip, const char* what) {
  for (int i = 0; i < kFrameSamples; ++i) ASSERT_EQ(chip[i], model[i]) << what << ' ' << i;
}

// A register, rolled so that a few neighbours of first get most of the writes.
int NearOrAny(Dice& dice, int first, int count, int all) {
  return dice.Once(8) ? dice.Roll(all) : first + dice.Roll(count);
}

}  // namespace

void SnTwins::HoldTone() {
  for (const int value : {0x8D, 0x11, 0x93, 0xAC, 0x02, 0xB1, 0xC7, 0x05, 0xD0, 0xE6, 0xF4}) Write(value);
}

void SnTwins::ExpectEqual() const {
  TwinRandoms::ExpectEqual();
  EXPECT_EQ(std::tie(chip.SN_Reg, chip.SN_Latch, chip.silent, chip.reseedCount, chip.whiteNoise, chip.phase,
                     chip.toggle),
            std::tie(model.word, model.latch, model.silent, model.reseedCount, model.own, model.phase,
                     model.toggle));
  ExpectRows(model.voices, chip.voices, "voices");
  ExpectFrame(model.out, chip.SnOut, "SnOut");
}

// The envelope's sounds need modes, and a mixer that is open.
void AyTwins::WriteAny(Dice& dice) {
  const int reg = dice.Roll(18);
  Write(reg, reg == 7 && !dice.Once(6) ? dice.Roll(63) : dice.Byte());
}

void AyTwins::HoldTone() {
  const std::array<int, 14> registers{0x11, 1, 0x5A, 0, 0xF3, 2, 9, 0x28, 12, 16, 9, 0x37, 0, 14};
  for (int reg = 0; reg < 14; ++reg) Write(reg, registers[reg]);
}

void AyTwins::ExpectEqual() const {
  TwinRandoms::ExpectEqual();
  EXPECT_EQ(std::tie(chip.AY_Reg, chip.latch, chip.silent, chip.envelopeModes, chip.AY_Phase),
            std::tie(model.reg, model.latch, model.silent, model.envelopeModes, model.phase));
  const AyState& state = chip.AY_State;
  for (int c = 0; c < 3; ++c) {
    EXPECT_EQ(
        std::tie(state.tone[c].frequency, state.tone[c].period, state.tone[c].level, state.tone[c].mixer),
        std::tie(model.tone[c].frequency, model.tone[c].period, model.tone[c].level, model.tone[c].mixer))
        << c;
  }
  EXPECT_EQ(std::tie(state.noiseFrequency, state.noisePeriod, state.noiseValue, state.envelopeFrequency,
                     state.envelopePeriod, state.envelopeValue, state.envelopeShape),
            std::tie(model.noiseFrequency, model.noisePeriod, model.noiseValue, model.envelopeFrequency,
                     model.envelopePeriod, model.envelopeValue, model.envelopeShape));
  ExpectRows(model.rows, chip.AY_Rows, "AY_Rows");
  ExpectFrame(model.out, chip.AyOut, "AyOut");
}

void SaaTwins::WriteAny(Dice& dice) {
  if (dice.Once(10)) return Write(28, dice.Once(8) ? dice.Roll(4) : 1);
  controls.patch2 = dice.Once(20) != controls.patch2;
  controls.patch5 = dice.Once(20) != controls.patch5;
  Write(dice.Roll(30), dice.Byte());
}

void SaaTwins::HoldTone() {
  for (int c = 0; c < kSaaChannels; ++c) {
    Write(c, 0x9C - 16 * c);
    Write(8 + c, 40 * c + 3);
  }
  for (const auto& [reg, value] : {std::pair{16, 0x43},
                                   {17, 0x52},
                                   {18, 0x34},
                                   {20, 0x3F},
                                   {21, 0x12},
                                   {22, 0x21},
                                   {24, 0x8A},
                                   {25, 0x97},
                                   {28, 1}})
    Write(reg, value);
}

void SaaTwins::ExpectEqual() const {
  TwinRandoms::ExpectEqual();
  EXPECT_EQ(
      std::tie(chip.latch, chip.SAA_Amp, chip.SAA_Noise, chip.soundEnable, chip.resetRequest, chip.silent),
      std::tie(model.address, model.amp, model.noise, model.soundEnable, model.resetRequest, model.silent));
  for (int c = 0; c < kSaaChannels; ++c) {
    EXPECT_EQ(
        std::tie(chip.SAA_Freq[c].frequency, chip.SAA_Freq[c].octave, chip.SAA_Enable[c].tone,
                 chip.SAA_Enable[c].noise),
        std::tie(model.freq[c].number, model.freq[c].octave, model.enable[c].tone, model.enable[c].noise))
        << c;
  }
  for (int e = 0; e < 2; ++e) {
    const Saa1099::Envelope& own = chip.SAA_Env[e];
    const PlainSaa1099::Envelope& other = model.env[e];
    EXPECT_EQ(std::tie(own.enable, own.invertRight, own.externalClock, own.mode, own.threeBit,
                       chip.SAA_EnvState.phase[e]),
              std::tie(other.enable, other.invertRight, other.external, other.mode, other.threeBit,
                       model.envPhase[e]))
        << e;
    EXPECT_EQ(chip.SAA_EnvState.level[e] != 0, model.envLevel[e] != 0) << e;  // no shape takes the size
  }
  EXPECT_EQ(std::tie(chip.SAA_Tone.phase, chip.SAA_Tone.level), std::tie(model.tonePhase, model.toneLevel));
  ExpectTurned(model.wave, chip.SaaWave, "SaaWave");
  ExpectTurned(model.left, chip.SaaLeft, "SaaLeft");
  ExpectTurned(model.right, chip.SaaRight, "SaaRight");
  ExpectFrame(model.noise0, chip.SaaNoise0, "SaaNoise0");
  ExpectFrame(model.noise1, chip.SaaNoise1, "SaaNoise1");
  ExpectFrame(model.env0, chip.SaaEnv0, "SaaEnv0");
  ExpectFrame(model.env1, chip.SaaEnv1, "SaaEnv1");
  ExpectFrame(model.outL, chip.SaaOutL, "SaaOutL");
  ExpectFrame(model.outR, chip.SaaOutR, "SaaOutR");
}

void OplTwins::WriteAny(Dice& dice) {
  controls.Check1[dice.Roll(kOplChannels)] = !dice.Once(5);
  if (dice.Once(12)) return Write(0xC9, dice.Roll(2));
  if (dice.Once(6)) return Write(1, dice.Byte());
  static constexpr std::array kGroups{0x20, 0x40, 0x60, 0x80, 0xA0, 0xA0, 0xB0, 0xB0, 0xB0, 0xC0, 0xE0};
  Write(NearOrAny(dice, kGroups[dice.Roll(static_cast<int>(kGroups.size()))], 22, 256), dice.Byte());
}

void OplTwins::HoldTone() {
  Write(1, 0x20);
  for (const auto& [channel, modulator, carrier] : {std::array{1, 1, 4}, std::array{6, 16, 19}}) {
    Write(0x20 + modulator, 2 + channel);
    Write(0x40 + modulator, 3 * channel);
    Write(0xE0 + modulator, channel);
    Write(0x20 + carrier, 1);
    Write(0x40 + carrier, channel / 4);
    Write(0xE0 + carrier, channel / 2);
    Write(0xA0 + channel, 0x81);
    Write(0xC0 + channel, 4);
    Write(0xB0 + channel, 0x20 + 4 * channel + 1);
  }
}

void OplTwins::ExpectEqual() const {
  EXPECT_EQ(std::tie(chip.OPL_Reg, chip.latch, chip.silent, chip.phases.modulator, chip.phases.carrier),
            std::tie(model.OPL_Reg, model.latch, model.silent, model.modulatorPhase, model.carrierPhase));
  const OplTables tables = OplTablesOf(chip.sounding);
  ExpectTurned(model.modulator, tables.modulator, "modulator");
  ExpectTurned(model.carrier, tables.carrier, "carrier");
  ExpectFrame(model.Ym3812Out, chip.Ym3812Out, "Ym3812Out");
}

void OpllTwins::WriteAny(Dice& dice) {
  controls.Check7[dice.Roll(kOpllChannels)] = !dice.Once(5);
  Write(dice.Once(8) ? dice.Roll(256) : 16 * (1 + dice.Roll(3)) + dice.Roll(kOpllChannels), dice.Byte());
}

void OpllTwins::HoldTone() {
  for (int c = 0; c < kOpllChannels; ++c) {
    Write(0x10 + c, 29 * c + 7);
    Write(0x20 + c, 0x10 + 2 * (c % 7) + (c & 1));
    Write(0x30 + c, 15 - c);
  }
}

void OpllTwins::ExpectEqual() const {
  EXPECT_EQ(std::tie(chip.OPLL_Reg, chip.latch, chip.silent, chip.phase),
            std::tie(model.OPLL_Reg, model.latch, model.silent, model.phase));
  ExpectTurned(model.work, chip.work, "work");
  ExpectFrame(model.Ym2413Out, chip.Ym2413Out, "Ym2413Out");
}

void SidTwins::WriteAny(Dice& dice) {
  const auto flip = [&dice](bool& box, int in) { box = dice.Once(in) != box; };
  for (bool* box : {&controls.Check1, &controls.Check2, &controls.Check3, &controls.Check4, &controls.Check5})
    flip(*box, 60);
  for (bool* box : {&controls.Check6, &controls.Check7, &controls.Check10}) flip(*box, 60);
  controls.Check9[dice.Roll(kSidVoices)] = !dice.Once(5);
  if (dice.Once(20)) {
    controls.HScroll1 = dice.Roll(101);
    controls.HScroll2 = dice.Roll(101);
    controls.HScroll3 = dice.Roll(101);
    controls.HScroll4 = 1 + dice.Roll(1200);
    controls.HScroll5 = 1 + dice.Roll(1200);
    controls.Text1 = dice.Roll(5) - 1;
  }
  if (dice.Once(30)) return Write(24, dice.Once(5) ? 0 : dice.Byte() | 1);
  if (dice.Once(4)) return Write(7 * dice.Roll(kSidVoices) + 4, dice.Byte());
  Write(dice.Roll(32), dice.Byte());
}

void SidTwins::HoldTone() {
  static constexpr std::array kRegisters{0x34, 0x12, 0x00, 0x04, 0x41, 0x5A, 0xA8, 0x99, 0x08,
                                         0,    0,    0x23, 0x24, 0x98, 0xA0, 0x21, 0,    0,
                                         0x15, 0x33, 0xF5, 7,    0x90, 0x13, 0x1F};
  for (size_t reg = 0; reg < kRegisters.size(); ++reg) Write(static_cast<int>(reg), kRegisters[reg]);
  controls.Check1 = controls.Check2 = true;
}

void SidTwins::RenderModel() {
  PlainSidControls plain;
  plain.highPass = controls.Check1;
  plain.lowPass = controls.Check2;
  plain.butterfly = controls.Check3;
  plain.wobbler = controls.Check4;
  plain.steady = controls.Check5;
  plain.adsr = controls.Check6;
  plain.filter = controls.Check7;
  plain.ring = controls.Check10;
  plain.voice = controls.Check9;
  plain.highPassSlider = controls.HScroll1;
  plain.lowPassSlider = controls.HScroll2;
  plain.butterflySlider = controls.HScroll3;
  plain.attackSlider = controls.HScroll4;
  plain.decaySlider = controls.HScroll5;
  plain.repeats = controls.Text1;
  model.Render(plain, forModel);
}

namespace {

void ExpectMemory(const SidMemory& own, const PlainSidMemory& other, const char* what) {
  EXPECT_EQ(std::tie(own.output, own.input), std::tie(other.output, other.input)) << what;
}

void ExpectVoice(const SidVoice& own, const PlainSidVoice& other) {
  EXPECT_EQ(
      std::tie(own.frequency, own.control, own.attack, own.decay, own.sustain, own.release, own.attackStep,
               own.decayStep, own.sustainLevel, own.releaseStep, own.pulseWidth, own.envelope),
      std::tie(other.frequency, other.control, other.attack, other.decay, other.sustain, other.release,
               other.attackStep, other.decayStep, other.sustainLevel, other.releaseStep, other.pulseWidth,
               other.envelope));
}

}  // namespace

void SidTwins::ExpectEqual() const {
  TwinRandoms::ExpectEqual();
  EXPECT_EQ(std::tie(chip.SID_Reg, chip.latch), std::tie(model.SID_Reg, model.latch));
  for (int v = 0; v < kSidVoices; ++v) {
    SCOPED_TRACE(testing::Message() << "voice " << v);
    ExpectVoice(chip.SID_Voice[v], model.SID_Voice[v]);
    ExpectMemory(chip.lowPass[v], model.chipLowPass[v], "low pass");
    ExpectMemory(chip.highPass[v], model.chipHighPass[v], "high pass");
  }
  EXPECT_EQ(std::tie(chip.SidCutoff, chip.SidRoute, chip.SidResonance, chip.SidMode, chip.SidVolume,
                     chip.silent, chip.SidPhase, chip.SidEnvState, chip.SidGate, chip.SidGateOld,
                     chip.SidNoise, chip.SidTestFreq),
            std::tie(model.SidCutoff, model.SidRoute, model.SidResonance, model.SidMode, model.SidVolume,
                     model.silent, model.SidPhase, model.SidEnvState, model.SidGate, model.SidGateOld,
                     model.SidNoise, model.SidTestFreq));
  EXPECT_EQ(chip.cutoffPercent, std::nearbyint(model.lowPassShown));
  ExpectMemory(chip.postHighPass, model.postHighPass, "post high pass");
  ExpectMemory(chip.postLowPass, model.postLowPass, "post low pass");
  ExpectMemory(chip.postButterfly, model.postButterfly, "post butterfly");
  ExpectTurned(model.SidVoiceOut, chip.SidVoiceOut, "SidVoiceOut");
  ExpectFrame(model.SidOut, chip.SidOut, "SidOut");
  if (chip.silent == 0) {
    EXPECT_EQ(SidMean(chip), model.mean);
  }
}

}  // namespace quoll::test
