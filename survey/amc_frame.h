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
    std::size_t first = 0;         // index of the row's first value in AmcFrame::words
    std::size_t count = 0;         // number of the row's values
};

struct AmcFrame {
    const char* at = nullptr;   // the frame's number in the text; if it has none, its first row
    const char* end = nullptr;  // where the next frame begins, or the text's end
    bool hasNumber = false;
    double number = 0.0;                  // only set if `hasNumber`
    std::vector<std::string_view> words;  // the values of all rows
    std::vector<AmcRow> rows;             // in file order
    // Words that begin with a colon. The rest of the line after such a word is skipped.
    std::vector<std::string_view> keywords;
    // Whether the plug-in would misread the frame because of comments, keywords, unusual white
    // space, values before the first row, or a name for the root that it does not know.
    bool isOdd = false;
};

// Finds the bones of a motion's rows. The skeleton must outlive this object.
class AmcBones {
  public:
    explicit AmcBones(const AsfSkeleton& skeleton) : skeleton_(skeleton) {}
    // Finds a bone by the name that the motion gives it. A name that is not UTF-8 is read as
    // Windows-1252. If no bone has the name "root", it means the root. Returns kNoBone if the
    // skeleton has no such bone.
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
    void ReadWord(AmcFrame& frame);
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
    // The rows of the frame that was read last. Most frames have the same rows, so that most bones
    // need not be looked up by name.
    std::vector<Known> lastRows_;
    bool atLineStart_ = true;  // whether a line end comes before the next word
};

}  // namespace survey
