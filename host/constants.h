#pragma once

#include <cstdint>
#include <limits>

namespace Zelk {

// A time argument with this value means the host's current time.
inline constexpr double kCurrentTime = std::numeric_limits<double>::max();

// The severity of a log line.
enum zkSeverityType : std::int32_t {
    zkErrorSeverity = 2,
    zkWarningSeverity = 4,
    zkInfoSeverity = 8
};

enum zkFCurveInterpolation : std::int32_t { zkLinearInterpolation = 1 };

enum zk2DChainAlignType : std::int32_t { zk2DChainNormalAlign = 2 };

enum zkChainBoneType : std::int32_t { zkChainBonePin = 2 };

}  // namespace Zelk
