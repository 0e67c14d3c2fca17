#include "survey/bvh_indentation.h"

#include <algorithm>
#include <string>
#include <vector>

#include "survey/bvh_hierarchy_reader.h"
#include "survey/codes.h"

namespace survey {
namespace {

// The most joints that a message names.
constexpr std::size_t kMostNamed = 8;

// Returns, for each joint, the index of its last descendant plus 1. A joint without descendants has
// its own index plus 1.
std::vector<std::uint32_t> SubtreeEnds(const std::vector<BvhJoint>& joints) {
    std::vector<std::uint32_t> ends(joints.size(), 0);
    for (std::size_t i = joints.size(); i-- > 0;) {
        if (ends[i] == 0) ends[i] = static_cast<std::uint32_t>(i) + 1;
        const std::uint32_t parent = joints[i].parent;
        if (parent != kNoParent && ends[parent] < ends[i]) ends[parent] = ends[i];
    }
    return ends;
}

// Returns the parent of each joint by indentation. Returns an empty list if the indentation of a
// joint is not known.
std::vector<std::uint32_t> ParentsByIndentation(const std::vector<BvhJoint>& joints) {
    std::vector<std::uint32_t> parents;
    parents.reserve(joints.size());
    std::vector<std::uint32_t> open;
    for (std::uint32_t i = 0; i < joints.size(); ++i) {
        if (joints[i].indentation < 0) return {};
        while (!open.empty() && joints[open.back()].indentation >= joints[i].indentation)
            open.pop_back();
        parents.push_back(open.empty() ? kNoParent : open.back());
        if (!joints[i].isEndSite) open.push_back(i);
    }
    return parents;
}

// Whether the parents by indentation fit the braces that exist. Each of these parents must be the
// joint's parent by braces, or an ancestor of that parent.
bool IndentationFits(const std::vector<BvhJoint>& joints,
                     const std::vector<std::uint32_t>& parents) {
    if (parents.empty()) return false;
    const std::vector<std::uint32_t> ends = SubtreeEnds(joints);
    for (std::uint32_t i = 0; i < joints.size(); ++i) {
        const std::uint32_t parent = parents[i];
        const std::uint32_t byBraces = joints[i].parent;
        if (parent == byBraces) continue;
        // Only a joint with the keyword ROOT may have no parent.
        const bool isAbove = parent == kNoParent ? joints[i].isRoot
                                                 : byBraces != kNoParent && parent <= byBraces &&
                                                       byBraces < ends[parent];
        if (!isAbove) return false;
    }
    return true;
}

std::string OpenJoints(const BvhSection& section) {
    std::string names;
    std::size_t named = 0;
    for (const BvhJoint& joint : section.joints) {
        if (joint.end.at != nullptr) continue;
        if (++named > kMostNamed) continue;
        names += (named > 1 ? ", " : "") + JointLabel(section, joint) + " (line " +
                 std::to_string(joint.brace.line) + ")";
    }
    if (named > kMostNamed) names += " and " + std::to_string(named - kMostNamed) + " more";
    return names;
}

}  // namespace

void CloseOpenBraces(BvhSection& section, FindingList& findings) {
    if (section.bracesOpen == 0) return;
    const std::vector<std::uint32_t> parents = ParentsByIndentation(section.joints);
    const bool fits = IndentationFits(section.joints, parents);
    const auto first = std::find_if(section.joints.begin(), section.joints.end(),
                                    [](const BvhJoint& joint) { return joint.end.at == nullptr; });
    if (first == section.joints.end()) return;
    findings.Add({codes::kBracesOpen, Severity::Warning, first->brace.at,
                  "braces that are never closed: " + OpenJoints(section) +
                      (fits ? "; parents are told by indentation" : "; they are closed at MOTION"),
                  first->name, true});
    if (!fits) return;
    for (BvhJoint& joint : section.joints)
        joint.hasJoints = false;
    for (std::uint32_t i = 0; i < section.joints.size(); ++i) {
        section.joints[i].parent = parents[i];
        if (parents[i] != kNoParent) section.joints[parents[i]].hasJoints = true;
    }
}

}  // namespace survey
