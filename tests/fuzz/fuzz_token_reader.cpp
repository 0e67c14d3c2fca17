#include <cstddef>
#include <cstdint>

#include "tests/fuzz/token_reader_check.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CheckTokenReader({reinterpret_cast<const char*>(data), size});
    return 0;
}
