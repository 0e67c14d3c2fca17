// Predicts, from the files alone, which joints of an Acclaim skeleton may have other positions in
// the scene than in the files, and why.
#pragma once

#include <string>
#include <vector>

#include "tests/support/acclaim/acclaim_probe.h"
#include "tests/support/acclaim/acclaim_walk.h"

namespace support {

// Returns a reason for each joint, which is also the reason for everything below the joint that
// causes it. Empty for a joint that must be where the walk puts it.
std::vector<std::string> PredictSetApart(const AcclaimPair& pair, const AcclaimOptions& options);

// Returns the message with which the import of the motion fails because nothing can have the
// animated length of a bone; empty if it must succeed.
std::string PredictFailure(const AcclaimPair& pair, const AcclaimOptions& options);

}  // namespace support
