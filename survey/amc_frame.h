// Reads the frames of an AMC file, one at a time, as their author meant them.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "survey/acclaim_skeleton.h"

namespace survey {

// The values of one bone in a frame.
struct AmcRow {
    std::string_view name;
    std::uint32_t bone = kNoBone;  // kNoBone if the skeleton has no bone of that name
    std::size_t first = 0;         // index of its first value in AmcFrame::words
    std::size_t count = 0;         // number of its values
};

struct AmcFrame {
    const char* at = nullptr;   // its number; if it has none, its first row
    const char* end = nullptr;  // where the next frame begins, or the text's end
    bool hasNumber = false;
    double number = 0.0;
    std::vector<std::string_view> words;     // the values of all rows
    std::vector<AmcRow> rows;                // in file order
    std::vector<std::string_view> keywords;  // of lines that begin with a colon, which are skipped
    // Holds comments, keywords, white space or a name for the root that the plug-in does not know
    // as such, or values before the first row.
    bool isOdd = false;
};

// Finds the bones of a motion's rows. The skeleton must outlive this object.
class AmcBones {
  public:
    explicit AmcBones(const AsfSkeleton& skeleton) : skeleton_(skeleton) {}
    // Finds a bone by its name in the motion; a name that is not UTF-8 is read as Windows-1252.
    // "root" finds the root, whatever its name is. Returns kNoBone if there is none.
    std::uint32_t Find(std::string_view name) const;
    const AsfSkeleton& Skeleton() const { return skeleton_; }

  private:
    const AsfSkeleton& skeleton_;
};

class AmcFrameReader {
  public:
    AmcFrameReader(std::string_view text, const AmcBones& bones)
        : end_(text.data() + text.size()), bones_(bones) {}

    // Reads the frame that begins at `at` and overwrites `frame`.
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
    std::vector<Known> lastRows_;  // rows of the frame before, since most frames have the same
    bool atLineStart_ = true;
};

}  // namespace survey
