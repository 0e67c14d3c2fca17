// The times of a motion's keys, in frames. Action items that are not active are skipped, because
// they have no effect on the motion.
#pragma once

#include <vector>

#include "headless/scene.h"
#include "host/export.h"

namespace headless {

// Calls `visit(times)` with the array of key times of each active curve. The times may be in any
// order and need not be finite. If curves that share one array follow each other, the array is
// visited only once. If a curve with another array is between them, the shared array is visited
// again.
template <class Visit>
void WalkKeyTimes(const ActionSource& motion, Visit visit) {
    const NumberArray* last = nullptr;
    for (const ActionItem& item : motion.items) {
        if (!item.active || !item.IsCurve()) continue;
        const NumberArray* const times = item.GetCurve().keys.times.get();
        if (times == nullptr || times == last) continue;
        last = times;
        visit(*times);
    }
}

// All finite times at which an active curve of the motion has a key. Each time is listed once; the
// times are in rising order.
ZELK_API std::vector<double> KeyTimes(const ActionSource& motion);

}  // namespace headless
