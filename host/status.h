// The host's 32-bit status codes. A negative code is a failure; 0 is success. Every status code
// of the host that the host or the plug-in returns is defined here and nowhere else.
#pragma once

#include <cstdint>

namespace Zelk {

namespace status {

// Converts a code that is written as an unsigned number, such as 0x80004005. Status codes are known
// by these unsigned numbers.
constexpr std::int32_t FromUnsigned(std::uint32_t code) {
    return static_cast<std::int32_t>(code);
}

inline constexpr std::int32_t kOk = 0;
inline constexpr std::int32_t kFail = FromUnsigned(0x80004005);
inline constexpr std::int32_t kUnexpected = FromUnsigned(0x8000FFFF);
inline constexpr std::int32_t kUnknownName = FromUnsigned(0x80020003);
inline constexpr std::int32_t kFileNotFound = FromUnsigned(0x80070002);
inline constexpr std::int32_t kInvalidData = FromUnsigned(0x8007000D);
inline constexpr std::int32_t kOutOfMemory = FromUnsigned(0x8007000E);
inline constexpr std::int32_t kInvalidArgument = FromUnsigned(0x80070057);
inline constexpr std::int32_t kNoData = FromUnsigned(0x800700E8);
inline constexpr std::int32_t kUnexpectedEnd = FromUnsigned(0x80070570);
inline constexpr std::int32_t kIncompatibleFile = FromUnsigned(0x800703EE);
inline constexpr std::int32_t kCancelled = FromUnsigned(0x800704C7);

}  // namespace status

// A status code as the host's operations return it.
class CStatus {
  public:
    constexpr CStatus(std::int32_t code = status::kOk) : code_(code) {}
    constexpr std::int32_t GetCode() const { return code_; }
    constexpr bool Succeeded() const { return code_ >= 0; }

  private:
    std::int32_t code_;
};

}  // namespace Zelk
