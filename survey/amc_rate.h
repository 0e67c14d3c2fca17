// Frames a second of AMC motions.
#pragma once

#include <string>

#include "survey/amc_reader.h"

namespace survey {

// Settles the motion's rates, tells of what is odd about them, and whether the plug-in reads the
// header as it is meant.
void SettleRate(const Options& options, bool isArchive, bool degrees, FindingList& findings,
                AmcMotion& motion);

// As a whole number.
int NearestRate(double rate);

// The rate that a canonical text states; empty for none.
std::string WrittenRate(const AmcHeader& header, Purpose purpose);

}  // namespace survey
