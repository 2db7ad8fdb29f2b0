#include "fuzz.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try_input({reinterpret_cast<const char*>(data), size});
  return 0;
}
