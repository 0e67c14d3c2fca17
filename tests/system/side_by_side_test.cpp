// Results of imports that were moved out of the session: several exist at once, and threads read
// one while the next import runs.
#include <atomic>
#include <gtest/gtest.h>
#include <thread>
#include <vector>

#include "headless/evaluation.h"
#include "headless/session.h"
#include "tests/support/bvh_probe.h"

namespace {

using headless::MotionEvaluator;
using headless::Object;
using headless::Recording;
using headless::Transform;

constexpr int kReaders = 8;

// A root with a chain of joints, each of which rotates further in every frame.
std::string WalkText(int joints, int frames, double turn) {
    std::string text =
        "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition "
        "Zposition Zrotation Xrotation Yrotation\n";
    for (int joint = 1; joint < joints; ++joint)
        text += "JOINT Joint" + std::to_string(joint) +
                "\n{\nOFFSET 0 1 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n";
    text += "End Site\n{\nOFFSET 0 1 0\n}\n";
    for (int joint = 0; joint < joints; ++joint)
        text += "}\n";
    text += "MOTION\nFrames: " + std::to_string(frames) + "\nFrame Time: 0.04\n";
    for (int frame = 0; frame < frames; ++frame) {
        for (int channel = 0; channel < 3 * joints + 3; ++channel)
            text += std::to_string(turn * frame + channel) + " ";
        text += "\n";
    }
    return text;
}

Recording Import(const std::string& text, bool nulls) {
    support::ImportOptions options;
    options.nulls = nulls;
    EXPECT_EQ(support::ImportBvhText(text, options).status, 0);
    return headless::Session::Current().Release();
}

// All names, and the position of every object in every frame.
struct Reading {
    std::vector<std::wstring> names;
    std::vector<double> coordinates;
    bool operator==(const Reading&) const = default;
};
Reading Read(const headless::Scene& scene, int frames) {
    Reading reading;
    for (const Object* const object : scene.Objects())
        reading.names.emplace_back(scene.FullName(object->id).GetWideString());
    for (const Object* const model : scene.Models()) {
        const MotionEvaluator evaluator(scene, *model, model->modelData->actions.back().get());
        std::vector<Transform> transforms(evaluator.Objects().size());
        const auto add = [&] {
            for (const Transform& transform : transforms)
                reading.coordinates.insert(reading.coordinates.end(), std::begin(transform.origin),
                                           std::end(transform.origin));
        };
        for (int frame = 1; frame <= frames; ++frame) {
            evaluator.Evaluate(frame, transforms);
            add();
            evaluator.EvaluateLocal(frame, transforms);
            add();
        }
    }
    return reading;
}

TEST(SideBySide, ScenesOfTwoImportsBothLive) {
    const Recording first = Import(WalkText(4, 5, 3.0), true);
    const Reading ofFirst = Read(*first.scene, 5);
    const Recording second = Import(WalkText(7, 5, 2.0), true);
    const Recording third = Import(WalkText(4, 5, 3.0), true);
    EXPECT_EQ(Read(*first.scene, 5), ofFirst);
    EXPECT_NE(Read(*second.scene, 5), ofFirst);
    EXPECT_EQ(Read(*third.scene, 5), ofFirst) << "an import does not depend on those before";
    EXPECT_EQ(second.scene->Objects().size(), first.scene->Objects().size() + 3);
    EXPECT_LT(first.scene->Objects().back()->id, second.scene->Objects().front()->id);
    EXPECT_TRUE(headless::Session::Current().GetScene().Objects().empty());
}

TEST(SideBySide, ThreadsReadOneResultWhileTheNextImportRuns) {
    constexpr int kFrames = 12;
    for (const bool nulls : {true, false}) {
        const std::string text = WalkText(12, kFrames, 3.0);
        const Recording result = Import(text, nulls);
        const Reading expected = Read(*result.scene, kFrames);
        std::atomic<bool> done = false;
        std::atomic<int> different = 0;
        std::atomic<int> readings = 0;
        std::vector<std::thread> readers;
        for (int reader = 0; reader < kReaders; ++reader)
            readers.emplace_back([&] {
                do {
                    if (Read(*result.scene, kFrames) != expected) ++different;
                    ++readings;
                } while (!done);
            });
        std::vector<Recording> others;
        while (others.size() < 10 || readings < kReaders)
            others.push_back(Import(text, nulls));
        done = true;
        for (std::thread& reader : readers)
            reader.join();
        EXPECT_EQ(different, 0);
        EXPECT_EQ(Read(*others.back().scene, kFrames), expected);
    }
}

}  // namespace
