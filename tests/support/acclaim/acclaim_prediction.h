// Which joints of an Acclaim skeleton the scene may put elsewhere than the files do, and why,
// worked out from the files alone.
#pragma once

#include <string>
#include <vector>

#include "tests/support/acclaim/acclaim_probe.h"
#include "tests/support/acclaim/acclaim_walk.h"

namespace support {

// By joint: the reason, for everything below the joint that causes it too; empty where the joint
// must stand where the walk puts it.
std::vector<std::string> PredictSetApart(const AcclaimPair& pair, const AcclaimOptions& options);

// The message with which the motion fails because nothing can take a bone's animated length; empty
// where it must succeed.
std::string PredictFailure(const AcclaimPair& pair, const AcclaimOptions& options);

}  // namespace support
