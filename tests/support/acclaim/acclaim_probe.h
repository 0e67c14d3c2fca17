// Imports an Acclaim pair with the real importer and records which scene object was made for each
// node.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "acclaim/acclaim_import.h"
#include "tests/support/bvh_probe.h"

namespace support {

struct AcclaimOptions {
    bool nulls = true;
    bool chainFromParent = true;
    bool effectorToLastBone = false;
    bool group = true;
    bool limits = false;
    std::optional<double> length = std::nullopt;
};

struct ProbedPair {
    std::int32_t skeletonStatus = 0;
    std::int32_t motionStatus = 0;  // 0 if no motion was imported
    std::string error;              // the recorded message
    ProbedSection section;          // the nodes in the file's order; empty without a skeleton
};

// The scene objects of the importer's nodes, in the order of the nodes.
ProbedSection ProbeNodes(const CAcclaimImport& importer);

// Resets the session first. Without `amc` it imports the skeleton alone.
ProbedPair ImportAcclaimText(const std::string& asf, const std::optional<std::string>& amc,
                             const AcclaimOptions& options);

}  // namespace support
