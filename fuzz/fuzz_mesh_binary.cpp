#include "MeshFields.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  return MeshFields::check(data, size, true);
}
