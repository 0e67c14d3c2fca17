// When the keys of a motion are. Times are in the unit of the keys (frames). An item that is not
// active plays no part: evaluation passes it over, and so do these functions.
#pragma once

#include <vector>

#include "headless/scene.h"
#include "host/export.h"

namespace headless {

// Calls `visit(times)` for the arrays of key times of the active curves, as they were set: in any
// order, with times that are not finite. Curves with the same times mostly follow each other and
// share an array, which is then visited once; one that comes back later is visited again.
template <class Visit>
void WalkKeyTimes(const ActionSource& motion, Visit visit) {
    const std::vector<double>* last = nullptr;
    for (const ActionItem& item : motion.items) {
        if (!item.active || !item.IsCurve()) continue;
        const std::vector<double>* const times = item.GetCurve().keys.times.get();
        if (times == nullptr || times == last) continue;
        last = times;
        visit(*times);
    }
}

// Every finite time at which an active curve of the motion has a key, each once, rising. Times that
// are not finite are left out. Curves that share an array of times are looked at once.
ZELK_API std::vector<double> KeyTimes(const ActionSource& motion);

}  // namespace headless
