// Small files that together have every kind of joint.
#pragma once

#include <string>

namespace bvh_test {

// One chain: a root with position channels, a joint, an end site.
inline const std::string kChain = R"(HIERARCHY
ROOT Hips
{
    OFFSET 0 0 0
    CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation
    JOINT Leg
    {
        OFFSET 0 -10 0
        CHANNELS 3 Zrotation Xrotation Yrotation
        End Site
        {
            OFFSET 0 -8 0.5
        }
    }
}
MOTION
Frames: 2
Frame Time: 0.04
0 20 0 10 20 30 -5 15 2.5
1 21 0.5 -10 25 35 5 -15 0
)";

// A tree: branches, a detached joint, a joint without channels, end sites with and without an
// offset.
inline const std::string kTree = R"(HIERARCHY
ROOT Hips
{
    OFFSET 0 1 0
    CHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation
    JOINT Spine
    {
        OFFSET 0 10 0
        CHANNELS 3 Xrotation Yrotation Zrotation
        JOINT Head
        {
            OFFSET 0 6 1
            CHANNELS 1 Yrotation
            End Site
            {
                OFFSET 0 0 0
            }
        }
        JOINT Arm
        {
            OFFSET 4 3 0
            CHANNELS 3 Yrotation Zrotation Xrotation
            JOINT Hand
            {
                OFFSET 5 0 0
                JOINT Finger
                {
                    OFFSET 1 0 0
                    CHANNELS 2 Yrotation Xrotation
                    End Site
                    {
                        OFFSET 0.5 0 0
                    }
                }
            }
        }
    }
    JOINT Prop
    {
        OFFSET 0 0 0
        CHANNELS 3 Xposition Zrotation Yrotation
    }
}
MOTION
Frames: 1
Frame Time: 0.05
1 2 3 10 20 30 4 5 6 7 8 9 10 11 12 13 14 15
)";

// The whole file is one line.
inline const std::string kOneLine =
    "HIERARCHY ROOT A { OFFSET 0 0 0 CHANNELS 2 Xrotation Zrotation } MOTION Frames: 2 Frame Time: "
    "0.1 1 "
    "2 3 4";

// A file without channels and without frames.
inline const std::string kStill =
    "HIERARCHY\nROOT Solo {\nOFFSET 1 2 3\n}\nMOTION\nFrames: 0\nFrame Time: 1\n";

}  // namespace bvh_test
