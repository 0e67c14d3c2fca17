#include "examples/write_acclaim.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <string_view>

#include "examples/text.h"

namespace examples {
namespace {

constexpr std::string_view kAsfHead = R"(# A walk on the level, made by make_walk
:version 1.10
:name Walker
:units
  mass 1.0
  length 1.0
  angle deg
:documentation
  A sample skeleton. All lengths are centimetres.
:root
  order TX TY TZ RX RY RZ
  axis XYZ
  position 0 0 0
  orientation 0 0 0
:bonedata
)";

// In an ASF file, a bone starts where its parent bone ends, or at the root. The child joints of the
// hips are not at the position of the hips. A connector is a bone that leads from the hips to one
// of these children.
struct Connector {
    JointId to;             // the child of the hips at which the connector ends
    std::string_view name;  // the name of the connector
};
constexpr Connector kConnectors[] = {
    {kLeftUpLeg, "LeftHipJoint"}, {kRightUpLeg, "RightHipJoint"}, {kSpine, "Sacrum"}};

// Returns the vector from the joint `id` to its children, or to its end site if it has no children.
// `id` must not be kHips, because the children of the hips have different offsets. The children of
// any other joint all have the same offset.
Vec3 Segment(const Skeleton& skeleton, std::size_t id) {
    for (std::size_t child = id + 1; child < skeleton.size(); ++child)
        if (skeleton[child].parent == id) return skeleton[child].offset;
    return skeleton[id].end;
}

double Component(const Vec3& v, std::size_t axis) {
    return std::array{v.x, v.y, v.z}[axis];
}

std::size_t AxisIndex(char axis) {
    return static_cast<std::size_t>(axis - 'x');
}

void AppendNumbers(std::string& text, std::string_view keyword, const Vec3& v, int digits) {
    text += keyword;
    for (const double value : {v.x, v.y, v.z}) {
        text += ' ';
        AppendNumber(text, value, digits);
    }
}

void AppendBone(std::string& text, int id, std::string_view name, const Vec3& segment) {
    // A reader multiplies the direction by the bone's length, which makes rounding errors larger.
    // So a direction needs more digits than a position.
    constexpr int kDirectionDigits = 9;
    text += "  begin\n    id " + std::to_string(id) + "\n    name ";
    text += name;
    AppendNumbers(text, "\n    direction", Normalized(segment), kDirectionDigits);
    text += "\n    length ";
    AppendNumber(text, Length(segment));
    text += '\n';
}

void AppendFreedom(std::string& text, const Joint& joint) {
    text += "    dof";
    for (const char axis : joint.free)
        text += std::string(" r") + axis;
    std::string_view before = "\n    limits (";
    for (const char axis : joint.free) {
        const Limit& limit = joint.limits[AxisIndex(axis)];
        text += before;
        AppendNumber(text, limit.min, 1);
        text += ' ';
        AppendNumber(text, limit.max, 1);
        text += ')';
        before = "\n           (";
    }
    text += '\n';
}

void AppendBoneData(std::string& text, const Skeleton& skeleton) {
    int number = 0;
    const auto append = [&](std::string_view name, const Vec3& segment, const Vec3& axis) {
        AppendBone(text, ++number, name, segment);
        AppendNumbers(text, "    axis", axis, 1);
        text += " XYZ\n";
    };
    for (std::size_t id = kHips + 1; id < skeleton.size(); ++id) {
        for (const Connector& connector : kConnectors) {
            if (connector.to != id) continue;
            append(connector.name, skeleton[id].offset, {});
            text += "  end\n";
        }
        append(skeleton[id].name, Segment(skeleton, id), skeleton[id].axis);
        AppendFreedom(text, skeleton[id]);
        text += "  end\n";
    }
}

void AppendHierarchy(std::string& text, const Skeleton& skeleton) {
    text += ":hierarchy\n  begin\n    root";
    for (const Connector& connector : kConnectors)
        (text += ' ') += connector.name;
    text += '\n';
    for (const Connector& connector : kConnectors) {
        text += "    ";
        text += connector.name;
        text += ' ' + skeleton[connector.to].name + '\n';
    }
    for (std::size_t id = kHips + 1; id < skeleton.size(); ++id) {
        std::string children;
        for (std::size_t child = id + 1; child < skeleton.size(); ++child)
            if (skeleton[child].parent == id) children += ' ' + skeleton[child].name;
        if (!children.empty()) text += "    " + skeleton[id].name + children + '\n';
    }
    text += "  end\n";
}

void AppendRoot(std::string& text, const Pose& pose) {
    AppendNumbers(text, "root", pose.hips, 6);
    AppendNumbers(text, "", AnglesXyz(pose.local[kHips]), 6);
    text += '\n';
}

void AppendJoint(std::string& text, const Joint& joint, const Rotation& local) {
    constexpr double kStill = 1e-9;  // degrees; a smaller angle is only a rounding error
    const Rotation frame = TurnXyz(joint.axis);
    const Vec3 angles = AnglesXyz(Inverse(frame) * local * frame);
    for (const char axis : std::string_view("xyz"))
        if (joint.free.find(axis) == std::string_view::npos &&
            std::abs(Component(angles, AxisIndex(axis))) > kStill)
            throw std::logic_error(joint.name +
                                   " turns about an axis it is not free to turn about");
    text += joint.name;
    for (const char axis : joint.free) {
        text += ' ';
        AppendNumber(text, Component(angles, AxisIndex(axis)));
    }
    text += '\n';
}

}  // namespace

std::string WriteAsf(const Skeleton& skeleton) {
    std::string text(kAsfHead);
    AppendBoneData(text, skeleton);
    AppendHierarchy(text, skeleton);
    return text;
}

std::string WriteAmc(const Skeleton& skeleton, const std::vector<Pose>& poses) {
    std::string text = "# A walk on the level, made by make_walk\n:SAMPLES-PER-SECOND " +
                       std::to_string(kFramesPerSecond) + "\n:FULLY-SPECIFIED\n:DEGREES\n";
    for (std::size_t frame = 0; frame < poses.size(); ++frame) {
        text += std::to_string(frame + 1) + '\n';
        AppendRoot(text, poses[frame]);
        for (std::size_t id = kHips + 1; id < skeleton.size(); ++id)
            AppendJoint(text, skeleton[id], poses[frame].local[id]);
    }
    return text;
}

}  // namespace examples
