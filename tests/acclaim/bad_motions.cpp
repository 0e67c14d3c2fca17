#include "host/status.h"
#include "tests/acclaim/bad_files.h"

using namespace Zelk::status;

namespace {

const std::string kHead = ":FULLY-SPECIFIED\n:DEGREES\n";
constexpr const char* kNotSpecified =
    "AMC file is invalid. Only ':fully-specified' motion files are supported";
constexpr const char* kOtherUnits =
    "Incompatible AMC file. File must use same angle units as the ASF file";

const BadFile kBadMotions[] = {
    // The file is closed before the message is recorded, so the line is the first.
    {"NotSpecified", "\n\n1\nroot", kNotSpecified, 1, 0, kIncompatibleFile},
    {"OnlyComments", "# one\n# two\n", kNotSpecified, 1, 0, kIncompatibleFile},
    {"OnlyARate", ":SAMPLES-PER-SECOND 120", kNotSpecified, 1, 0, kIncompatibleFile},
    {"RateThatIsAWord", ":SAMPLES-PER-SECOND many\n:fully-specified 1", kNotSpecified, 1, 0,
     kIncompatibleFile},
    {"RateAfterFullySpecified", ":fully-specified\n:SAMPLES-PER-SECOND 120", "Unknown keyword", 1,
     0, kInvalidData},
    {"NothingAfterTheHeader", ":fully-specified\n\n", "Unexpected end of file", 1, 0,
     kUnexpectedEnd},
    {"CommentAfterTheHeader", ":fully-specified\n# 1", "Unexpected end of file", 1, 0,
     kUnexpectedEnd},
    {"UnknownUnit", ":fully-specified\n:turns\n1", "Unknown keyword", 1, 0, kInvalidData},
    {"Radians", ":fully-specified\n:RADIANS\n1", kOtherUnits, 1, 0, kIncompatibleFile},

    {"FrameWithoutBones", kHead + "1\n", "Expected animated node name", 4, 0, kInvalidData},
    {"FrameCutBetweenBones", kHead + "1\nroot 1 2 3 4 5 6\n# more", "Expected animated node name",
     5, 0, kInvalidData},
    {"ValueMissing", kHead + "1\nroot 1 2 3 4 5\nback 1 2 3", "Failed to get animation value", 4,
     14, kInvalidData},
    {"ValueCutOff", kHead + "1\nroot 1 2 3 4 5", "Failed to get animation value", 4, 14,
     kInvalidData},
    {"ValueThatIsAWord", kHead + "1\nroot 1 2 3 4 five 6", "Failed to get animation value", 4, 12,
     kInvalidData},
    {"ValueInAComment", kHead + "1\nroot 1 2 3 # 4 5 6", "Failed to get animation value", 4, 10,
     kInvalidData},
    {"BoneTwiceInAFrame", kHead + "1\nroot 1 2 3 4 5 6\nback 1 2 3\nBACK 1 2 3",
     "Bone found more than once in a frame", 6, 4, kInvalidData},
    {"RootAsASecondBone", kHead + "1\nroot 1 2 3 4 5 6\nroot 1 2 3 4 5 6",
     "Bone found more than once in a frame", 5, 4, kInvalidData},
};

}  // namespace

std::span<const BadFile> BadMotions() {
    return kBadMotions;
}
