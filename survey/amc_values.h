// The values of a motion's frames. A value that a frame lacks stays as in the frame before.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "survey/acclaim_skeleton.h"
#include "survey/amc_frame.h"

namespace survey {

// Something odd in a frame.
struct AmcEvent {
    enum Kind : std::uint8_t {
        RowOrder,     // the rows are in another order than in the first frame
        UnknownBone,  // the skeleton has no bone of the row's name
        NoDof,        // more values than the bone has dofs, all zeros; or a bone without dofs
        NoDofLost,    // likewise, and one of these values is not 0
        Fewer,        // fewer values than dofs; the row is ignored
        More,         // more values than dofs, or a second row; the row is ignored
        Missing,      // `count` bones with dofs have no row
        Glued,        // numbers without a blank between them were split
        Comma,        // decimal commas were read
        CommaWrong,   // commas that are neither decimal commas nor between numbers
        NotFinite,    // a word that is not a finite number; the value stays as it was
        Translation,  // a translation, other than 0, of a bone that is not the root
        OddNumber,    // a zero that the plug-in refuses
    };
    Kind kind;
    std::uint32_t bone = kNoBone;
    std::string_view at{};  // the word or the row's name, in the text; for Missing, the frame
    std::size_t count = 0;
};

class AmcValues {
  public:
    AmcValues(const AsfSkeleton& skeleton, bool has3Dof);

    // Overwrites the values with those of the frame. Replaces the content of `events` by what is
    // odd about the frame.
    void Apply(const AmcFrame& frame, std::vector<AmcEvent>& events);

    // The values of a bone in the order of its dofs, in the file's units.
    std::span<const AsfNumber> Of(std::uint32_t bone) const {
        return {values_.data() + firsts_[bone], firsts_[bone + 1] - firsts_[bone]};
    }
    // Whether every channel of each bone that had a row so far has had a value.
    bool IsComplete() const { return unknown_ == 0; }
    // The first row with commas between its numbers; null if there is none.
    const char* CommasBetween() const { return commasBetween_; }
    // Whether the bone had a row that was read.
    bool WasSeen(std::uint32_t bone) const { return seen_[bone] != 0; }
    std::size_t Channels() const { return values_.size(); }
    // The bones with dofs in the order of the first frame; bones without a row there come last.
    const std::vector<std::uint32_t>& Order() const { return order_; }

    // Goes back to before the first frame. Each channel gets its first value of the motion; if it
    // has none, its value at rest, or 0 if the bone has rows.
    void Rewind();

  private:
    void LearnOrder(const AmcFrame& frame);
    // Compares the order of the bones that have a row in the first frame too.
    void NoteOrder(const AmcFrame& frame, std::vector<AmcEvent>& events);
    void ApplyRow(const AmcFrame& frame, const AmcRow& row, std::vector<AmcEvent>& events);
    std::span<const std::string_view> SplitRow(std::span<const std::string_view> words,
                                               const AmcRow& row, std::size_t expected,
                                               std::vector<AmcEvent>& events);
    void NoteLeftOut(std::span<const std::string_view> words, const AmcRow& row,
                     std::vector<AmcEvent>& events) const;
    void Store(const AmcRow& row, std::size_t dof, std::string_view word,
               std::vector<AmcEvent>& events);
    AsfNumber RestValue(const AsfBone& bone, Dof dof) const;

    const AsfSkeleton& skeleton_;
    bool has3Dof_;
    std::vector<std::size_t> firsts_;    // by bone: index of its first channel; one more at the end
    std::vector<AsfNumber> values_;      // by channel
    std::vector<AsfNumber> initial_;     // by channel: its first value
    std::vector<std::uint8_t> isKnown_;  // by channel: it has had a value
    std::size_t unknown_ = 0;            // channels of seen bones that have had no value
    std::vector<std::uint8_t> seen_;     // by bone
    std::vector<std::size_t> lastFrame_;  // by bone: the last frame with a row, from 1
    std::vector<std::uint32_t> ranks_;    // by bone: its index in `order_`, or kNoBone
    std::vector<std::uint32_t> order_;
    std::vector<std::string_view> parts_;  // buffer of SplitRow
    std::size_t frame_ = 0;                // number of frames so far
    std::size_t inFirst_ = 0;              // bones of `order_` with a row in the first frame
    std::size_t found_ = 0;                // bones of `order_` with a row in the current frame
    const char* commasBetween_ = nullptr;
};

}  // namespace survey
