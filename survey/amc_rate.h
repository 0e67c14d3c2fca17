// The rate, in frames per second, of AMC motions.
#pragma once

#include <string>

#include "survey/amc_reader.h"

namespace survey {

// Fills in the motion's rates and reports what is odd about them. Sets `motion.changed` if the
// plug-in would misread the header. `isArchive` says that a motion that states no rate has
// kArchiveRate. `degrees` says that the skeleton's angles are in degrees; otherwise they are in
// radians.
void DecideRate(const Options& options, bool isArchive, bool degrees, FindingList& findings,
                AmcMotion& motion);

// The whole number nearest to the rate, at most 1e9.
int NearestRate(double rate);

// The rate as a mended text states it; empty if the file states none.
std::string WrittenRate(const AmcHeader& header, Purpose purpose);

}  // namespace survey
