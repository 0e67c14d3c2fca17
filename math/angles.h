// Constants for angles. Each constant is the double nearest to the exact number. The importers'
// results depend on every bit of these constants.
#pragma once

namespace math {

inline constexpr double kPi = 3.141592653589793;
inline constexpr double kRadiansPerDegree = 0.017453292519943295;
inline constexpr double kDegreesPerRadian = 57.29577951308232;

// In degrees.
inline constexpr double kHalfTurn = 180.0;
inline constexpr double kFullTurn = 360.0;

}  // namespace math
