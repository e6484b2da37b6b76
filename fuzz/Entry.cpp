// Where libFuzzer comes in.
#include "fuzz/Fuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  quoll::Fuzz({data, size});
  return 0;
}
