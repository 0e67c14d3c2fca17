// What decides the rate of a take.
#pragma once

#include <cstdint>

namespace take {

enum class RateOrigin : std::uint8_t {
    File,     // the file states it; or, without a survey, the plug-in decided
    Request,  // Request::framesPerSecond
    Preset,   // Request::preset, or the survey recognised the archive of Preset::Cmu
    Assumed,  // the file states no rate, and nothing else does
};

}  // namespace take
