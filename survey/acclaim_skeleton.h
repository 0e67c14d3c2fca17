// An ASF skeleton as its author meant it, in the file's own units. "Dof" is a degree of freedom:
// one channel of a bone.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace survey {

enum class Dof : std::uint8_t { PosX, PosY, PosZ, RotX, RotY, RotZ, Length };

constexpr bool IsTranslation(Dof dof) {
    return dof <= Dof::PosZ;
}
constexpr bool IsRotation(Dof dof) {
    return dof >= Dof::RotX && dof <= Dof::RotZ;
}
// The axis of a translation or rotation: 0, 1 or 2 for x, y or z.
constexpr std::size_t AxisOf(Dof dof) {
    return static_cast<std::size_t>(dof) % 3;
}

// A number of the file. `text` is the number as the file writes it. If the value was computed,
// `text` is empty and mended texts are written from `value`.
struct AsfNumber {
    double value = 0.0;
    std::string_view text{};
};
using AsfVector = std::array<AsfNumber, 3>;

constexpr std::uint32_t kNoBone = 0xFFFFFFFF;

struct AsfBone {
    std::string name;  // UTF-8
    // Pointers to words in the file's text. Each pointer is null if the text does not have the
    // word.
    const char* at = nullptr;           // the bone's name; for the root, the keyword :root
    const char* attachedAt = nullptr;   // where the hierarchy first lists the bone as a child
    const char* dofAt = nullptr;        // the bone's keyword "dof"; for the root, "order"
    const char* directionAt = nullptr;  // the keyword "direction"
    const char* axisAt = nullptr;       // the keyword "axis"
    AsfVector direction{};
    AsfNumber length{};
    AsfVector axis{};  // for the root, its orientation
    std::array<char, 3> axisOrder = {'X', 'Y', 'Z'};
    std::vector<Dof> dof;
    bool hasLetterLength = false;   // whether the dof of the length is written "l", not "|"
    std::vector<AsfNumber> limits;  // for each dof, its lowest and its highest value; or empty
    std::uint32_t parent = kNoBone;
    std::vector<std::uint32_t> children;  // in the order of the hierarchy
    std::uint8_t leftOut = 0;             // bit n is set if mended texts leave out Dof n
    double lengthScale = 1.0;  // mended motions have the bone's lengths multiplied by this

    // Whether the bone's rows in mended motions have other values than the file's rows.
    bool IsRewritten() const { return leftOut != 0 || lengthScale != 1.0; }
    bool IsLeftOut(Dof sought) const {
        return (leftOut >> static_cast<unsigned>(sought) & 1U) != 0;
    }
    void LeaveOut(Dof sought) {
        leftOut = static_cast<std::uint8_t>(leftOut | 1U << static_cast<unsigned>(sought));
    }
    void Keep(Dof sought) {
        leftOut = static_cast<std::uint8_t>(leftOut & ~(1U << static_cast<unsigned>(sought)));
    }
    bool Has(Dof sought) const;
};

// Finds bones by name; the case of ASCII letters is ignored.
class BoneNames {
  public:
    // Returns false, and changes nothing, if the name is already in use.
    bool Add(const std::string& name, std::uint32_t bone);
    void Remove(const std::string& name);
    std::uint32_t Find(std::string_view name) const;  // kNoBone if no bone has this name

  private:
    std::unordered_map<std::string, std::uint32_t> bones_;
};

struct AsfSkeleton {
    std::string name;
    AsfNumber version{1.1, "1.10"};
    std::string mass = "1.0";
    AsfNumber length{1.0, "1.0"};  // the factor of :units
    const char* lengthAt = nullptr;
    bool degrees = true;
    std::string documentation;
    bool hasDocumentation = false;
    const char* documentationAt = nullptr;
    AsfVector position{};  // the root's position at rest
    // If this position is set, mended texts state it instead of `position`.
    std::optional<std::array<double, 3>> writtenPosition;
    // The root comes first and exists even if the file has none. The other bones follow in file
    // order.
    std::vector<AsfBone> bones{1};
    BoneNames names;
    std::vector<std::uint32_t> order;  // indexes of all bones, parents before their children
    // Whether the plug-in would misread the file, so that it needs a mended text.
    bool changed = false;

    const AsfBone& Root() const { return bones[0]; }
};

}  // namespace survey
