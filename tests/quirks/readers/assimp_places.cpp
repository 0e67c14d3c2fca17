// Where Assimp has the joints of a BVH file, as one line of JSON.
// usage: assimp_places FILE | --version
#include <algorithm>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <assimp/version.h>
#include <cmath>
#include <cstdio>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace {

using Channels = std::unordered_map<std::string, const aiNodeAnim*>;

std::string Quoted(std::string_view text) {
    std::string result = "\"";
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        if (letter == '"' || letter == '\\') result += '\\';
        if (byte < 0x20) {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\u%04x", byte);
            result += escape;
        } else {
            result += letter;
        }
    }
    return result + '"';
}

// A value that is none becomes null.
void PrintNumber(float value) {
    if (std::isfinite(value)) {
        std::printf("%.9g", static_cast<double>(value));
    } else {
        std::printf("null");
    }
}

struct Joint {
    const aiNode* node;
    std::size_t parent;  // its own index for the root
};

// Parents come first; no recursion, since the file decides the depth.
std::vector<Joint> JointsOf(const aiNode& root) {
    std::vector<Joint> joints = {{&root, 0}};
    for (std::size_t index = 0; index < joints.size(); ++index) {
        const aiNode& node = *joints[index].node;
        for (unsigned child = 0; child < node.mNumChildren; ++child)
            joints.push_back({node.mChildren[child], index});
    }
    return joints;
}

aiMatrix4x4 LocalAt(const aiNode& node, const Channels& channels, unsigned frame) {
    const auto found = channels.find(node.mName.C_Str());
    if (found == channels.end()) return node.mTransformation;
    aiVector3D scaling;
    aiVector3D position;
    aiQuaternion rotation;
    node.mTransformation.Decompose(scaling, rotation, position);
    const aiNodeAnim& channel = *found->second;
    if (channel.mNumPositionKeys > 0)
        position = channel.mPositionKeys[frame < channel.mNumPositionKeys ? frame : 0].mValue;
    if (channel.mNumRotationKeys > 0)
        rotation = channel.mRotationKeys[frame < channel.mNumRotationKeys ? frame : 0].mValue;
    return aiMatrix4x4(aiVector3D(1, 1, 1), rotation, position);
}

void PrintFrame(const std::vector<Joint>& joints, const Channels& channels, unsigned frame) {
    std::vector<aiMatrix4x4> worlds;
    worlds.reserve(joints.size());
    std::printf("[");
    for (std::size_t index = 0; index < joints.size(); ++index) {
        const aiMatrix4x4 local = LocalAt(*joints[index].node, channels, frame);
        worlds.push_back(index == 0 ? local : worlds[joints[index].parent] * local);
        std::printf(index == 0 ? "[" : ",[");
        PrintNumber(worlds.back().a4);
        std::printf(",");
        PrintNumber(worlds.back().b4);
        std::printf(",");
        PrintNumber(worlds.back().c4);
        std::printf("]");
    }
    std::printf("]");
}

void PrintScene(const aiScene& scene) {
    const std::vector<Joint> joints = JointsOf(*scene.mRootNode);
    Channels channels;
    unsigned frames = 0;
    if (scene.mNumAnimations > 0) {
        const aiAnimation& animation = *scene.mAnimations[0];
        for (unsigned index = 0; index < animation.mNumChannels; ++index) {
            const aiNodeAnim* channel = animation.mChannels[index];
            channels[channel->mNodeName.C_Str()] = channel;
            frames = std::max({frames, channel->mNumRotationKeys, channel->mNumPositionKeys});
        }
    }
    std::printf("{\"joints\": [");
    for (std::size_t index = 0; index < joints.size(); ++index)
        std::printf("%s%s", index == 0 ? "" : ", ",
                    Quoted(joints[index].node->mName.C_Str()).c_str());
    std::printf("], \"frames\": [");
    for (unsigned frame = 0; frame < frames; ++frame) {
        if (frame > 0) std::printf(",");
        PrintFrame(joints, channels, frame);
    }
    std::printf("]}\n");
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: assimp_places FILE | --version\n");
        return 2;
    }
    std::printf("ANSWER ");
    if (std::string_view(argv[1]) == "--version") {
        std::printf("{\"version\": \"%u.%u.%u\"}\n", aiGetVersionMajor(), aiGetVersionMinor(),
                    aiGetVersionPatch());
        return 0;
    }
    Assimp::Importer importer;
    const aiScene* scene = importer.ReadFile(argv[1], 0);
    if (scene && scene->mRootNode) {
        PrintScene(*scene);
    } else {
        std::printf("{\"error\": %s}\n", Quoted(importer.GetErrorString()).c_str());
    }
    return 0;
}
