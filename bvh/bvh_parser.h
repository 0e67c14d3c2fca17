#pragma once

#include <cstdint>
#include <list>
#include <memory>
#include <vector>

#include "mocap/mocap_parser.h"

class ValuePolls;

// Parses one section of a BVH file. Its HIERARCHY becomes the nodes of the skeleton, and its MOTION
// becomes the keys in the nodes' channels. The file reader must have its default separators. One
// parser can parse any number of sections. Before each section, call Reset and empty the skeleton.
class BvhParser : public MocapParser {
  public:
    // The range of the progress bar includes at most this many steps for the values of the motion.
    // While the values are parsed, the bar may advance by more steps. If the file has a value for
    // each channel and frame, it advances by at most 99 steps.
    static constexpr std::uint32_t kValueSteps = 50;

    // Stores references to the four arguments, so they must outlive the parser.
    BvhParser(CStringFile& fileReader, MocapSkeleton& parsedSkeleton,
              FileAllowances& fileAllowances, ParseMonitor& parseMonitor)
        : MocapParser(fileReader, parsedSkeleton, fileAllowances, parseMonitor) {}

    void Reset();

    // Parses the text from after the HIERARCHY keyword up to and including the MOTION keyword.
    // `current` is the parent of the next node. It must be null at the start of a section. Returns
    // mocap::kEndOfFile if the file ends without a MOTION.
    std::int32_t ParseHierarchy(MOCAPMODEL* current);
    // Parses the text from after the MOTION keyword to the last value. On success, every channel of
    // the section has a key for each frame.
    std::int32_t ParseMotion();

    // The seconds between two frames, or 0 before a motion was parsed.
    double FrameTime() const { return frameTime; }

  private:
    class RowPolls;
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
    // Returns whether the rest of the file is long enough to have a value for each channel in each
    // frame.
    bool CanHoldFrames() const;
    // Parses the values of all frames. If `keys` is null, the values are checked but not stored.
    std::int32_t ParseFrames(const std::vector<KeyArray>* keys);
    // Parses the first frames of the motion that are rows: lines with one value for each channel.
    // Stores their number in `frames`.
    std::int32_t ParseRows(const std::vector<KeyArray>& keys, const ValuePolls& polls,
                           std::uint32_t& frames);

    // Moves past the next token. Returns whether it is `keyword`, in any letter case.
    bool ConsumeKeyword(const char* keyword);

    std::uint32_t bracketDepth = 0;  // how many "{" are still open
    // Pointers to the keys of all channels, in the file's order. The nodes own the keys.
    std::list<KeyArray*> keySlots;
    double frameTime = 0.0;  // seconds
};
