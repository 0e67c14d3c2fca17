#include "tests/sweep/samples.h"

namespace sweep {
namespace {

// A chain with an end site. The rotations are not in the order X Y Z of the scene.
const std::string kChain =
    "HIERARCHY\n"
    "ROOT Hips {\n"
    " OFFSET 0 0 0\n"
    " CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
    " JOINT Leg {\n"
    "  OFFSET 0 -10 0\n"
    "  CHANNELS 3 Zrotation Xrotation Yrotation\n"
    "  End Site { OFFSET 0 -8 0.5 }\n"
    " }\n"
    "}\n"
    "MOTION\nFrames: 2\nFrame Time: 0.04\n"
    "0 20 0 10 20 30 -5 15 2.5\n"
    "1 21 0.5 -10 25 35 5 -15 0\n";

// A tree with branches, a joint without offset, one with one rotation, one without channels, and a
// name that two joints have.
const std::string kTree =
    "HIERARCHY\nROOT Hips {\nOFFSET 0 1 0\n"
    "CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
    "JOINT Spine {\nOFFSET 0 10 0\nCHANNELS 1 Yrotation\n"
    "JOINT Arm {\nOFFSET 4 3 0\nCHANNELS 2 Yrotation Zrotation\n"
    "JOINT Arm { OFFSET 5 0 0 End Site { OFFSET 0.5 0 0 } }\n}\n"
    "JOINT Head { OFFSET 0 6 1 }\n}\n"
    "JOINT Prop {\nOFFSET 0 0 0\nCHANNELS 3 Xposition Zrotation Yrotation\n}\n}\n"
    "MOTION\nFrames: 1\nFrame Time: 0.05\n1 2 3 10 20 30 4 5 6 7 8 9\n";

const std::string kStill =
    "HIERARCHY\nROOT Solo { OFFSET 1 2 3 }\nMOTION\nFrames: 0\nFrame Time: 1\n";

const std::string kOneLine =
    "HIERARCHY ROOT A { OFFSET 0 0 0 CHANNELS 2 Xrotation Zrotation } MOTION Frames: 2 Frame Time: "
    "0.1 1 2 3 4 ";

// Two bones, one of them with limits and one with another order of rotations, and a third one that
// is too short to become a bone.
const std::string kArmSkeleton =
    ":version 1.10\n:name arm\n:units\n length 0.45\n angle deg\n"
    ":documentation\n an arm, (made up)\n"
    ":root\n order TX TY TZ RX RY RZ\n axis XYZ\n position 0 1 0\n orientation 0 0 0\n"
    ":bonedata\n"
    " begin\n id 1\n name upper\n direction 1 0 0\n length 2\n axis 0 0 20 XYZ\n dof rx ry rz\n"
    " limits (-160 20)\n (-70 70)\n (-inf inf)\n end\n"
    " begin\n id 2\n name lower\n direction 0.6 0.8 0\n length 3\n axis 30 0 0 XYZ\n dof rz rx\n"
    " end\n"
    " begin\n id 3\n name stub\n direction 0 1 0\n length 0.001\n axis 0 0 0 XYZ\n end\n"
    ":hierarchy\n begin\n root upper\n upper lower\n lower stub\n end\n";
const std::string kArmMotion =
    "#!OML:ASF\n:SAMPLES-PER-SECOND 60\n:FULLY-SPECIFIED\n:DEGREES\n"
    "1\nroot 0 1 0 10 20 30\nupper 10 20 30\nlower 40 5\n"
    "2\nroot 1 1 0 10 25 30\nupper 11 21 31\nlower 180 6\n";
// A motion with an unknown bone, which is ignored with warnings.
const std::string kStrangeMotion =
    ":FULLY-SPECIFIED\n"
    "1\nnobody\nroot 0 1 0 10 20 30\nupper 10 20 30\n";

// A bone that changes its length.
const std::string kPistonSkeleton =
    ":version 1.10\n:root\n order RZ TX\n:bonedata\n"
    " begin\n name piston\n direction 0 1 0\n length 2\n axis 0 0 0 XYZ\n dof rz |\n end\n"
    ":hierarchy\n begin\n hips piston\n end\n";
const std::string kPistonMotion =
    ":FULLY-SPECIFIED\n1\nhips 5 1\npiston 10 2\n2\nhips 6 2\npiston 11 3\n";

std::vector<Sample> MakeSamples() {
    return {
        {.name = "ChainNulls", .first = kChain},
        {.name = "ChainBones", .first = kChain, .nulls = false},
        {.name = "ChainEffector", .first = kChain, .nulls = false, .effectorToLastBone = true},
        {.name = "TreeNulls", .first = kTree, .clip = false},
        {.name = "TreeNullsUngrouped", .first = kTree, .group = false},
        {.name = "TreeBones", .first = kTree, .nulls = false, .group = false},
        {.name = "TreeBonesOwnJoints",
         .first = kTree,
         .clip = false,
         .nulls = false,
         .chainFromParent = false},
        {.name = "Sections", .first = kOneLine + kChain + kStill},
        {.name = "SectionsBones", .first = kOneLine + kStill, .clip = false, .nulls = false},
        {.name = "ArmNulls", .first = kArmSkeleton, .second = kArmMotion, .isAcclaim = true},
        {.name = "ArmBones",
         .first = kArmSkeleton,
         .second = kArmMotion,
         .isAcclaim = true,
         .nulls = false},
        {.name = "ArmBonesLimited",
         .first = kArmSkeleton,
         .second = kArmMotion,
         .isAcclaim = true,
         .clip = false,
         .nulls = false,
         .chainFromParent = false,
         .effectorToLastBone = true,
         .group = false,
         .limits = true,
         .length = 0.056444},
        {.name = "ArmAlone", .first = kArmSkeleton, .second = "", .isAcclaim = true},
        {.name = "ArmStrange", .first = kArmSkeleton, .second = kStrangeMotion, .isAcclaim = true},
        {.name = "Piston",
         .first = kPistonSkeleton,
         .second = kPistonMotion,
         .isAcclaim = true,
         .clip = false,
         .group = false},
    };
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const Sample& sample) {
    return out << sample.name;
}

const std::vector<Sample>& Samples() {
    static const std::vector<Sample> samples = MakeSamples();
    return samples;
}

}  // namespace sweep
