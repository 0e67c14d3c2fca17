#include "tests/support/chain_prediction.h"

#include <algorithm>

namespace support {
namespace {

struct Node {
    int children = 0;
    int rigidChildren = 0;
    bool zeroOffset = false;
    bool hasPosition = false;
    bool IsDetached() const { return zeroOffset || hasPosition; }
    // Whether the joint is inside a chain, not at its end.
    bool IsInside() const { return children == 1 && rigidChildren > 0; }
};

std::vector<Node> CollectNodes(const WalkFile& file) {
    std::vector<Node> nodes(file.joints.size());
    for (std::size_t j = 0; j < nodes.size(); ++j) {
        const WalkJoint& joint = file.joints[j];
        nodes[j].zeroOffset = joint.offset == Vec3{};
        nodes[j].hasPosition =
            std::any_of(joint.channels.begin(), joint.channels.end(),
                        [](const std::string& channel) { return channel.substr(1) == "position"; });
        if (joint.parent < 0) continue;
        Node& parent = nodes[static_cast<std::size_t>(joint.parent)];
        ++parent.children;
        if (!nodes[j].zeroOffset) ++parent.rigidChildren;
    }
    return nodes;
}

// The joints of the chain that ends at `last`, from there upwards.
std::vector<std::size_t> ChainOf(const WalkFile& file, const std::vector<Node>& nodes,
                                 std::size_t last) {
    std::vector<std::size_t> chain{last};
    for (int p = file.joints[last].parent; p >= 0;
         p = file.joints[static_cast<std::size_t>(p)].parent) {
        const Node& parent = nodes[static_cast<std::size_t>(p)];
        if (parent.children > 1 || parent.rigidChildren == 0) break;
        chain.push_back(static_cast<std::size_t>(p));
        if (parent.IsDetached()) break;
    }
    return chain;
}

}  // namespace

std::vector<JointPrediction> PredictChains(const WalkFile& file, bool chainFromParent) {
    const std::vector<Node> nodes = CollectNodes(file);
    std::vector<JointPrediction> joints(nodes.size());
    for (std::size_t j = 0; j < nodes.size(); ++j) {
        if (nodes[j].IsInside()) continue;
        const auto chain = ChainOf(file, nodes, j);
        for (const std::size_t member : chain)
            joints[member].isInChain = true;
        const bool singleBone =
            !nodes[j].IsDetached() && chainFromParent && file.joints[j].parent >= 0;
        const bool isBone = chain.size() > 1 || singleBone;
        joints[j].hasNoObject = isBone && nodes[j].children == 0 && !nodes[j].IsDetached();
        if (isBone && nodes[j].hasPosition && !nodes[j].zeroOffset)
            joints[j].setApart = "the last joint of a chain has an offset and position channels";
    }
    for (std::size_t j = 0; j < nodes.size(); ++j) {
        if (!joints[j].isInChain) {
            joints[j].hasNoObject = true;
            joints[j].setApart = "the joint has no object";
        }
        const int parent = file.joints[j].parent;
        if (parent >= 0 && joints[j].setApart.empty())
            joints[j].setApart = joints[static_cast<std::size_t>(parent)].setApart;
    }
    return joints;
}

bool PredictFailure(const WalkFile& file, const std::vector<JointPrediction>& joints) {
    for (std::size_t j = 0; j < joints.size(); ++j)
        if (joints[j].hasNoObject && !file.joints[j].channels.empty()) return true;
    return false;
}

}  // namespace support
