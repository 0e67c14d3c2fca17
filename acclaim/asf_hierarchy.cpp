// Which bone hangs on which. The file may name them in any order, repeatedly and in circles.
#include <new>

#include "acclaim/acclaim_import.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using namespace Zelk::status;

namespace {

// A bone shorter than this ends where it starts.
constexpr double kShortestBone = 0.01;

// From the node to the end of its bone.
void PlaceAtEnd(const MOCAPMODEL& bone, MOCAPMODEL& node) {
    for (int axis = 0; axis < 3; ++axis) {
        node.offset[axis] = bone.direction[axis] * bone.length;
        node.globalPosition[axis] = bone.globalPosition[axis] + node.offset[axis];
    }
}

}  // namespace

// hierarchy = "begin" { line } "end"; each line ends where the file's does
std::int32_t CAcclaimImport::HandleHierarchy() {
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

// The root is called what the first line calls it.
std::int32_t CAcclaimImport::RenameRoot(const char* token) {
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
std::int32_t CAcclaimImport::ParseHierarchyLine(const char* token) {
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

void CAcclaimImport::AttachChild(MOCAPMODEL& parent, MOCAPMODEL& child) {
    child.parent = &parent;
    if (parent.length < kShortestBone) child.isDetached = true;
    ++parent.childCount;
    if (!child.isDetached) ++parent.boneChildCount;
    child.depth = parent.depth + 1;
    PlaceAtEnd(parent, child);
}

// Every leaf that is long enough gets a node at its end. Looks at the nodes that were added since
// the section before: what the others lack they keep lacking.
std::int32_t CAcclaimImport::EndLeaves() {
    std::vector<std::unique_ptr<MOCAPMODEL>> ends;
    for (; settledNodes < models.size(); ++settledNodes) {
        MOCAPMODEL& leaf = *models[settledNodes];
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
        PlaceAtEnd(leaf, *end);
        ++leaf.childCount;
        ++leaf.boneChildCount;
        ends.push_back(std::move(end));
    }
    for (auto& end : ends)
        models.push_back(std::move(end));
    return kOk;
}
