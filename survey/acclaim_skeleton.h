// An ASF skeleton as its author meant it, in the file's own units.
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
// Of a translation or rotation: 0, 1 or 2.
constexpr std::size_t AxisOf(Dof dof) {
    return static_cast<std::size_t>(dof) % 3;
}

// A number of the file. `text` is how it is written there; empty where it is worked out, and then
// the value is written out.
struct AsfNumber {
    double value = 0.0;
    std::string_view text{};
};
using AsfVector = std::array<AsfNumber, 3>;

constexpr std::uint32_t kNoBone = 0xFFFFFFFF;

struct AsfBone {
    std::string name;                  // UTF-8
    const char* at = nullptr;          // in the text: its name, of the root its section
    const char* attachedAt = nullptr;  // where the hierarchy first names it as a child
    const char* dofAt = nullptr;
    const char* directionAt = nullptr;
    const char* axisAt = nullptr;
    AsfVector direction{};
    AsfNumber length{};
    AsfVector axis{};  // of the root: orientation
    std::array<char, 3> axisOrder = {'X', 'Y', 'Z'};
    std::vector<Dof> dof;
    bool hasLetterLength = false;   // a dof is written "l"
    std::vector<AsfNumber> limits;  // a pair for each dof, or none
    std::uint32_t parent = kNoBone;
    std::vector<std::uint32_t> children;  // as the hierarchy lists them
    std::uint8_t leftOut = 0;             // of the dofs, a bit each: what canonical texts lack
    double lengthScale = 1.0;             // of a motion's lengths in canonical texts

    // Whether canonical motions are to have other values for it than the file's.
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

// Bones by name, in any letter case of ASCII.
class BoneNames {
  public:
    // False where the name is taken.
    bool Add(const std::string& name, std::uint32_t bone);
    void Remove(const std::string& name);
    std::uint32_t Find(std::string_view name) const;  // kNoBone where there is none

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
    AsfVector position{};  // of the root
    // What canonical texts have in its stead, where they must.
    std::optional<std::array<double, 3>> writtenPosition;
    // The root, which is there even where the file has none, and the others as the file has them.
    std::vector<AsfBone> bones{1};
    BoneNames names;
    std::vector<std::uint32_t> order;  // of the bones: parents before their children
    // The text is to be written anew, since the plug-in would not read this from it.
    bool changed = false;

    const AsfBone& Root() const { return bones[0]; }
};

}  // namespace survey
