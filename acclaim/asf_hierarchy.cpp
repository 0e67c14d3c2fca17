// Parses the hierarchy of the bones. The file may name bones in any order and more than once. It
// may even make a bone its own ancestor.
#include <new>

#include "acclaim/acclaim_parser.h"
#include "host/status.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using namespace Zelk::status;

namespace {

// A bone that is shorter than this is treated as a point.
constexpr double kShortestBone = 0.01;

// Moves the node to the end of the bone.
void MoveToEnd(const MOCAPMODEL& bone, MOCAPMODEL& node) {
    for (int axis = 0; axis < 3; ++axis) {
        node.offset[axis] = bone.direction[axis] * bone.length;
        node.globalPosition[axis] = bone.globalPosition[axis] + node.offset[axis];
    }
}

}  // namespace

// hierarchy = "begin" { line } "end"
// A `line` ends at the end of the file's line in which its parent is. The next `line`, or "end",
// must therefore begin on a later line of the file. Only the first of them may follow "begin" in
// the same line.
std::int32_t AcclaimParser::HandleHierarchy() {
    const char* token = GetNextAccString();
    if (token == nullptr || !EqualsIgnoringCase(token, "begin"))
        return Fail(kInvalidData, L"Expected 'begin' keyword for :hierarchy");
    for (bool isFirst = true;; isFirst = false) {
        token = GetNextAccString();
        if (token == nullptr) return Fail(kUnexpectedEnd, L"Unexpected end of file");
        if (EqualsIgnoringCase(token, "end")) return EndLeaves();
        if (isFirst && !EqualsIgnoringCase(token, "root")) {
            const std::int32_t status = RenameRoot(token);
            if (status < 0) return status;
        }
        const std::int32_t status = ParseHierarchyLine(token);
        if (status < 0) return status;
    }
}

// Renames the root to `token`, the first word of the first line of the hierarchy.
std::int32_t AcclaimParser::RenameRoot(const char* token) {
    MOCAPMODEL* const root = FindModelByName("root");
    if (root == nullptr) return Fail(kFail, L"Root node cannot be found");
    const std::uint32_t number = names.Find("root");
    names.RemoveFirst("root");
    root->name = CopyText(token);
    if (!root->name) return FailForMemory();
    names.Add(token, number);
    return kOk;
}

// line = parent { child }
std::int32_t AcclaimParser::ParseHierarchyLine(const char* token) {
    MOCAPMODEL* const parent = FindModelByName(token);
    if (parent == nullptr) return Fail(kFail, L"Bone/Root referenced cannot be found");
    const std::uint32_t line = stringFile.GetCurrentLine();
    for (;;) {
        const std::uint32_t position = stringFile.GetPosition();
        token = GetNextAccString();
        if (token == nullptr) return kOk;
        if (stringFile.GetCurrentLine() != line) {
            stringFile.SetPosition(position);
            return kOk;
        }
        MOCAPMODEL* const child = FindModelByName(token);
        if (child == nullptr) return Fail(kFail, L"Bone referenced cannot be found");
        AttachChild(*parent, *child);
    }
}

void AcclaimParser::AttachChild(MOCAPMODEL& parent, MOCAPMODEL& child) {
    child.parent = &parent;
    if (parent.length < kShortestBone) child.isDetached = true;
    ++parent.childCount;
    if (!child.isDetached) ++parent.boneChildCount;
    child.depth = parent.depth + 1;
    MoveToEnd(parent, child);
}

// Adds a child node at the end of every leaf that is at least kShortestBone long. Marks shorter
// leaves as detached, which means that no rigid bone joins them to their parent. Skips the nodes
// that an earlier call has already examined.
std::int32_t AcclaimParser::EndLeaves() {
    std::vector<std::unique_ptr<MOCAPMODEL>> ends;
    for (; settledNodes < skeleton.models.size(); ++settledNodes) {
        MOCAPMODEL& leaf = *skeleton.models[settledNodes];
        if (leaf.childCount != 0) continue;
        if (leaf.length < kShortestBone) {
            leaf.isDetached = true;
            continue;
        }
        std::unique_ptr<MOCAPMODEL> end(new (std::nothrow) MOCAPMODEL);
        if (!end) return kOutOfMemory;
        end->name = CopyText(leaf.name.get(), "_End");
        if (!end->name) return kOutOfMemory;
        end->parent = &leaf;
        end->depth = leaf.depth + 1;
        MoveToEnd(leaf, *end);
        ++leaf.childCount;
        ++leaf.boneChildCount;
        ends.push_back(std::move(end));
    }
    for (auto& end : ends)
        skeleton.models.push_back(std::move(end));
    return kOk;
}
