// Packs the motion of a take for the page that shows it. docs/viewer.md describes the format.
// Internal to export/.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "export/progress.h"
#include "export/tables.h"

namespace exporters {

// Each joint has the channels that JointChannels describes. The number of a channel is
// kPageChannels * joint + its index.
inline constexpr std::size_t kPageChannels = 6;

struct PageKeys {
    std::vector<double> rest;  // the base pose: a number for each channel
    // For each channel, its value if it never changes, and otherwise the number that is to be added
    // to its keys.
    std::vector<double> values;
    std::vector<std::size_t> animated;  // the channels that change, strictly rising
    // The keys of these channels, packed, as text. Empty if no channel changes.
    std::string text;
};

// Several threads evaluate and pack the rows. Throws ExportError if the positions are too far apart
// for 32-bit floats or if there are too many of them, and what JointChannels and `progress` throw.
PageKeys PackKeys(const Table& table, const headless::Scene& scene, const Options& options,
                  const Progress& progress);

}  // namespace exporters
