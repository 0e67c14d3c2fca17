// The frames of an AMC file, one at a time, as their author meant them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/acclaim_skeleton.h"

namespace survey {

struct AmcRow {
    std::string_view name;
    std::uint32_t bone = kNoBone;  // kNoBone: the skeleton has none of that name
    std::size_t first = 0;         // of its words
    std::size_t count = 0;
};

struct AmcFrame {
    const char* at = nullptr;   // its number, or its first row where it has none
    const char* end = nullptr;  // the next frame's, or the text's end
    bool hasNumber = false;
    double number = 0.0;
    std::vector<std::string_view> words;
    std::vector<AmcRow> rows;
    std::vector<std::string_view> keywords;  // lines that begin with a colon; passed over
    // Comments, keywords, white space and a name that the plug-in does not read as such.
    bool isOdd = false;
};

// The bones of a motion's rows.
class AmcBones {
  public:
    explicit AmcBones(const AsfSkeleton& skeleton) : skeleton_(skeleton) {}
    // By the name in the motion, in any encoding. "root" is the root, whatever it is called.
    std::uint32_t Find(std::string_view name) const;
    const AsfSkeleton& Skeleton() const { return skeleton_; }

  private:
    const AsfSkeleton& skeleton_;
};

class AmcFrameReader {
  public:
    AmcFrameReader(std::string_view text, const AmcBones& bones)
        : end_(text.data() + text.size()), bones_(bones) {}

    // From a frame's number on. What `frame` held is gone.
    void Read(const char* at, AmcFrame& frame);

  private:
    void ReadLine(AmcFrame& frame);
    bool BeginsFrame(std::string_view word, const AmcFrame& frame);
    bool AddRow(std::string_view name, AmcFrame& frame);
    void AddWord(std::string_view word, AmcFrame& frame);
    std::string_view NextWord(AmcFrame& frame);
    std::uint32_t FindBone(std::string_view name, std::size_t row);

    const char* at_ = nullptr;
    const char* end_;
    const AmcBones& bones_;
    struct Known {
        std::string_view name;
        std::uint32_t bone;
    };
    std::vector<Known> lastRows_;  // of the frame before: most frames have the same
    bool atLineStart_ = true;
};

}  // namespace survey
