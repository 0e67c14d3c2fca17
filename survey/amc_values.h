// The values of a motion's frames: what a frame lacks is held from the frame before.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "survey/acclaim_skeleton.h"
#include "survey/amc_frame.h"

namespace survey {

struct AmcEvent {
    enum Kind : std::uint8_t {
        RowOrder,  // a row comes before one that precedes it in the first frame
        UnknownBone,
        NoDof,      // values beyond a bone's dofs that are zeros, or a row without values
        NoDofLost,  // likewise, and one is not 0
        Fewer,
        More,
        Missing,  // `count` bones with dofs have no row
        Glued,
        Comma,
        CommaWrong,
        NotFinite,
        Translation,  // a bone's translation that is not 0
        OddNumber,    // a zero that the plug-in refuses
    };
    Kind kind;
    std::uint32_t bone = kNoBone;
    std::string_view at{};
    std::size_t count = 0;
};

class AmcValues {
  public:
    AmcValues(const AsfSkeleton& skeleton, bool has3Dof);

    // Overwrites the values with what the frame has, and tells how it is not as expected. Fills in
    // `events`, whose content is gone.
    void Apply(const AmcFrame& frame, std::vector<AmcEvent>& events);

    // Of a bone, in the order of its dofs, as in the file.
    std::span<const AsfNumber> Of(std::uint32_t bone) const {
        return {values_.data() + firsts_[bone], firsts_[bone + 1] - firsts_[bone]};
    }
    // Whether each channel of a bone with a row so far had a value.
    bool IsComplete() const { return unknown_ == 0; }
    // The first row whose numbers commas part; null without one.
    const char* CommasBetween() const { return commasBetween_; }
    bool WasSeen(std::uint32_t bone) const { return seen_[bone] != 0; }
    std::size_t Channels() const { return values_.size(); }
    // The bones with dofs in the order of the first frame; those that it lacks come last.
    const std::vector<std::uint32_t>& Order() const { return order_; }

    // Back to before the first frame, with each channel's first value, or its value at rest where
    // it has none.
    void Rewind();

  private:
    void LearnOrder(const AmcFrame& frame);
    // Of the bones that the first frame has too.
    void TellOrder(const AmcFrame& frame, std::vector<AmcEvent>& events);
    void ApplyRow(const AmcFrame& frame, const AmcRow& row, std::vector<AmcEvent>& events);
    std::span<const std::string_view> Part(std::span<const std::string_view> words,
                                           const AmcRow& row, std::size_t expected,
                                           std::vector<AmcEvent>& events);
    void TellLeftOut(std::span<const std::string_view> words, const AmcRow& row,
                     std::vector<AmcEvent>& events) const;
    void Store(const AmcRow& row, std::size_t dof, std::string_view word,
               std::vector<AmcEvent>& events);
    AsfNumber AtRest(const AsfBone& bone, Dof dof) const;

    const AsfSkeleton& skeleton_;
    bool has3Dof_;
    std::vector<std::size_t> firsts_;  // of each bone's values
    std::vector<AsfNumber> values_;
    std::vector<AsfNumber> initial_;
    std::vector<std::uint8_t> isKnown_;
    std::size_t unknown_ = 0;
    std::vector<std::uint8_t> seen_;      // by bone
    std::vector<std::size_t> lastFrame_;  // by bone: the last frame with a row, from 1
    std::vector<std::uint32_t> ranks_;    // by bone, in `order_`
    std::vector<std::uint32_t> order_;
    std::vector<std::string_view> parts_;
    std::size_t frame_ = 0;
    std::size_t inFirst_ = 0;  // bones of `order_` with a row in the first frame
    std::size_t found_ = 0;    // bones of `order_` with a row in the frame
    const char* commasBetween_ = nullptr;
};

}  // namespace survey
