// The processor while the run loop runs it: the record, and by value the few words that change at every
// instruction, so that the compiler keeps them in host registers.
//
// A stretch of passes between two moments at which something else can happen is a slice. The clocks in
// RunState stand still inside a slice and are brought up to date at its end, or by Settle() when a device
// wants to know the time.
#pragma once

#include <cstdint>

#include "loop/MissingOP.h"
#include "machine/Machine.h"
#include "machine/Ports.h"
#include "z80/Alu.h"

namespace quoll {

// kMapped: memory is reached through the page map, PC lies within it. Otherwise every access walks
// MemRead and MemWrite: needed while reads have side effects or PC has left the map.
template <bool kMapped>
struct SliceCpu {
  static constexpr bool kMappedMemory = kMapped;
  static constexpr intptr_t kGranuleMask = 0xFFF;

  Machine& m;
  Z80State& s;
  intptr_t pc;      // PC
  int32_t left;     // T-states until the slice ends: it does after the pass that makes it 0 or less
  int32_t settled;  // what left was when the clocks were last brought up to date
  size_t trail;     // next slot of PcHistory
  int32_t refresh;  // R

  SliceCpu(Machine& machine, int32_t slice)
      : m(machine),
        s(machine.z80),
        pc(machine.z80.PC),
        left(slice),
        settled(slice),
        trail(machine.run.PcHistory.next),
        refresh(machine.z80.R) {}

  SliceCpu(const SliceCpu&) = default;
  // Takes over what an instruction done on a copy has left.
  SliceCpu& operator=(const SliceCpu& other) {
    pc = other.pc;
    left = other.left;
    settled = other.settled;
    trail = other.trail;
    refresh = other.refresh;
    return *this;
  }

  // The start of a pass: its address goes into the history.
  void BeginPass() {
    m.run.PcHistory.slots[trail] = static_cast<int32_t>(pc);
    trail = (trail + 1) % PcTrail::kSlots;
  }

  // The history after further passes at the same address.
  void RepeatPasses(int32_t passes) {
    for (int32_t i = 0; i < passes && i < static_cast<int32_t>(PcTrail::kSlots); ++i) BeginPass();
  }

  // Ends a handler: T-states, length of the instruction from where pc stands, steps of R.
  void Next(int32_t tStates, int32_t length = 1, int32_t steps = 1) {
    pc += length;
    refresh += steps;
    left -= tStates;
  }
  // The same for a jump.
  void Jump(intptr_t target, int32_t tStates, int32_t steps = 1) {
    pc = target;
    refresh += steps;
    left -= tStates;
  }

  // Brings the clocks up to the start of the present pass.
  void Settle() {
    const int32_t passed = settled - left;
    m.run.FrameClock += passed;
    m.run.Cycles += passed;
    m.run.ToneItCounter -= passed;
    settled = left;
  }
  // Ends the slice with the present pass: something happened that the run loop has to look at.
  void Cut() {
    settled -= left;
    left = 0;
  }
  // Writes the record back. The present pass's address leaves the history again: it stands in PrevPc until
  // the pass is over.
  static void Store(Machine& machine, intptr_t at, size_t nextSlot) {
    PcTrail& history = machine.run.PcHistory;
    machine.z80.PC = static_cast<int32_t>(at);
    history.next = (nextSlot - 1) % PcTrail::kSlots;
    machine.run.PrevPc = history.slots[history.next];
  }

  // Where the page map finds a byte; for writes nullptr when only MemWrite can do it.
  const uint8_t* ReadPointer(intptr_t address) const {
    const uintptr_t granule = m.pages.read[static_cast<size_t>((address >> 12) + PageMap::kBelow)];
    return reinterpret_cast<const uint8_t*>(granule + static_cast<uintptr_t>(address));
  }
  uintptr_t WriteGranule(intptr_t address) const {
    return m.pages.write[static_cast<size_t>((address >> 12) + PageMap::kBelow)];
  }
  uint8_t* WritePointer(intptr_t address) const {
    const uintptr_t granule = WriteGranule(address);
    return granule == 0 ? nullptr : reinterpret_cast<uint8_t*>(granule + static_cast<uintptr_t>(address));
  }

  uint8_t Read(intptr_t address) {
    if constexpr (kMapped) {
      return *ReadPointer(address);
    } else {
      return MemRead(m, static_cast<int32_t>(address));
    }
  }

  void Write(intptr_t address, int32_t value) {
    if constexpr (kMapped) {
      if (const uintptr_t granule = WriteGranule(address); granule != 0) [[likely]] {
        *reinterpret_cast<uint8_t*>(granule + static_cast<uintptr_t>(address)) = static_cast<uint8_t>(value);
        return;
      }
    }
    Settle();
    s.R = refresh & 0xFF;
    WriteByTree(m, pc, trail, address, value);
  }

  // A word, low byte first: one look-up when it lies within a granule. Without the map the high byte
  // is read first, as operands and LD do.
  int32_t ReadWord(intptr_t address) {
    if (kMapped && (address & kGranuleMask) != kGranuleMask) [[likely]] {
      const uint8_t* low = ReadPointer(address);
      return low[1] << 8 | low[0];
    }
    const int32_t high = Read(address + 1);
    return high << 8 | Read(address);
  }
  void WriteWord(intptr_t address, int32_t word) {
    Write(address, word & 0xFF);
    Write(address + 1, word >> 8);
  }

  // Operands, counted from where pc stands.
  uint8_t Byte(intptr_t offset) { return Read(pc + offset); }
  int32_t Word(intptr_t offset) { return ReadWord(pc + offset); }

  // The byte to be dispatched.
  uint8_t Fetch(intptr_t offset = 0) {
    const uint8_t opcode = Byte(offset);
    s.CurOpcode = opcode;
    return opcode;
  }

  // A register pair as an address.
  static intptr_t Address(int32_t pair) { return static_cast<intptr_t>(static_cast<uint32_t>(pair)); }
  uint8_t AtHL() { return Read(Address(HL(s))); }
  void ToHL(int32_t value) { Write(Address(HL(s)), value); }

  void Push2(int32_t high, int32_t low) {
    const int32_t top = Low16(WrappingSub(s.SP, 2));
    if (kMapped && (top & kGranuleMask) != kGranuleMask) [[likely]] {
      if (const uintptr_t granule = WriteGranule(top); granule != 0) [[likely]] {
        auto* byte = reinterpret_cast<uint8_t*>(granule + static_cast<uintptr_t>(top));
        byte[1] = static_cast<uint8_t>(high);
        byte[0] = static_cast<uint8_t>(low);
        s.SP = top;
        return;
      }
    }
    DecSP(s);
    Write(s.SP, high);
    DecSP(s);
    Write(s.SP, low);
  }
  // A program counter beyond 16 bits is pushed as its low 16 bits.
  void PushPC(intptr_t address) { Push2((address >> 8) & 0xFF, address & 0xFF); }
  // The stack wraps from 0xFFFF to 0, between the two bytes of a word too. The low byte is read first.
  int32_t Pop() {
    int32_t word;
    if (kMapped && s.SP != 0xFFFF) [[likely]] {
      word = ReadWord(s.SP);
    } else {
      word = Read(s.SP);
      word |= Read(Low16(WrappingAdd(s.SP, 1))) << 8;
    }
    s.SP = Low16(WrappingAdd(s.SP, 2));
    return word;
  }
  void CallTo(int32_t target, int32_t tStates, int32_t length, int32_t steps) {
    PushPC(pc + length);
    Jump(target, tStates, steps);
  }

  void Out(int32_t port, int32_t& value) {
    Settle();
    PortOut(m, port, value);
    if (MovesEvents(port)) Cut();
  }
  int32_t In(int32_t port) {
    Settle();
    const int32_t value = PortIn(m, port);
    if (MovesEvents(port)) Cut();
    return value;
  }

  // To be called in each pass that uses no T-states: a program made of such passes reaches no frame end,
  // so that the run loop has to come up for air by itself.
  void NoTime() {
    if (++m.IdlePasses % kIdleSlice == 0) Cut();
  }
  static constexpr uint32_t kIdleSlice = 0x10000;

  // The rare ways, kept out of the run loop's code. A write that ends the program
  // leaves PC at the instruction's first byte, so that it can be looked at and run again.
  [[gnu::noinline]] static void WriteByTree(Machine& machine, intptr_t at, size_t nextSlot, intptr_t address,
                                            int32_t value) {
    Store(machine, at, nextSlot);
    machine.z80.PC = machine.run.PrevPc;
    MemWrite(machine, static_cast<int32_t>(address), static_cast<uint8_t>(value));
  }
  [[gnu::noinline]] static intptr_t SkipUnknown(Machine& machine, intptr_t at) {
    machine.z80.PC = static_cast<int32_t>(at);
    MissingOP(machine);
    return machine.z80.PC;
  }

  // An opcode that the page does not know. No T-states, R stays.
  void Missing() {
    pc = SkipUnknown(m, pc);
    NoTime();
  }
  // True when undocumented instructions are executed; otherwise the opcode is unknown.
  bool UnDoc() {
    if (s.UnDocEnabled != 0) return true;
    Missing();
    return false;
  }
};

}  // namespace quoll
