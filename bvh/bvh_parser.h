#pragma once

#include <cstdint>
#include <list>
#include <memory>

#include "mocap/mocap_parser.h"

// Parses one section of a BVH file. Its HIERARCHY becomes the nodes of the skeleton, and its MOTION
// becomes the keys in the nodes' channels. The file reader must have its default separators. Use
// one parser for any number of sections, with Reset and an empty skeleton before each.
class BvhParser : public MocapParser {
  public:
    // The range of the progress bar includes at most this many steps for the values of the motion.
    // Parsing the values may advance the bar by more steps than that, but never more than 99.
    static constexpr std::uint32_t kValueSteps = 50;

    // Keeps references to all four.
    BvhParser(CStringFile& fileReader, MocapSkeleton& parsedSkeleton,
              FileAllowances& fileAllowances, ParseMonitor& parseMonitor)
        : MocapParser(fileReader, parsedSkeleton, fileAllowances, parseMonitor) {}

    void Reset();

    // Parses from after the HIERARCHY keyword up to and including the MOTION keyword. `current` is
    // the node whose braces are open, null at the start. Returns mocap::kEndOfFile when the file
    // ends without a MOTION.
    std::int32_t ParseHierarchy(MOCAPMODEL* current);
    // Parses from after the MOTION keyword to the last value. Every channel of the hierarchy then
    // has a key for each frame.
    std::int32_t ParseMotion();

    // Seconds, 0 before a motion was parsed.
    double FrameTime() const { return frameTime; }

  private:
    enum class NodeKind { Joint, EndSite };
    std::int32_t ParseNode(NodeKind kind, MOCAPMODEL*& current);
    std::int32_t ParseName(NodeKind kind, MOCAPMODEL& node);
    bool AllowsEndSiteName(const MOCAPMODEL* parent);
    static std::unique_ptr<char[]> EndSiteName(const MOCAPMODEL* parent);
    std::int32_t ParseOffset(MOCAPMODEL& node);
    void AttachToParent(MOCAPMODEL& node);
    std::int32_t ParseChannels(MOCAPMODEL& node);
    std::int32_t ParseChannel(MOCAPMODEL& node);

    std::int32_t ParseFrameHeader();
    // Whether the rest of the file is long enough for a value for each channel and frame.
    bool CanHoldFrames() const;
    std::int32_t ParseFrames(KeyArray* keys);

    // Moves past the next token. Returns whether it is `keyword`, in any letter case.
    bool ConsumeKeyword(const char* keyword);

    std::uint32_t bracketDepth = 0;  // "{" that are open
    std::list<KeyArray*> keySlots;   // each channel's keys, in the file's order; owned by the nodes
    double frameTime = 0.0;          // seconds
};
