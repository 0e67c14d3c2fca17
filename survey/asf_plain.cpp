#include "survey/asf_plain.h"

#include <algorithm>
#include <cmath>
#include <span>

#include "survey/acclaim_words.h"
#include "survey/encoding.h"

namespace survey {
namespace {

bool SameNumbers(std::span<const AsfNumber> numbers, std::span<const double> values) {
    return std::equal(numbers.begin(), numbers.end(), values.begin(), values.end(),
                      [](const AsfNumber& number, double value) {
                          return number.value == value &&
                                 std::signbit(number.value) == std::signbit(value);
                      });
}

// A bone as the plug-in reads it, in the file's units.
struct PlainBone {
    bool hasName = false;
    double direction[3] = {};
    double length = 0.0;
    double axis[3] = {};
    std::string axisOrder = "xyz";
    std::vector<Dof> dof;
    std::vector<double> limits;
};

bool SameOrder(const PlainBone& bone, const AsfBone& meant) {
    return std::equal(bone.axisOrder.begin(), bone.axisOrder.end(), meant.axisOrder.begin(),
                      meant.axisOrder.end(), [](char a, char b) { return a - 32 == b; });
}

class PlainReader {
  public:
    PlainReader(std::string_view text, const AsfSkeleton& skeleton)
        : words_(text), skeleton_(skeleton), parents_(skeleton.bones.size(), kNoBone) {}

    bool Read() {
        double version = 0.0;
        if (!EqualsLower(words_.Next(), ":version") || !words_.NextNumber(version)) return false;
        if (version < 1.0) return false;
        for (std::string_view word = words_.Next(); !word.empty(); word = words_.Next())
            if (!ReadSection(word)) return false;
        if (bonesRead_ + 1 != skeleton_.bones.size() || !hasHierarchy_) return false;
        for (std::size_t bone = 0; bone < parents_.size(); ++bone)
            if (parents_[bone] != skeleton_.bones[bone].parent) return false;
        return degrees_ == skeleton_.degrees && length_ == skeleton_.length.value;
    }

  private:
    bool AtSection() const {
        const std::string_view next = words_.Peek();
        return next.empty() || next[0] == ':';
    }

    bool ReadSection(std::string_view word) {
        if (EqualsLower(word, ":name")) return !words_.Next().empty();
        if (EqualsLower(word, ":units")) return ReadUnits();
        if (EqualsLower(word, ":documentation")) return SkipDocumentation();
        if (EqualsLower(word, ":root")) return ReadRoot();
        if (EqualsLower(word, ":bonedata")) return ReadBones();
        if (EqualsLower(word, ":hierarchy")) return ReadHierarchy();
        return word[0] == ':' && AtSection();
    }

    bool ReadUnits() {
        for (double mass = 0.0; !AtSection();) {
            const std::string_view word = words_.Next();
            if (EqualsLower(word, "mass")) {
                if (!words_.NextNumber(mass)) return false;
            } else if (EqualsLower(word, "length")) {
                if (!words_.NextNumber(length_)) return false;
            } else if (EqualsLower(word, "angle")) {
                const std::string_view unit = words_.Next();
                degrees_ = EqualsLower(unit, "deg");
                if (!degrees_ && !EqualsLower(unit, "rad")) return false;
            } else {
                return false;
            }
        }
        // If :root comes before :units, the plug-in does not convert the root's values.
        return !hasRoot_ || (degrees_ && length_ == 1.0);
    }

    bool SkipDocumentation() {
        const char* const start = words_.At();
        if (words_.NextRaw().empty()) return true;
        words_.MoveTo(start);
        for (std::string_view word = words_.NextRaw(); !word.empty(); word = words_.NextRaw()) {
            const std::size_t colon = word.find(':');
            if (colon == std::string_view::npos) continue;
            words_.MoveTo(word.data() + colon);
            break;
        }
        return true;
    }

    bool ReadNumbers(std::span<double> numbers) {
        return std::all_of(numbers.begin(), numbers.end(),
                           [&](double& number) { return words_.NextNumber(number); });
    }

    bool ReadAxisOrder(std::string& order) {
        order = ToLowerText(words_.Next());
        std::string letters = order;
        std::sort(letters.begin(), letters.end());
        return letters == "xyz";
    }

    // Returns false if the bone already has a list of dofs, because the plug-in would overwrite
    // only a part of the first list.
    bool ReadDofs(bool isRoot, std::vector<Dof>& dofs) {
        if (!dofs.empty()) return false;
        while (!words_.AtLineEnd()) {
            const std::string word = ToLowerText(words_.Next());
            if (!isRoot && word[0] == '|') {
                dofs.push_back(Dof::Length);
                continue;
            }
            if (word.size() < 2 || (word[0] != 't' && word[0] != 'r')) return false;
            if (word[1] < 'x' || word[1] > 'z') return false;
            dofs.push_back(static_cast<Dof>((word[0] == 'r' ? 3 : 0) + word[1] - 'x'));
        }
        return true;
    }

    bool ReadRoot() {
        if (hasRoot_ || bonesRead_ > 0) return false;
        hasRoot_ = true;
        double position[3] = {};
        PlainBone root;
        std::string order = "xyz";
        while (!AtSection()) {
            const std::string_view word = words_.Next();
            bool isRead = false;
            if (EqualsLower(word, "order")) isRead = ReadDofs(true, root.dof);
            if (EqualsLower(word, "axis")) isRead = ReadAxisOrder(order);
            if (EqualsLower(word, "position")) isRead = ReadNumbers(position);
            if (EqualsLower(word, "orientation")) {
                isRead = ReadNumbers(root.axis);
                root.axisOrder = order;
            }
            if (!isRead) return false;
        }
        const AsfBone& meant = skeleton_.Root();
        return root.dof == meant.dof && SameOrder(root, meant) &&
               SameNumbers(skeleton_.position, position) && SameNumbers(meant.axis, root.axis);
    }

    bool ReadBones() {
        while (!AtSection()) {
            if (!EqualsLower(words_.Next(), "begin")) return false;
            if (!hasRoot_ || ++bonesRead_ >= skeleton_.bones.size()) return false;
            if (!ReadBone(skeleton_.bones[bonesRead_])) return false;
        }
        return true;
    }

    bool ReadBone(const AsfBone& meant) {
        PlainBone bone;
        for (std::string_view word = words_.Next(); !EqualsLower(word, "end"); word = words_.Next())
            if (word.empty() || !ReadParameter(word, meant, bone)) return false;
        return bone.hasName && SameOrder(bone, meant) && bone.dof == meant.dof &&
               SameNumbers(meant.direction, bone.direction) &&
               SameNumbers({&meant.length, 1}, {&bone.length, 1}) &&
               SameNumbers(meant.axis, bone.axis) && SameNumbers(meant.limits, bone.limits);
    }

    bool ReadParameter(std::string_view word, const AsfBone& meant, PlainBone& bone) {
        int id = 0;
        if (EqualsLower(word, "id")) return words_.NextWholeNumber(id);
        if (EqualsLower(word, "name")) {
            bone.hasName = words_.Next() == meant.name;
            return bone.hasName;
        }
        if (EqualsLower(word, "direction")) return ReadNumbers(bone.direction);
        if (EqualsLower(word, "length")) return words_.NextNumber(bone.length);
        if (EqualsLower(word, "axis"))
            return ReadNumbers(bone.axis) && ReadAxisOrder(bone.axisOrder);
        if (EqualsLower(word, "dof")) return ReadDofs(false, bone.dof);
        if (EqualsLower(word, "limits")) return ReadLimits(bone);
        return words_.SkipLine();
    }

    bool ReadLimits(PlainBone& bone) {
        bone.limits.resize(2 * bone.dof.size());
        return ReadNumbers(bone.limits);
    }

    bool ReadHierarchy() {
        if (hasHierarchy_ || bonesRead_ + 1 != skeleton_.bones.size()) return false;
        hasHierarchy_ = true;
        if (!EqualsLower(words_.Next(), "begin")) return false;
        for (bool isFirst = true;; isFirst = false) {
            const std::string_view word = words_.Next();
            if (EqualsLower(word, "end")) return true;
            const std::uint32_t parent = skeleton_.names.Find(word);
            if (word.empty() || parent == kNoBone || (isFirst && parent != 0)) return false;
            while (!words_.AtLineEnd()) {
                const std::uint32_t child = skeleton_.names.Find(words_.Next());
                if (child == kNoBone) return false;
                parents_[child] = parent;
            }
        }
    }

    PlugInWords words_;
    const AsfSkeleton& skeleton_;
    std::vector<std::uint32_t> parents_;
    double length_ = 1.0;
    bool degrees_ = true;
    bool hasRoot_ = false;
    bool hasHierarchy_ = false;
    std::size_t bonesRead_ = 0;
};

}  // namespace

bool PlugInReads(std::string_view text, const AsfSkeleton& skeleton) {
    if (text.find('\0') != std::string_view::npos) return false;
    return PlainReader(text, skeleton).Read();
}

}  // namespace survey
