// The times of a motion's keys, in frames. Items that are not active are skipped, as they are by
// the evaluation of a motion.
#pragma once

#include <vector>

#include "headless/scene.h"
#include "host/export.h"

namespace headless {

// Calls `visit(times)` for the arrays of key times of the active curves. The times are as they were
// set: in any order, and not always finite. Curves with the same times mostly follow each other and
// share an array, which is then visited once. An array may be visited again after another one.
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

// Every finite time at which an active curve of the motion has a key, each once, in rising order.
ZELK_API std::vector<double> KeyTimes(const ActionSource& motion);

}  // namespace headless
