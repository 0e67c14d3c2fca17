// Files that the BVH parser refuses, each with the message, the status and the position of the
// reader that the refusal must have.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace bvh_test {

struct BadFile {
    const char* name;
    std::string text;
    const char* message;
    std::uint32_t status;  // returned by the parser
    std::uint32_t line;    // counted from 0
    std::uint32_t column;  // counted from 0
};
inline std::ostream& operator<<(std::ostream& out, const BadFile& row) {
    return out << row.name;
}

inline constexpr std::uint32_t kInvalid = 0x8007000D;
inline constexpr std::uint32_t kEnd = 0x80070570;
inline constexpr std::uint32_t kNoCurves = 0x800700E8;

// A root whose brace is still open. Its offset is on line 3, counted from 0.
inline const std::string kOpen = "HIERARCHY\nROOT H\n{\nOFFSET 0 1 0\n";
// A root with one channel, then the MOTION keyword on line 6.
inline const std::string kMotion = kOpen + "CHANNELS 1 Xrotation\n}\nMOTION\n";
// A root without channels, then the MOTION keyword on line 5.
inline const std::string kMotionWithoutChannels = kOpen + "}\nMOTION\n";

inline const BadFile kBadFiles[] = {
    // --- braces and the end of the file ---
    {"OpenBrace", kOpen, "Unexpected end of file", kEnd, 4, 0},
    {"OpenBraceOfTwo", kOpen + "JOINT J { OFFSET 0 0 0 }", "Unexpected end of file", kEnd, 4, 24},
    {"OpenBraceAfterChannels", kOpen + "CHANNELS 0", "Unexpected end of file", kEnd, 4, 10},
    {"RootWithoutName", "HIERARCHY\nROOT", "Unexpected end of file", kEnd, 1, 4},
    {"RootWithoutNameButSpace", "HIERARCHY\nROOT \n\n", "Unexpected end of file", kEnd, 3, 0},
    {"JointWithoutName", kOpen + "JOINT", "Unexpected end of file", kEnd, 4, 5},
    {"NulInTheHierarchy", kOpen + std::string("\0}\n", 3), "Unexpected end of file", kEnd, 5, 0},
    {"BraceBeforeAnyNode", "HIERARCHY\n\n}", "Too many closing brackets '}'", kInvalid, 2, 1},
    {"BraceTooMany", kOpen + "}\n}\n", "Too many closing brackets '}'", kInvalid, 5, 1},

    // --- tokens that are not valid where they are ---
    {"UnknownKeyword", "HIERARCHY\nFOO", "Invalid BVH token found", kInvalid, 1, 3},
    {"EndWithoutSite", kOpen + "End Side", "Invalid BVH token found", kInvalid, 4, 8},
    {"EndWithBrace", kOpen + "End\n{", "Invalid BVH token found", kInvalid, 5, 1},
    {"EndAsTheLastToken", kOpen + "End", "Invalid BVH token found", kInvalid, 4, 3},
    {"EndSiteAsOneToken", kOpen + "EndSite", "Invalid BVH token found", kInvalid, 4, 7},
    {"BraceWithoutAKeyword", kOpen + "{", "Invalid BVH token found", kInvalid, 4, 1},
    {"BracesTogether", kOpen + "}}", "Invalid BVH token found", kInvalid, 4, 2},
    {"SecondOffset", kOpen + "OFFSET 0 0 0", "Invalid BVH token found", kInvalid, 4, 6},
    {"FourthNumber", "HIERARCHY\nROOT H { OFFSET 0 1 0 5", "Invalid BVH token found", kInvalid, 1,
     23},
    {"ChannelsTwice", kOpen + "CHANNELS 0 CHANNELS 0", "Invalid BVH token found", kInvalid, 4, 19},
    {"MoreChannelsThanCounted", kOpen + "CHANNELS 1 Xrotation\nYrotation",
     "Invalid BVH token found", kInvalid, 5, 9},
    {"NegativeCountThenNames", kOpen + "CHANNELS -1 Xrotation", "Invalid BVH token found", kInvalid,
     4, 21},
    {"HierarchyAgain", kOpen + "HIERARCHY", "Invalid BVH token found", kInvalid, 4, 9},
    {"FramesWithoutMotion", kOpen + "}\nFrames: 1", "Invalid BVH token found", kInvalid, 5, 7},
    {"NameOfTwoWords", "HIERARCHY\nROOT Left Hip {", "Expected '{' token", kInvalid, 1, 13},

    // --- the head of a node ---
    {"NoBrace", "HIERARCHY\nROOT H\nOFFSET 0 0 0", "Expected '{' token", kInvalid, 2, 6},
    {"NoBraceAtTheEnd", "HIERARCHY\nROOT H\n", "Expected '{' token", kInvalid, 2, 0},
    {"BraceInTheName", "HIERARCHY\nROOT H{\nOFFSET 0 0 0", "Expected '{' token", kInvalid, 2, 6},
    {"NoBraceAfterSite", kOpen + "End Site\nOFFSET", "Expected '{' token", kInvalid, 5, 6},
    {"NoOffset", "HIERARCHY\nROOT H\n{\nCHANNELS 0", "Expected 'OFFSET' token", kInvalid, 3, 8},
    {"NoOffsetAtTheEnd", "HIERARCHY\nROOT H\n{", "Expected 'OFFSET' token", kInvalid, 2, 1},
    {"NoOffsetButBrace", "HIERARCHY\nROOT H\n{ }", "Expected 'OFFSET' token", kInvalid, 2, 3},
    {"OffsetWordX", "HIERARCHY\nROOT H {\nOFFSET up 0 0", "Expected a float value for OFFSET x",
     kInvalid, 2, 6},
    {"OffsetWordY", "HIERARCHY\nROOT H {\nOFFSET 0 up 0", "Expected a float value for OFFSET y",
     kInvalid, 2, 8},
    {"OffsetWordZ", "HIERARCHY\nROOT H {\nOFFSET 0 0 up", "Expected a float value for OFFSET z",
     kInvalid, 2, 10},
    {"OffsetWithoutX", "HIERARCHY\nROOT H {\nOFFSET\n", "Expected a float value for OFFSET x",
     kInvalid, 3, 0},
    {"OffsetWithoutY", "HIERARCHY\nROOT H {\nOFFSET 0", "Expected a float value for OFFSET y",
     kInvalid, 2, 8},
    {"OffsetWithoutZ", "HIERARCHY\nROOT H {\nOFFSET 0 0\n}", "Expected a float value for OFFSET z",
     kInvalid, 2, 10},
    {"OffsetPointZero", "HIERARCHY\nROOT H {\nOFFSET .0 0 0", "Expected a float value for OFFSET x",
     kInvalid, 2, 6},
    {"OffsetPlusZero", "HIERARCHY\nROOT H {\nOFFSET 0 +0 0", "Expected a float value for OFFSET y",
     kInvalid, 2, 8},
    {"OffsetUnderflow", "HIERARCHY\nROOT H {\nOFFSET 0 0 1e-400",
     "Expected a float value for OFFSET z", kInvalid, 2, 10},
    // The reader goes back to the end of the token before the word, which is on an earlier line.
    {"OffsetWordOnALaterLine", "HIERARCHY\nROOT H {\nOFFSET\n\n\nup",
     "Expected a float value for OFFSET x", kInvalid, 2, 6},

    // --- channels ---
    {"CountWord", kOpen + "CHANNELS three", "Expected an integer value for CHANNELS count",
     kInvalid, 4, 8},
    {"CountMissing", kOpen + "CHANNELS", "Expected an integer value for CHANNELS count", kInvalid,
     4, 8},
    {"CountPlusZero", kOpen + "CHANNELS +0", "Expected an integer value for CHANNELS count",
     kInvalid, 4, 8},
    {"CountNan", kOpen + "CHANNELS nan", "Expected an integer value for CHANNELS count", kInvalid,
     4, 8},
    {"CountSeven", kOpen + "CHANNELS 7", "CHANNELS count exceeds maximum supported set (6)",
     kInvalid, 4, 10},
    {"CountAbsurd", kOpen + "CHANNELS 2147483647",
     "CHANNELS count exceeds maximum supported set (6)", kInvalid, 4, 19},
    {"CountNegativeThroughOverflow", kOpen + "CHANNELS 99999999999999999999 Xrotation",
     "Invalid BVH token found", kInvalid, 4, 39},
    {"ChannelUnknown", kOpen + "CHANNELS 1 Wrotation", "Unsupported animation CHANNEL", kInvalid, 4,
     20},
    {"ChannelMissing", kOpen + "CHANNELS 1", "Unsupported animation CHANNEL", kInvalid, 4, 10},
    {"ChannelBrace", kOpen + "CHANNELS 2 Xrotation\n}", "Unsupported animation CHANNEL", kInvalid,
     5, 1},
    {"ChannelScale", kOpen + "CHANNELS 3 Xrotation Yrotation\nXscale",
     "Unsupported animation CHANNEL", kInvalid, 5, 6},
    {"ChannelWithTail", kOpen + "CHANNELS 1 Xrotations", "Unsupported animation CHANNEL", kInvalid,
     4, 21},
    {"ChannelTwice", kOpen + "CHANNELS 3 Xrotation Yrotation Xrotation",
     "Animation CHANNEL defined more than once for the same model", kInvalid, 4, 40},
    {"ChannelTwiceInOtherCase", kOpen + "CHANNELS 2 Zposition\nZPOSITION",
     "Animation CHANNEL defined more than once for the same model", kInvalid, 5, 9},
    {"ChannelTwiceOfSix",
     kOpen + "CHANNELS 6 Xposition Yposition Zposition Xrotation Yrotation Yposition",
     "Animation CHANNEL defined more than once for the same model", kInvalid, 4, 70},

    // --- the head of the motion ---
    {"MotionAlone", kMotion, "Expected a 'Frames:' token", kInvalid, 7, 0},
    {"FramesWithoutColon", kMotion + "Frames 2", "Expected a 'Frames:' token", kInvalid, 7, 6},
    {"FramesColonApart", kMotion + "Frames : 2", "Expected a 'Frames:' token", kInvalid, 7, 6},
    {"FramesStuckToItsCount", kMotion + "Frames:2", "Expected a 'Frames:' token", kInvalid, 7, 8},
    {"FramesWord", kMotion + "Frames: two", "Expected an integer value for Frames count", kInvalid,
     7, 7},
    {"FramesMissing", kMotion + "Frames:", "Expected an integer value for Frames count", kInvalid,
     7, 7},
    {"FramesFraction", kMotion + "Frames: .5", "Expected an integer value for Frames count",
     kInvalid, 7, 7},
    {"FramesNan", kMotion + "Frames: nan", "Expected an integer value for Frames count", kInvalid,
     7, 7},
    {"FramesWhoseLow32BitsAreZero", kMotion + "Frames: 4294967296",
     "Expected an integer value for Frames count", kInvalid, 7, 7},
    {"TimeAsOneToken", kMotion + "Frames: 1\nFrameTime: 0.1\n5", "Expected a 'Frame Time:' token",
     kInvalid, 8, 10},
    {"TimeWithoutColon", kMotion + "Frames: 1\nFrame Time 0.1\n5", "Expected a 'Frame Time:' token",
     kInvalid, 8, 10},
    {"TimeMissing", kMotion + "Frames: 1\n", "Expected a 'Frame Time:' token", kInvalid, 8, 0},
    {"TimeHalfMissing", kMotion + "Frames: 1\nFrame", "Expected a 'Frame Time:' token", kInvalid, 8,
     5},
    {"TimeWord", kMotion + "Frames: 1\nFrame Time: fast", "Expected a float value for Frame Time",
     kInvalid, 8, 11},
    {"TimeNumberMissing",
     kMotion + "Frames: 1\nFrame Time:", "Expected a float value for Frame Time", kInvalid, 8, 11},
    {"TimePointZero", kMotion + "Frames: 1\nFrame Time: .0",
     "Expected a float value for Frame Time", kInvalid, 8, 11},

    // --- keys ---
    {"CurvesMissing", kMotionWithoutChannels + "Frames: 10\nFrame Time: 0.1\n",
     "Missing FCurves for animation CHANNELS", kNoCurves, 7, 15},
    {"CurvesMissingForNegativeFrames", kMotionWithoutChannels + "Frames: -1\nFrame Time: 0.1\n",
     "Missing FCurves for animation CHANNELS", kNoCurves, 7, 15},
    {"KeysMissing", kMotion + "Frames: 2\nFrame Time: 0.1\n1\n",
     "Expected a float value in key frame data", kInvalid, 10, 0},
    {"KeysMissingAtAll", kMotion + "Frames: 1\nFrame Time: 0.1",
     "Expected a float value in key frame data", kInvalid, 8, 15},
    {"KeyWord", kMotion + "Frames: 2\nFrame Time: 0.1\n1 x",
     "Expected a float value in key frame data", kInvalid, 9, 1},
    {"KeyPointZero", kMotion + "Frames: 1\nFrame Time: 0.1\n.0",
     "Expected a float value in key frame data", kInvalid, 8, 15},
    {"KeyUnderflow", kMotion + "Frames: 1\nFrame Time: 0.1\n1e-400",
     "Expected a float value in key frame data", kInvalid, 8, 15},
    {"KeyAfterANul", kMotion + "Frames: 2\nFrame Time: 0.1\n1" + std::string("\0 2", 3),
     "Expected a float value in key frame data", kInvalid, 9, 4},
    {"NegativeFrames", kMotion + "Frames: -5\nFrame Time: 0.1\n1 2 3\n",
     "Expected a float value in key frame data", kInvalid, 10, 0},
    {"AbsurdFrames", kMotion + "Frames: 2147483647\nFrame Time: 0.1\n1 2 3\n",
     "Expected a float value in key frame data", kInvalid, 10, 0},
    {"FramesBeyondSixtyFourBits",
     kMotion + "Frames: 99999999999999999999\nFrame Time: 0.1\n1 2 3\n",
     "Expected a float value in key frame data", kInvalid, 10, 0},
    // 2 channels times -2147483647 frames are 2 values in 32 bits.
    {"ProductThatWraps",
     kOpen +
         "CHANNELS 2 Xrotation Yrotation\n}\nMOTION\nFrames: -2147483647\nFrame Time: 0.1\n1 2 3\n",
     "Expected a float value in key frame data", kInvalid, 10, 0},
};

}  // namespace bvh_test
