#include "survey/amc_values.h"

#include <algorithm>

#include "survey/number_word.h"

namespace survey {
namespace {

// The most values that a row may have in a motion with :FORCE-ALL-JOINTS-BE-3DOF.
constexpr std::size_t kForcedDofs = 3;

bool HasComma(std::string_view word) {
    return word.find(',') != std::string_view::npos;
}

bool IsDecimal(std::string_view word) {
    double value = 0.0;
    const WordKind kind = ClassifyWord(word, value);
    return kind == WordKind::Number || kind == WordKind::Comma;
}

void SplitAtCommas(std::span<const std::string_view> words, std::vector<std::string_view>& parts) {
    parts.clear();
    for (std::string_view word : words) {
        for (std::size_t comma = word.find(','); comma != std::string_view::npos;
             comma = word.find(',')) {
            if (comma > 0) parts.push_back(word.substr(0, comma));
            word.remove_prefix(comma + 1);
        }
        if (!word.empty()) parts.push_back(word);
    }
}

void SplitAllGlued(std::span<const std::string_view> words, std::vector<std::string_view>& parts) {
    parts.clear();
    for (const std::string_view word : words) {
        double value = 0.0;
        if (ClassifyWord(word, value) != WordKind::Glued) {
            parts.push_back(word);
            continue;
        }
        const std::vector<std::string_view> split = SplitGlued(word);
        parts.insert(parts.end(), split.begin(), split.end());
    }
}

bool HasOnlyTranslations(const AsfBone& bone) {
    return std::all_of(bone.dof.begin(), bone.dof.end(), IsTranslation);
}

}  // namespace

AmcValues::AmcValues(const AsfSkeleton& skeleton, bool has3Dof)
    : skeleton_(skeleton),
      has3Dof_(has3Dof),
      seen_(skeleton.bones.size()),
      lastFrame_(skeleton.bones.size()),
      ranks_(skeleton.bones.size(), kNoBone) {
    firsts_.push_back(0);
    for (const AsfBone& bone : skeleton.bones)
        firsts_.push_back(firsts_.back() + bone.dof.size());
    values_.resize(firsts_.back());
    initial_.resize(firsts_.back());
    isKnown_.resize(firsts_.back());
}

void AmcValues::Apply(const AmcFrame& frame, std::vector<AmcEvent>& events) {
    events.clear();
    if (++frame_ == 1 && order_.empty())
        LearnOrder(frame);
    else
        NoteOrder(frame, events);
    found_ = 0;
    for (const AmcRow& row : frame.rows)
        ApplyRow(frame, row, events);
    if (found_ < order_.size())
        events.push_back({AmcEvent::Missing, kNoBone, {frame.at, 1}, order_.size() - found_});
}

void AmcValues::LearnOrder(const AmcFrame& frame) {
    const auto append = [&](std::uint32_t bone) {
        if (ranks_[bone] != kNoBone || skeleton_.bones[bone].dof.empty()) return;
        ranks_[bone] = static_cast<std::uint32_t>(order_.size());
        order_.push_back(bone);
    };
    for (const AmcRow& row : frame.rows)
        if (row.bone != kNoBone) append(row.bone);
    inFirst_ = order_.size();
    // A bone whose dofs are all translations needs no row, since its translations are ignored.
    for (std::uint32_t bone = 0; bone < skeleton_.bones.size(); ++bone)
        if (bone == 0 || !HasOnlyTranslations(skeleton_.bones[bone])) append(bone);
}

void AmcValues::NoteOrder(const AmcFrame& frame, std::vector<AmcEvent>& events) {
    std::uint32_t last = 0;
    for (const AmcRow& row : frame.rows) {
        if (row.bone == kNoBone || ranks_[row.bone] == kNoBone || ranks_[row.bone] >= inFirst_)
            continue;
        if (ranks_[row.bone] < last) {
            events.push_back({AmcEvent::RowOrder, row.bone, row.name, 1});
            return;
        }
        last = ranks_[row.bone];
    }
}

void AmcValues::ApplyRow(const AmcFrame& frame, const AmcRow& row, std::vector<AmcEvent>& events) {
    if (row.bone == kNoBone) {
        events.push_back({AmcEvent::UnknownBone, kNoBone, row.name, 1});
        return;
    }
    if (lastFrame_[row.bone] == frame_) {
        events.push_back({AmcEvent::More, row.bone, row.name, 1});
        return;
    }
    lastFrame_[row.bone] = frame_;
    if (ranks_[row.bone] != kNoBone) ++found_;
    std::span<const std::string_view> words(frame.words);
    words = words.subspan(row.first, row.count);
    const std::size_t expected = skeleton_.bones[row.bone].dof.size();
    words = SplitRow(words, row, expected, events);
    if (words.size() < expected) {
        events.push_back({AmcEvent::Fewer, row.bone, row.name, 1});
        return;
    }
    if (expected == 0 || words.size() > expected) {
        if (expected > 0 && (!has3Dof_ || words.size() > kForcedDofs)) {
            events.push_back({AmcEvent::More, row.bone, row.name, 1});
            return;
        }
        NoteLeftOut(words.subspan(expected), row, events);
    }
    if (seen_[row.bone] == 0) unknown_ += expected;
    seen_[row.bone] = 1;
    for (std::size_t dof = 0; dof < expected; ++dof)
        Store(row, dof, words[dof], events);
}

// Splits words that hold several numbers. The numbers of such a word have commas between them, or
// each number after the first has a sign. Returns the split words if there are `expected` of them.
// If there are more or fewer, returns `words` unchanged.
std::span<const std::string_view> AmcValues::SplitRow(std::span<const std::string_view> words,
                                                      const AmcRow& row, std::size_t expected,
                                                      std::vector<AmcEvent>& events) {
    if (std::any_of(words.begin(), words.end(), HasComma)) {
        if (words.size() == expected && std::all_of(words.begin(), words.end(), IsDecimal)) {
            const bool mixes = std::any_of(words.begin(), words.end(), [](std::string_view word) {
                return word.find('.') != std::string_view::npos;
            });
            events.push_back(
                {mixes ? AmcEvent::CommaWrong : AmcEvent::Comma, row.bone, row.name, 1});
            return words;
        }
        SplitAtCommas(words, parts_);
        if (parts_.size() == expected) {
            if (!commasBetween_) commasBetween_ = row.name.data();
            return parts_;
        }
        events.push_back({AmcEvent::CommaWrong, row.bone, row.name, 1});
        return words;
    }
    if (words.size() >= expected) return words;
    SplitAllGlued(words, parts_);
    if (parts_.size() != expected || parts_.size() == words.size()) return words;
    events.push_back({AmcEvent::Glued, row.bone, row.name, 1});
    return parts_;
}

void AmcValues::NoteLeftOut(std::span<const std::string_view> words, const AmcRow& row,
                            std::vector<AmcEvent>& events) const {
    const bool isLost = std::any_of(words.begin(), words.end(), [](std::string_view word) {
        double value = 0.0;
        return ClassifyWord(word, value) != WordKind::Number || value != 0.0;
    });
    events.push_back({isLost ? AmcEvent::NoDofLost : AmcEvent::NoDof, row.bone, row.name, 1});
}

void AmcValues::Store(const AmcRow& row, std::size_t dof, std::string_view word,
                      std::vector<AmcEvent>& events) {
    const std::size_t channel = firsts_[row.bone] + dof;
    double value = 0.0;
    const WordKind kind = ClassifyWord(word, value);
    if (kind != WordKind::Number && kind != WordKind::Comma) {
        events.push_back({AmcEvent::NotFinite, row.bone, word, 1});
        return;
    }
    if (kind == WordKind::Number && !IsPlainWord(word, value))
        events.push_back({AmcEvent::OddNumber, row.bone, word, 1});
    if (value != 0.0 && row.bone != 0 && IsTranslation(skeleton_.bones[row.bone].dof[dof]))
        events.push_back({AmcEvent::Translation, row.bone, word, 1});
    values_[channel] = {value, word};
    if (isKnown_[channel] != 0) return;
    isKnown_[channel] = 1;
    --unknown_;
    initial_[channel] = values_[channel];
}

AsfNumber AmcValues::RestValue(const AsfBone& bone, Dof dof) const {
    if (dof == Dof::Length && bone.lengthScale != 1.0)
        return {bone.length.value / bone.lengthScale, {}};
    if (dof == Dof::Length) return bone.length;
    if (IsTranslation(dof) && &bone == &skeleton_.Root()) return skeleton_.position[AxisOf(dof)];
    return {0.0, "0"};
}

void AmcValues::Rewind() {
    for (std::size_t index = 0; index < skeleton_.bones.size(); ++index) {
        const AsfBone& bone = skeleton_.bones[index];
        for (std::size_t dof = 0; dof < bone.dof.size(); ++dof) {
            const std::size_t channel = firsts_[index] + dof;
            // If a bone has rows, but never a finite number for this channel, the value is 0.
            values_[channel] = isKnown_[channel] != 0 ? initial_[channel]
                               : seen_[index] != 0    ? AsfNumber{0.0, "0"}
                                                      : RestValue(bone, bone.dof[dof]);
        }
    }
    std::fill(lastFrame_.begin(), lastFrame_.end(), std::size_t{0});
    frame_ = 0;
}

}  // namespace survey
