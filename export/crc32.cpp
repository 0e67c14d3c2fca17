#include "export/crc32.h"

#include <zlib.h>

namespace exporters {

std::uint32_t Crc32(std::uint32_t crc, std::string_view bytes) {
#ifdef ZKMOCAP_HAVE_CLMUL_KERNEL
    if (__builtin_cpu_supports("pclmul")) return Crc32Clmul(crc, bytes);
#endif
    return Crc32Plain(crc, bytes);
}

std::uint32_t JoinCrc32(std::uint32_t first, std::uint32_t second, std::uint64_t size) {
    return static_cast<std::uint32_t>(crc32_combine(first, second, static_cast<z_off_t>(size)));
}

std::uint32_t Crc32Plain(std::uint32_t crc, std::string_view bytes) {
    const auto* const first = reinterpret_cast<const Bytef*>(bytes.data());
    return static_cast<std::uint32_t>(crc32_z(crc, first, bytes.size()));
}

}  // namespace exporters
