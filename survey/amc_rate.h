// The rate, in frames per second, of AMC motions.
#pragma once

#include <string>

#include "survey/amc_reader.h"

namespace survey {

// Fills in the motion's rates and reports what is odd about them. Sets `motion.changed` if the
// plug-in would misread the header. `isArchive` says that a motion without a rate has the
// archive's; `degrees` is the unit of the skeleton's angles.
void DecideRate(const Options& options, bool isArchive, bool degrees, FindingList& findings,
                AmcMotion& motion);

// The whole number nearest to the rate, at most 1e9.
int NearestRate(double rate);

// The rate as a mended text states it; empty if it states none.
std::string WrittenRate(const AmcHeader& header, Purpose purpose);

}  // namespace survey
