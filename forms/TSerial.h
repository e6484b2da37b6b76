// TSerial: the serial card's window, with a panel that steers a camera. Its timer is what moves the card's
// bytes to and from the companion program, whether the window is shown or not.
#pragma once

#include <cstdint>
#include <string>

#include "core/Form.h"

namespace quoll {

struct TSerial {
  FormState window;
  std::string Text1;  // what has come in and the machine has not read, as of the last arrival
  std::string Text2;  // what "Send" sends
  std::string Label1 = "Buffer in: ";  //
  std::string Label2 = "Buffer out:";  //
  std::string Label4 = "0";            // bytes that wait to be read by the machine
  std::string Label5 = "0";            // bytes that wait to be handed over
  std::string Label3 = "PTZ PelcoP Address 1";
  std::string Label6 = "Closed";  // what the companion tells of its line

  uint64_t countIn = 0, countOut = 0;  // what Label4 and Label5 show

  bool operator==(const TSerial&) const = default;
};

extern const Form kTSerial;

}  // namespace quoll
