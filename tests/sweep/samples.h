// Small files of both formats, and how each is imported.
#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace sweep {

struct Sample {
    const char* name;
    std::string first{};   // a BVH or an ASF file
    std::string second{};  // an AMC file; empty for a BVH file and for a skeleton alone
    bool isAcclaim = false;
    bool clip = true;
    bool nulls = true;
    bool chainFromParent = true;
    bool effectorToLastBone = false;
    bool group = true;
    bool limits = false;
    double length = 0.0;  // the length multiplier; 0: that of the file
};
std::ostream& operator<<(std::ostream& out, const Sample& sample);

const std::vector<Sample>& Samples();

}  // namespace sweep
