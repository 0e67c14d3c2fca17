// Holds the values of one frame of a motion at a time. A value that a frame lacks stays as it was
// in the frame before.
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
        // The bone has no dofs, or :FORCE-ALL-JOINTS-BE-3DOF gives it more values than it has dofs.
        // The values without a dof are ignored; all of them are 0.
        NoDof,
        NoDofLost,  // the same as NoDof, but one of the ignored values is not 0
        Fewer,      // the row has fewer values than the bone has dofs; the row is ignored
        // The row has too many values, or the frame already has a row of this bone. The row is
        // ignored.
        More,
        Missing,      // `count` bones that should have a row have none
        Glued,        // words that hold several numbers were split
        Comma,        // the row has decimal commas
        CommaWrong,   // commas in the row are neither decimal commas nor between numbers
        NotFinite,    // a word is not a finite number; the channel keeps the value that it had
        Translation,  // a bone other than the root has a translation that is not 0
        OddNumber,    // a zero is written in a form that the plug-in refuses
    };
    Kind kind;
    std::uint32_t bone = kNoBone;
    // The word, or the row's name, in the text. For Missing, the first byte of the frame.
    std::string_view at{};
    std::size_t count = 0;  // for Missing, the number of bones
};

class AmcValues {
  public:
    AmcValues(const AsfSkeleton& skeleton, bool has3Dof);

    // Replaces the values by those of the frame. Replaces the content of `events` by what is odd
    // about the frame.
    void Apply(const AmcFrame& frame, std::vector<AmcEvent>& events);

    // The values of a bone in the order of its dofs, in the file's units.
    std::span<const AsfNumber> Of(std::uint32_t bone) const {
        return {values_.data() + firsts_[bone], firsts_[bone + 1] - firsts_[bone]};
    }
    // Whether all channels of the bones that had a row so far have had a finite value.
    bool IsComplete() const { return unknown_ == 0; }
    // Where the first row with commas between its numbers is; null if there is none.
    const char* CommasBetween() const { return commasBetween_; }
    // Whether the bone had a row that was read.
    bool WasSeen(std::uint32_t bone) const { return seen_[bone] != 0; }
    std::size_t Channels() const { return values_.size(); }
    // The bones that should have a row in each frame, in the order of the first frame. Bones
    // without a row in the first frame come last.
    const std::vector<std::uint32_t>& Order() const { return order_; }

    // Goes back to before the first frame. Each channel gets its first finite value in the motion.
    // If it has none, it gets 0 if the bone has rows, and otherwise its value at rest.
    void Rewind();

  private:
    void LearnOrder(const AmcFrame& frame);
    // Adds an event if the rows are in another order than in the first frame. Bones without a row
    // in the first frame are ignored.
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
    // By bone: the index of its first channel. The last item is the number of channels.
    std::vector<std::size_t> firsts_;
    std::vector<AsfNumber> values_;      // by channel
    std::vector<AsfNumber> initial_;     // by channel: its first finite value
    std::vector<std::uint8_t> isKnown_;  // by channel: whether it has had a finite value
    std::size_t unknown_ = 0;            // how many channels of seen bones have had no finite value
    std::vector<std::uint8_t> seen_;     // by bone: whether it has had a row that was read
    // By bone: the last frame in which it has a row, counted from 1; 0 if there is none.
    std::vector<std::size_t> lastFrame_;
    std::vector<std::uint32_t> ranks_;  // by bone: its index in `order_`, or kNoBone
    std::vector<std::uint32_t> order_;
    std::vector<std::string_view> parts_;  // buffer of SplitRow
    std::size_t frame_ = 0;                // number of frames so far
    std::size_t inFirst_ = 0;  // how many bones of `order_` have a row in the first frame
    std::size_t found_ = 0;    // how many bones of `order_` have a row in the current frame
    const char* commasBetween_ = nullptr;
};

}  // namespace survey
