// Assimp reads the exported files and finds every joint at the same position as the host.
#include <assimp/Importer.hpp>
#include <assimp/postprocess.h>
#include <assimp/scene.h>
#include <cmath>
#include <gtest/gtest.h>
#include <unordered_map>

#include "tests/export/exported.h"
#include "tests/support/math.h"

namespace {

// The greatest distance, as a fraction of the skeleton's size. Assimp stores numbers in 32 bits.
constexpr double kBound = 1e-4;
constexpr std::size_t kFrames = 20;

using Channels = std::unordered_map<std::string, const aiNodeAnim*>;

Channels ChannelsOf(const aiScene& scene) {
    Channels channels;
    for (unsigned index = 0; index < scene.mAnimations[0]->mNumChannels; ++index) {
        const aiNodeAnim* channel = scene.mAnimations[0]->mChannels[index];
        channels[channel->mNodeName.C_Str()] = channel;
    }
    return channels;
}

// The key of that frame. A property that does not change has one key for all frames.
template <class Key>
const Key& KeyAt(const Key* keys, unsigned count, std::size_t frame) {
    return keys[count == 1 ? 0 : frame];
}

aiMatrix4x4 LocalAt(const aiNode& node, const Channels& channels, std::size_t frame) {
    const auto found = channels.find(node.mName.C_Str());
    if (found == channels.end()) return node.mTransformation;
    aiVector3D scaling;
    aiVector3D position;
    aiQuaternion rotation;
    node.mTransformation.Decompose(scaling, rotation, position);
    const aiNodeAnim& channel = *found->second;
    if (channel.mNumPositionKeys > 0)
        position = KeyAt(channel.mPositionKeys, channel.mNumPositionKeys, frame).mValue;
    if (channel.mNumRotationKeys > 0)
        rotation = KeyAt(channel.mRotationKeys, channel.mNumRotationKeys, frame).mValue;
    return aiMatrix4x4(aiVector3D(1, 1, 1), rotation, position);
}

// End sites have no names in a BVH file. Assimp names them differently from the host.
const aiNode* NodeOf(const aiScene& scene, const std::string& name) {
    const aiNode* node = scene.mRootNode->FindNode(name.c_str());
    if (node || !name.ends_with("_End")) return node;
    return scene.mRootNode->FindNode(("EndSite_" + name.substr(0, name.size() - 4)).c_str());
}

// The greatest distance between Assimp's and the host's position of a joint, as a fraction of the
// skeleton's size.
double WorstDistance(const aiScene& scene, const exported::Take& take) {
    const Channels channels = ChannelsOf(scene);
    double worst = 0.0;
    for (std::size_t sample = 0; sample < kFrames; ++sample) {
        const std::size_t frame = sample * (take.positions.size() - 1) / (kFrames - 1);
        for (std::size_t joint = 0; joint < take.names.size(); ++joint) {
            const aiNode* node = NodeOf(scene, take.names[joint]);
            if (!node) return NAN;
            aiMatrix4x4 global;
            for (; node; node = node->mParent)
                global = LocalAt(*node, channels, frame) * global;
            const support::Vec3 read = {global.a4, global.b4, global.c4};
            const double distance = support::Distance(read, take.positions[frame][joint]);
            if (!(distance <= worst)) worst = distance;
        }
    }
    return worst / take.size;
}

struct Row {
    const char* name;
    std::size_t sample;
    bool nulls;
    bool mesh;
    const char* extension;
};

// Without this, the name of the test would contain the bytes of the row.
std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const Row kRows[] = {
    {"GlbOfBiovisionNulls", 0, true, true, "glb"}, {"GlbOfBiovisionBones", 0, false, true, "glb"},
    {"GlbOfAcclaimNulls", 1, true, true, "glb"},   {"GlbOfAcclaimBones", 1, false, true, "glb"},
    {"GlbWithoutMesh", 0, true, false, "glb"},     {"BvhOfBiovisionNulls", 0, true, true, "bvh"},
    {"BvhOfAcclaimBones", 1, false, true, "bvh"},
};

class AssimpReader : public testing::TestWithParam<Row> {};

TEST_P(AssimpReader, FindsEveryJointAtTheHostsPosition) {
    const Row& row = GetParam();
    ASSERT_TRUE(exported::Import(exported::Samples()[row.sample], {.nulls = row.nulls}));
    const std::string extension = std::string(".") + row.extension;
    const std::string bytes = exported::Export(extension, {.mesh = row.mesh});
    Assimp::Importer importer;
    const aiScene* scene =
        importer.ReadFileFromMemory(bytes.data(), bytes.size(), 0, row.extension);
    ASSERT_TRUE(scene) << importer.GetErrorString();
    ASSERT_EQ(scene->mNumAnimations, 1u);
    EXPECT_LE(WorstDistance(*scene, exported::RecordAll().front()), kBound);
}

INSTANTIATE_TEST_SUITE_P(, AssimpReader, testing::ValuesIn(kRows),
                         [](const auto& row) { return std::string(row.param.name); });

}  // namespace
