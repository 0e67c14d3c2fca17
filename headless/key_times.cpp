#include "headless/key_times.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <unordered_set>

namespace headless {

namespace {

bool IsFinite(double time) {
    return std::isfinite(time);
}

}  // namespace

std::vector<double> KeyTimes(const ActionSource& motion) {
    std::unordered_set<const NumberArray*> seen;
    std::vector<double> keyTimes;
    WalkKeyTimes(motion, [&](const NumberArray& times) {
        if (!seen.insert(&times).second) return;
        std::copy_if(times.begin(), times.end(), std::back_inserter(keyTimes), IsFinite);
    });
    if (!std::is_sorted(keyTimes.begin(), keyTimes.end()))
        std::sort(keyTimes.begin(), keyTimes.end());
    keyTimes.erase(std::unique(keyTimes.begin(), keyTimes.end()), keyTimes.end());
    return keyTimes;
}

}  // namespace headless
