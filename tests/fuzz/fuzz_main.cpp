// One target as a fuzzer: QUINTAVE_TARGET names its procedure (targets.h).
#include "fuzz/targets.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    QUINTAVE_TARGET({reinterpret_cast<const char *>(data), size});
    return 0;
}
