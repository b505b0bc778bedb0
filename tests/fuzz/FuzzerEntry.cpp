#include "fuzz/Fuzz.h"

/// What the fuzzer's library calls.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    zarn::fuzz::RunInput({reinterpret_cast<const char*>(data), size});
    return 0;
}
