// Parses BVH files, with one function for each production of the grammar. Keywords are separated by
// white space. Upper and lower case of keywords are not distinguished. Nested nodes are parsed in a
// loop, because a file with very deep nesting would overflow the stack of a recursion.
#include "bvh/bvh_parser.h"

#include <cstring>

#include "host/status.h"
#include "mocap/parse_status.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using namespace Zelk::status;

namespace {

constexpr int kMaxChannels = 6;

struct ChannelName {
    const char* name;
    std::uint8_t type;
};
constexpr ChannelName kChannelNames[] = {
    {"Xposition", kPositionX}, {"Yposition", kPositionY}, {"Zposition", kPositionZ},
    {"Xrotation", kRotationX}, {"Yrotation", kRotationY}, {"Zrotation", kRotationZ},
};

std::uint8_t ChannelTypeOf(const char* token) {
    if (token == nullptr) return kEmptySlot;
    for (const ChannelName& channel : kChannelNames)
        if (EqualsIgnoringCase(token, channel.name)) return channel.type;
    return kEmptySlot;
}

}  // namespace

void BvhParser::Reset() {
    ForgetError();
    bracketDepth = 0;
    keySlots.clear();
    frameTime = 0.0;
}

bool BvhParser::ConsumeKeyword(const char* keyword) {
    const char* const token = stringFile.GetNextString();
    return token != nullptr && EqualsIgnoringCase(token, keyword);
}

// hierarchy = { node | "}" } ( "MOTION" | end of file )
// node      = ( "ROOT" | "JOINT" ) name body | "End" "Site" body
std::int32_t BvhParser::ParseHierarchy(MOCAPMODEL* current) {
    for (;;) {
        const char* const token = stringFile.GetNextString();
        std::int32_t status = kOk;
        if (token == nullptr) {
            if (bracketDepth == 0) return mocap::kEndOfFile;
            return Fail(kUnexpectedEnd, L"Unexpected end of file");
        }
        if (std::strcmp(token, "}") == 0) {
            if (current == nullptr || bracketDepth == 0)
                return Fail(kInvalidData, L"Too many closing brackets '}'");
            current = current->parent;
            --bracketDepth;
        } else if (EqualsIgnoringCase(token, "MOTION")) {
            return kOk;
        } else if (EqualsIgnoringCase(token, "ROOT") || EqualsIgnoringCase(token, "JOINT")) {
            status = ParseNode(NodeKind::Joint, current);
        } else if (EqualsIgnoringCase(token, "End") && ConsumeKeyword("Site")) {
            status = ParseNode(NodeKind::EndSite, current);
        } else {
            return Fail(kInvalidData, L"Invalid BVH token found");
        }
        if (status < 0) return status;
    }
}

// body = "{" "OFFSET" x y z [ "CHANNELS" count { channel } ]
// The new node becomes `current`. It stays `current` until ParseHierarchy reads the matching "}",
// except while its child nodes are parsed.
std::int32_t BvhParser::ParseNode(NodeKind kind, MOCAPMODEL*& current) {
    MOCAPMODEL* const node = AppendNode();
    if (node == nullptr) return kOutOfMemory;
    node->parent = current;
    std::int32_t status = ParseName(kind, *node);
    if (status < 0) return status;
    if (!ConsumeKeyword("{")) return Fail(kInvalidData, L"Expected '{' token");
    ++bracketDepth;
    status = ParseOffset(*node);
    if (status < 0) return status;
    AttachToParent(*node);
    current = node;

    const char* const next = stringFile.PeekNextString();
    if (next == nullptr || !EqualsIgnoringCase(next, "CHANNELS")) return kOk;
    return ParseChannels(*node);
}

// name = token
// An end site has no name in the file. Its name is made from its parent's name.
std::int32_t BvhParser::ParseName(NodeKind kind, MOCAPMODEL& node) {
    if (kind == NodeKind::EndSite) {
        node.isEndSite = true;
        if (!AllowsEndSiteName(node.parent)) return FailForDerivedNames();
        node.name = EndSiteName(node.parent);
    } else {
        const char* const token = stringFile.GetNextString();
        if (token == nullptr) return Fail(kUnexpectedEnd, L"Unexpected end of file");
        node.name = CopyText(token);
    }
    if (!node.name) return FailForMemory();
    return kOk;
}

// The name of an end site contains its parent's name. If end sites are nested, or if many end sites
// have a parent with a long name, their names may need far more memory than the file has bytes. The
// file may therefore use only a limited number of characters for names that are made from other
// names. If there is a parent, this function takes the length of its name from that number. Returns
// false if not enough is left.
bool BvhParser::AllowsEndSiteName(const MOCAPMODEL* parent) {
    return parent == nullptr || allowances.derivedNames.Reserve(std::strlen(parent->name.get()));
}

// Returns null when memory runs out.
std::unique_ptr<char[]> BvhParser::EndSiteName(const MOCAPMODEL* parent) {
    return parent == nullptr ? CopyText("End_Site") : CopyText(parent->name.get(), "_End");
}

// "OFFSET" x y z
std::int32_t BvhParser::ParseOffset(MOCAPMODEL& node) {
    static constexpr const wchar_t* kExpected[] = {L"Expected a float value for OFFSET x",
                                                   L"Expected a float value for OFFSET y",
                                                   L"Expected a float value for OFFSET z"};
    if (!ConsumeKeyword("OFFSET")) return Fail(kInvalidData, L"Expected 'OFFSET' token");
    for (int axis = 0; axis < 3; ++axis)
        if (!stringFile.GetNextFloat(node.offset[axis])) return Fail(kInvalidData, kExpected[axis]);
    node.isDetached = node.offset[0] == 0.0 && node.offset[1] == 0.0 && node.offset[2] == 0.0;
    return kOk;
}

void BvhParser::AttachToParent(MOCAPMODEL& node) {
    for (int axis = 0; axis < 3; ++axis)
        node.globalPosition[axis] = node.offset[axis];
    if (node.parent == nullptr) return;
    ++node.parent->childCount;
    // A node is detached if its offset is zero or if it has position channels. Its channels are
    // parsed after this point, so only a zero offset affects this count.
    if (!node.isDetached) ++node.parent->boneChildCount;
    node.depth = node.parent->depth + 1;
    for (int axis = 0; axis < 3; ++axis)
        node.globalPosition[axis] = node.parent->globalPosition[axis] + node.offset[axis];
}

// "CHANNELS" count { channel }
std::int32_t BvhParser::ParseChannels(MOCAPMODEL& node) {
    stringFile.GetNextString();
    int count = 0;
    if (!stringFile.GetNextInt(count))
        return Fail(kInvalidData, L"Expected an integer value for CHANNELS count");
    if (count > kMaxChannels)
        return Fail(kInvalidData, L"CHANNELS count exceeds maximum supported set (6)");
    for (; count > 0; --count) {
        const std::int32_t status = ParseChannel(node);
        if (status < 0) return status;
    }
    return kOk;
}

std::int32_t BvhParser::ParseChannel(MOCAPMODEL& node) {
    const std::uint8_t type = ChannelTypeOf(stringFile.GetNextString());
    if (type == kEmptySlot) return Fail(kInvalidData, L"Unsupported animation CHANNEL");
    if (FindChannel(node, type) != nullptr)
        return Fail(kInvalidData, L"Animation CHANNEL defined more than once for the same model");
    CHANNELS& slot = *FindChannel(node, kEmptySlot);
    slot.type = type;
    if (IsPosition(type)) node.isDetached = true;
    keySlots.push_back(&slot.keys);
    ++skeleton.channelCount;
    return kOk;
}
