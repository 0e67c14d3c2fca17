// While a motion is exported, its keys and the exporter's memory together need at most three times
// the memory of the keys.
#include <cstdlib>
#include <gtest/gtest.h>
#include <string_view>
#include <unordered_set>

#include "tests/export/exported.h"
#include "tests/support/memory/new_operators.h"
#include "tests/support/temporary_folder.h"

namespace {

constexpr int kFrames = 20'000;
constexpr int kJoints = 24;
// Memory in bytes that does not grow with the motion: the pieces on which threads work, the buffers
// of the outputs, and some more.
constexpr std::size_t kFixed = std::size_t{4} << 20U;

// A BVH file with a chain of joints that have the given channels. With one channel for each joint,
// the output is largest compared with the keys.
std::string Hinges(const char* channels) {
    std::string text = "HIERARCHY\nROOT J0\n{\nOFFSET 0 0 0\nCHANNELS " + std::string(channels);
    for (int joint = 1; joint < kJoints; ++joint)
        text += "\nJOINT J" + std::to_string(joint) + "\n{\nOFFSET 0 1 0\nCHANNELS " + channels;
    text += "\nEnd Site\n{\nOFFSET 0 1 0\n}";
    for (int joint = 0; joint < kJoints; ++joint)
        text += "\n}";
    text += "\nMOTION\nFrames: " + std::to_string(kFrames) + "\nFrame Time: 0.01\n";
    for (int frame = 0; frame < kFrames; ++frame) {
        for (int value = 0; value < kJoints * (channels[0] - '0'); ++value)
            text += std::to_string((frame + 7 * value) % 90) + ' ';
        text.back() = '\n';
    }
    return text;
}

// The size in bytes of all keys of the scene. Arrays that curves share count once.
std::size_t KeyBytes() {
    std::unordered_set<const headless::NumberArray*> seen;
    std::size_t bytes = 0;
    const auto add = [&](const headless::NumberArray* keys) {
        if (seen.insert(keys).second) bytes += keys->size() * sizeof(double);
    };
    for (const headless::Object* model : exported::CurrentScene().Models()) {
        for (const headless::ActionItem& item : exported::MotionOf(*model)->items) {
            if (!item.IsCurve()) continue;
            add(item.GetCurve().keys.times.get());
            add(item.GetCurve().keys.values.get());
        }
    }
    return bytes;
}

TEST(ExportMemory, StaysInProportionToTheKeys) {
    for (const char* channels : {"1 Xrotation", "3 Zrotation Xrotation Yrotation"}) {
        for (const bool nulls : {true, false}) {
            ASSERT_TRUE(exported::ImportText(Hinges(channels), {.nulls = nulls}));
            const std::size_t keys = KeyBytes();
            for (const char* path : {".glb", ".gltf", ".fbx", ".bvh", ".csv", ".npz"}) {
                const support::TemporaryFolder folder;
                const std::string file = folder.Path("out" + std::string(path));
                const std::size_t before = support::memoryUse.live;
                support::memoryUse.peak = before;
                exported::ExportTo(file);
                const std::string_view format = path;
                // FBX needs all six channels of a joint of bones, of which the scene has three.
                const std::size_t allowed = (format == ".fbx" ? 4 : 3) * keys;
                EXPECT_LE(keys + (support::memoryUse.peak - before), allowed + kFixed)
                    << path << ' ' << channels;
            }
        }
    }
}

}  // namespace
