#include "examples/write_bvh.h"

#include <cstddef>

#include "examples/text.h"

namespace examples {
namespace {

void AppendVector(std::string& text, const Vec3& v) {
    for (const double value : {v.x, v.y, v.z}) {
        text += ' ';
        AppendNumber(text, value);
    }
}

void AppendOffset(std::string& text, const std::string& indent, const Vec3& offset) {
    text += indent + "OFFSET";
    AppendVector(text, offset);
    text += '\n';
}

void AppendEndSite(std::string& text, const std::string& indent, const Vec3& end) {
    text += indent + "End Site\n" + indent + "{\n";
    AppendOffset(text, indent + '\t', end);
    text += indent + "}\n";
}

void OpenJoint(std::string& text, const Skeleton& skeleton, std::size_t id, std::size_t depth) {
    const std::string indent(depth, '\t');
    const bool isRoot = id == kHips;
    text += indent + (isRoot ? "ROOT " : "JOINT ") + skeleton[id].name + '\n' + indent + "{\n";
    // The root's offset is zero, because each frame gives the whole position of the root.
    AppendOffset(text, indent + '\t', isRoot ? Vec3{} : skeleton[id].offset);
    text += indent +
            (isRoot ? "\tCHANNELS 6 Xposition Yposition Zposition Zrotation Xrotation Yrotation\n"
                    : "\tCHANNELS 3 Zrotation Xrotation Yrotation\n");
    if (Length(skeleton[id].end) > 0) AppendEndSite(text, indent + '\t', skeleton[id].end);
}

void AppendHierarchy(std::string& text, const Skeleton& skeleton) {
    text += "HIERARCHY\n";
    // The ids of the joints whose closing brace is still missing. The root is the first.
    std::vector<std::size_t> open;
    const auto close = [&] {
        open.pop_back();
        text += std::string(open.size(), '\t') + "}\n";
    };
    for (std::size_t id = 0; id < skeleton.size(); ++id) {
        while (!open.empty() && open.back() != skeleton[id].parent)
            close();
        OpenJoint(text, skeleton, id, open.size());
        open.push_back(id);
    }
    while (!open.empty())
        close();
}

void AppendFrame(std::string& text, const Pose& pose) {
    const std::size_t start = text.size();
    AppendVector(text, pose.hips);
    for (const Rotation& local : pose.local) {
        const Vec3 angles = AnglesZxy(local);
        AppendVector(text, {angles.z, angles.x, angles.y});
    }
    text.erase(start, 1);
    text += '\n';
}

}  // namespace

std::string WriteBvh(const Skeleton& skeleton, const std::vector<Pose>& poses) {
    std::string text;
    AppendHierarchy(text, skeleton);
    text += "MOTION\nFrames: " + std::to_string(poses.size()) + "\nFrame Time: ";
    // A reader computes the rate from this time. With ten digits after the decimal point, the
    // error of the rate is less than 1e-6 frames per second.
    AppendNumber(text, 1.0 / kFramesPerSecond, 10);
    text += '\n';
    for (const Pose& pose : poses)
        AppendFrame(text, pose);
    return text;
}

}  // namespace examples
