#include "desktop/windows/ChipCircuits.h"

#include <array>

namespace quoll {

namespace {

// Both plans: the machine on the left, the chip's body in the middle, the sound on the right.
constexpr int kLeftEdge = 150, kPinLength = 25, kPitch = 22, kFirstPin = 50;
constexpr int kBus = 105, kBusBits = 8;

struct PinName {
  const char* name;
  int number;
};

int PinRow(int pin) { return kFirstPin + kPitch * pin; }

void AddLeftPins(CircuitPlan& plan, std::initializer_list<PinName> names) {
  int row = kFirstPin;
  for (const PinName& pin : names) {
    plan.pins.push_back(
        {{kLeftEdge, row}, {kLeftEdge - kPinLength, row}, pin.name, QString::number(pin.number)});
    row += kPitch;
  }
}

void AddRightPin(CircuitPlan& plan, QPoint at, PinName pin) {
  plan.pins.push_back({at, at + QPoint(kPinLength, 0), pin.name, QString::number(pin.number)});
}

void AddWire(CircuitPlan& plan, std::vector<QPoint> points, bool arrow = true) {
  plan.wires.push_back({.points = std::move(points), .arrow = arrow});
}

// The data bus to the chip's first eight pins.
void AddDataBus(CircuitPlan& plan) {
  const int last = PinRow(kBusBits - 1), middle = (kFirstPin + last) / 2;
  plan.blocks.push_back({{10, kFirstPin - 10, 70, last - kFirstPin + 20}, "Data bus\nof the\nmachine"});
  plan.wires.push_back({.points = {{80, middle}, {kBus, middle}}, .bus = true});
  plan.wires.push_back({.points = {{kBus, kFirstPin - 1}, {kBus, last + 1}}, .bus = true});
  for (int bit = 0; bit < kBusBits; ++bit)
    AddWire(plan, {{kBus, PinRow(bit)}, {kLeftEdge - kPinLength, PinRow(bit)}}, false);
}

// A block on the left that feeds some pins, the first and the last counted from 0.
void AddSource(CircuitPlan& plan, int firstPin, int lastPin, const QString& text) {
  plan.blocks.push_back({{10, PinRow(firstPin) - 9, 70, PinRow(lastPin) - PinRow(firstPin) + 18}, text});
  for (int pin = firstPin; pin <= lastPin; ++pin)
    AddWire(plan, {{80, PinRow(pin)}, {kLeftEdge - kPinLength, PinRow(pin)}}, false);
}

void AddSpeaker(CircuitPlan& plan, QPoint pinEnd, const QString& mixer) {
  const int x = pinEnd.x(), y = pinEnd.y();
  AddWire(plan, {pinEnd, {x + 15, y}});
  plan.blocks.push_back({{x + 15, y - 14, 50, 28}, mixer});
  AddWire(plan, {{x + 65, y}, {x + 80, y}}, false);
  plan.speakers.push_back({x + 80, y});
}

void AddSupply(CircuitPlan& plan, int edge, int row, PinName plus, PinName ground) {
  AddRightPin(plan, {edge, row}, plus);
  plan.notes.push_back({{edge + kPinLength + 6, row - 10, 40, 20}, "+5 V"});
  AddRightPin(plan, {edge, row + kPitch}, ground);
  const QPoint end(edge + kPinLength, row + kPitch);
  AddWire(plan, {end, end + QPoint(10, 0), end + QPoint(10, 10)}, false);
  plan.grounds.push_back(end + QPoint(10, 10));
}

}  // namespace

CircuitPlan SnCircuit() {
  constexpr int kEdge = 440, kOutRow = 127;
  CircuitPlan plan{.units = {570, 330}};
  plan.blocks.push_back({{kLeftEdge, 20, kEdge - kLeftEdge, 300}, "SN76489", true});
  AddLeftPins(plan, {{"D0", 3},
                     {"D1", 2},
                     {"D2", 1},
                     {"D3", 15},
                     {"D4", 13},
                     {"D5", 12},
                     {"D6", 11},
                     {"D7", 10},
                     {"/WE", 5},
                     {"/CE", 6},
                     {"CLK", 14}});
  AddDataBus(plan);
  AddSource(plan, 8, 9, "Ports\n30h FDh");
  AddSource(plan, 10, 10, "3.58 MHz");

  plan.blocks.push_back({{188, 50, 62, 164}, "Latch,\nregisters"});
  plan.blocks.push_back({{188, PinRow(10) - 11, 62, 22}, "Divider"});
  AddWire(plan, {{250, PinRow(10)}, {258, PinRow(10)}, {258, 75}}, false);
  plan.blocks.push_back({{378, 55, 22, 145}, "+"});
  constexpr std::array kVoices{"Tone 1", "Tone 2", "Tone 3", "Noise"};
  int row = 55;
  for (const char* voice : kVoices) {
    plan.blocks.push_back({{272, row, 52, 25}, voice});
    plan.blocks.push_back({{332, row, 38, 25}, "Level"});
    AddWire(plan, {{250, row + 7}, {272, row + 7}});
    AddWire(plan, {{258, row + 20}, {272, row + 20}});
    AddWire(plan, {{324, row + 12}, {332, row + 12}}, false);
    AddWire(plan, {{370, row + 12}, {378, row + 12}}, false);
    row += 40;
  }
  AddWire(plan, {{400, kOutRow}, {410, kOutRow}}, false);
  AddRightPin(plan, {kEdge, kOutRow}, {"OUT", 7});
  AddSpeaker(plan, {kEdge + kPinLength, kOutRow}, "Mixer");
  AddRightPin(plan, {kEdge, PinRow(8)}, {"READY", 4});
  AddSupply(plan, kEdge, PinRow(10), {"VCC", 16}, {"GND", 8});
  return plan;
}

CircuitPlan SaaCircuit() {
  constexpr int kEdge = 460;
  CircuitPlan plan{.units = {590, 370}};
  plan.blocks.push_back({{kLeftEdge, 20, kEdge - kLeftEdge, 325}, "SAA1099", true});
  AddLeftPins(plan, {{"D0", 10},
                     {"D1", 11},
                     {"D2", 12},
                     {"D3", 13},
                     {"D4", 14},
                     {"D5", 15},
                     {"D6", 16},
                     {"D7", 17},
                     {"A0", 3},
                     {"/CS", 2},
                     {"/WR", 1},
                     {"CLK", 8}});
  AddDataBus(plan);
  AddSource(plan, 8, 10, "Ports\n32h FEh,\n33h FFh");
  AddSource(plan, 11, 11, "8 MHz");

  struct Inner {
    const char* text;
    int row, height;
  };
  constexpr std::array kInner{Inner{"Tones\n0 1 2", 50, 34}, Inner{"Noise 0", 92, 22},
                              Inner{"Envelope 0", 122, 22},  Inner{"Tones\n3 4 5", 158, 34},
                              Inner{"Noise 1", 200, 22},     Inner{"Envelope 1", 230, 22}};
  plan.blocks.push_back({{188, 50, 56, 202}, "Registers"});
  plan.blocks.push_back({{338, 50, 34, 202}, "Mix"});
  for (const Inner& inner : kInner) {
    const int middle = inner.row + inner.height / 2;
    plan.blocks.push_back({{256, inner.row, 70, inner.height}, inner.text});
    AddWire(plan, {{244, middle}, {256, middle}});
    AddWire(plan, {{326, middle}, {338, middle}});
  }
  struct Side {
    const char* levels;
    PinName pin;
    int row;
  };
  constexpr std::array kSides{Side{"Left", {"OUTL", 5}, 110}, Side{"Right", {"OUTR", 4}, 190}};
  for (const Side& side : kSides) {
    plan.blocks.push_back({{380, side.row - 20, 36, 40}, side.levels});
    AddWire(plan, {{372, side.row}, {380, side.row}}, false);
    AddRightPin(plan, {kEdge, side.row}, side.pin);
    AddSpeaker(plan, {kEdge + kPinLength, side.row}, "Mixer");
  }
  AddRightPin(plan, {kEdge, PinRow(9)}, {"IREF", 6});
  AddRightPin(plan, {kEdge, PinRow(10)}, {"/DTACK", 7});
  AddSupply(plan, kEdge, PinRow(11), {"VDD", 18}, {"VSS", 9});
  return plan;
}

}  // namespace quoll
