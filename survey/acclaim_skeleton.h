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
// 0, 1 or 2 for the axis of a translation or rotation.
constexpr std::size_t AxisOf(Dof dof) {
    return static_cast<std::size_t>(dof) % 3;
}

// A number of the file. `text` is how the file writes it; it is empty if the value was computed,
// and then mended texts have the value.
struct AsfNumber {
    double value = 0.0;
    std::string_view text{};
};
using AsfVector = std::array<AsfNumber, 3>;

constexpr std::uint32_t kNoBone = 0xFFFFFFFF;

struct AsfBone {
    std::string name;  // UTF-8
    // Where the text has these; null if it does not.
    const char* at = nullptr;          // the name; for the root, its section
    const char* attachedAt = nullptr;  // where the hierarchy first lists it as a child
    const char* dofAt = nullptr;
    const char* directionAt = nullptr;
    const char* axisAt = nullptr;
    AsfVector direction{};
    AsfNumber length{};
    AsfVector axis{};  // for the root, its orientation
    std::array<char, 3> axisOrder = {'X', 'Y', 'Z'};
    std::vector<Dof> dof;
    bool hasLetterLength = false;   // the dof of the length is written "l", not "|"
    std::vector<AsfNumber> limits;  // lowest and highest value for each dof; or empty
    std::uint32_t parent = kNoBone;
    std::vector<std::uint32_t> children;  // in the order of the hierarchy
    std::uint8_t leftOut = 0;             // the dofs that mended texts leave out, one bit for each
    double lengthScale = 1.0;             // factor on the motion's lengths in mended texts

    // Whether mended motions need other values for this bone than the file's.
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
    // Returns false if there is such a name already.
    bool Add(const std::string& name, std::uint32_t bone);
    void Remove(const std::string& name);
    std::uint32_t Find(std::string_view name) const;  // kNoBone if there is none

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
    AsfVector position{};  // of the root at rest
    // The position that mended texts have instead; nullopt if they have `position`.
    std::optional<std::array<double, 3>> writtenPosition;
    // The root, which exists even if the file has none, then the others in file order.
    std::vector<AsfBone> bones{1};
    BoneNames names;
    std::vector<std::uint32_t> order;  // indexes of all bones, parents before their children
    // The plug-in needs a mended text, since it would read something else from the file.
    bool changed = false;

    const AsfBone& Root() const { return bones[0]; }
};

}  // namespace survey
