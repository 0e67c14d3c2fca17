#include "export/file_match.h"

#include <optional>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "export/object_names.h"
#include "headless/text.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

using headless::ObjectType;

// The host appends numbers to names. At most this many numbers are tried for one joint, so that a
// file with very many equal names cannot make the search slow.
constexpr std::size_t kMostNumbers = 1000;

// Returns the name without the digits at its end.
std::wstring StemOf(std::wstring_view name) {
    return std::wstring(name.substr(0, name.find_last_not_of(L"0123456789") + 1));
}

class FileMatcher {
  public:
    FileMatcher(const FileSkeleton& file, const std::vector<Joint>& joints)
        : file_(file), joints_(joints), effectors_(joints.size() + 1) {
        for (std::size_t joint = joints.size(); joint-- > 0;) {
            const headless::Object& object = *joints[joint].object;
            if (object.type == ObjectType::ChainEffector)
                effectors_[SlotOf(joints[joint].parent)].push_back(joint);
            else {
                jointOf_.emplace(headless::View(object.name), joint);
                stems_.insert(StemOf(headless::View(object.name)));
            }
        }
        hasChildren_.assign(file.size(), false);
        for (const FileJoint& joint : file)
            if (joint.parent != FileJoint::kNoParent) hasChildren_[joint.parent] = true;
    }

    // Returns for each joint of the file the index of its joint in the scene.
    std::optional<std::vector<std::size_t>> Match() {
        std::vector<std::size_t> matches;
        for (std::size_t index = 0; index < file_.size(); ++index) {
            const std::size_t above = file_[index].parent;
            const std::size_t parent =
                above == FileJoint::kNoParent ? Joint::kNoParent : matches[above];
            std::optional<std::size_t> match = FindByName(index, parent);
            if (!match && !hasChildren_[index]) match = NextEffector(parent);
            if (!match) return std::nullopt;
            matches.push_back(*match);
        }
        // What is left may only be end sites that were added to build bones.
        return jointOf_.empty() ? std::optional(matches) : std::nullopt;
    }

  private:
    // The index in effectors_ for the children of `parent`.
    std::size_t SlotOf(std::size_t parent) const {
        return parent == Joint::kNoParent ? joints_.size() : parent;
    }

    // The object of a joint has the joint's name, perhaps with a number after it.
    std::optional<std::size_t> FindByName(std::size_t index, std::size_t parent) {
        const std::wstring name = text::DecodeUtf8(file_[index].name);
        if (!stems_.contains(StemOf(name))) return std::nullopt;
        std::size_t& next = next_[name];
        // The host gives numbers in the order in which it creates objects, which mostly is the
        // order of the file. So the search begins after the number that was found last.
        for (std::size_t tried = 0; tried < 2 * kMostNumbers; ++tried) {
            const std::size_t number = tried < kMostNumbers ? next + tried : tried - kMostNumbers;
            const auto found = jointOf_.find(number == 0 ? name : name + std::to_wstring(number));
            if (found == jointOf_.end() || joints_[found->second].parent != parent) continue;
            const std::size_t joint = found->second;
            jointOf_.erase(found);
            next = number + 1;
            return joint;
        }
        return std::nullopt;
    }

    // A joint at the end of a chain may have no object of its own. It is at the chain's effector.
    std::optional<std::size_t> NextEffector(std::size_t parent) {
        std::vector<std::size_t>& effectors = effectors_[SlotOf(parent)];
        if (effectors.empty()) return std::nullopt;
        const std::size_t joint = effectors.back();
        effectors.pop_back();
        return joint;
    }

    const FileSkeleton& file_;
    const std::vector<Joint>& joints_;
    // The joints that have no match yet. Those that are effectors are listed by their parents, the
    // last one first; the others by the names of their objects, which are unique in a model.
    std::vector<std::vector<std::size_t>> effectors_;
    std::unordered_map<std::wstring, std::size_t> jointOf_;
    // The names of all objects that are not effectors, without numbers. Most end sites of bones
    // have no object, and this tells it at once.
    std::unordered_set<std::wstring> stems_;
    std::unordered_map<std::wstring, std::size_t> next_;  // by name, the first number to try
    std::vector<bool> hasChildren_;                       // for each joint of the file
};

// Returns the indexes of the file's joints in depth-first order.
std::vector<std::size_t> DepthFirst(const FileSkeleton& file) {
    std::vector<std::vector<std::size_t>> children(file.size());
    std::vector<std::size_t> pending;
    for (std::size_t index = file.size(); index-- > 0;)
        (file[index].parent == FileJoint::kNoParent ? pending : children[file[index].parent])
            .push_back(index);
    std::vector<std::size_t> order;
    while (!pending.empty()) {
        const std::size_t next = pending.back();
        pending.pop_back();
        order.push_back(next);
        pending.insert(pending.end(), children[next].begin(), children[next].end());
    }
    return order;
}

std::vector<std::wstring> UniqueNames(const FileSkeleton& file, std::wstring_view modelName) {
    NameSet used;
    used.Add(std::wstring(modelName));
    std::vector<std::wstring> names;
    for (const FileJoint& joint : file)
        names.push_back(used.Add(text::DecodeUtf8(joint.name)));
    return names;
}

}  // namespace

bool MatchFile(const FileSkeleton& file, std::wstring_view modelName, std::vector<Joint>& joints) {
    const auto matches = FileMatcher(file, joints).Match();
    if (!matches) return false;
    const std::vector<std::wstring> names = UniqueNames(file, modelName);
    std::vector<Joint> ordered;
    std::vector<std::size_t> newIndex(file.size());
    for (const std::size_t index : DepthFirst(file)) {
        newIndex[index] = ordered.size();
        Joint joint = joints[(*matches)[index]];
        joint.name = names[index];
        joint.sourceName = text::DecodeUtf8(file[index].name);
        joint.isEndSite = file[index].isEndSite;
        joint.isLeaf = true;
        if (file[index].parent != FileJoint::kNoParent) {
            joint.parent = newIndex[file[index].parent];
            ordered[joint.parent].isLeaf = false;
        }
        ordered.push_back(std::move(joint));
    }
    joints = std::move(ordered);
    return true;
}

}  // namespace exporters
