// The serial card: ports 0x20 and 0x21 over two queues, which a timer exchanges with the companion program.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "cards/SerialMap.h"

namespace quoll {

struct Serial {
  SerialQueue SerialRx;  // came in and waits to be read by the machine
  SerialQueue SerialTx;  // written by the machine and waits for the exchange

  bool underrunTold = false;  // the message about SerialTx was shown since it was last empty
  SerialLine line;            // what the companion tells of its line

  bool operator==(const Serial&) const = default;
};

// Port 0x20: the byte joins SerialTx.
void SerialWrite(Serial& serial, uint8_t value);
// Port 0x20: the next byte of SerialRx, which leaves the queue; 0 when there is none.
uint8_t SerialRead(Serial& serial);
// Port 0x21: 0xFF when SerialRx holds a byte, else 0. A write to that port stays in PortShadow.
uint8_t SerialStatus(const Serial& serial);

// What the buttons do: all of the bytes join SerialTx.
void SerialSend(Serial& serial, std::span<const uint8_t> bytes);

// While SerialRx holds that much, the companion has to wait with more: a machine that never reads must not
// fill the host's memory.
inline constexpr size_t kMostReceived = size_t{1} << 20;

inline constexpr std::string_view kSerialUnderrun = "Buffer underrun TX!";

struct SerialExchanged {
  bool received = false;  // SerialRx has grown
  bool underrun = false;  // kSerialUnderrun is to be shown: SerialTx did not fit. Once until it is empty
};

// What the timer does: hands over up to 255 bytes of SerialTx when the companion has taken the last ones, the
// rest stays for the next time; takes what the companion has for the machine.
SerialExchanged SerialExchange(Serial& serial, SerialView view);

// What a text box shows of a queue: its last bytes, at most so many, with a dot for each unprintable one.
std::string SerialText(const SerialQueue& queue, size_t most = 4096);

// The frame of eight bytes by which a Pelco-P camera is moved.
enum class CameraMove { Stop, Left, Right, Up, Down };
inline constexpr uint8_t kCameraAddress = 1;
std::array<uint8_t, 8> PelcoP(uint8_t address, CameraMove move);

}  // namespace quoll
