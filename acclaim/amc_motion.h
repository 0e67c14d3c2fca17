#pragma once

#include <cstdint>
#include <unordered_set>
#include <vector>

#include "acclaim/acclaim_parser.h"
#include "acclaim/amc_key_lists.h"
#include "acclaim/amc_rows.h"

struct AcclaimParser::Motion {
    // The number of animated nodes of the skeleton, minus one for each unknown bone name in the
    // frames.
    std::int32_t animatedNodes = 0;
    // The bones in the order in which a frame names them. Bones are never removed. In each frame,
    // the parser reads at least `animatedNodes` names, and `slots` never has more bones than that.
    // Each later frame therefore has values for all bones in `slots`.
    std::vector<MOCAPMODEL*> slots;
    std::unordered_set<const MOCAPMODEL*> inSlots;  // the bones in `slots`
    AmcKeyLists keys;                               // the values of these bones
    // The values of these bones in frames that were read in rows. They are not in `keys`.
    AmcRows rows;
    KeyArray::Numbers ignored;  // the values of channels that are not imported
    bool hasTriedRows = false;

    // Whether all later frames name the same bones, in the same order.
    bool HasAllBones() const {
        return animatedNodes > 0 && slots.size() == static_cast<std::size_t>(animatedNodes);
    }
};
