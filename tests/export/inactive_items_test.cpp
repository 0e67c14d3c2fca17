// An item of a motion that is not active changes neither the facts about the motion nor its
// exports.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>

#include "export/motion_facts.h"
#include "export/timeline.h"
#include "headless/evaluation.h"
#include "tests/export/exported.h"
#include "tests/support/test_scene.h"

namespace inactive_items_test {

using testing::ElementsAre;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

struct Row {
    const char* name;
    TestCurve inactive;
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

const Row kRows[] = {
    {"LaterKey", {L"Hips.kine.local.posy", {1, 9}, {5, 6}, false}},
    {"EarlierKey", {L"Hips.kine.local.posy", {-3, 4}, {5, 6}, false}},
    {"KeyBetween", {L"Hips.kine.local.posy", {2, 3}, {5, 6}, false}},
    {"SameChannel", {L"Hips.kine.local.posx", {1, 4}, {7, 8}, false}},
    {"NotANumber", {L"Hips.kine.local.posy", {1, 4}, {kNan, kNan}, false}},
    {"TimeNotANumber", {L"Hips.kine.local.posy", {kNan, 4}, {5, 6}, false}},
    {"EndSite", {L"Hips_End.kine.local.rotx", {1, 4}, {0, 0}, false}},
    {"NoTarget", {L"Nobody.kine.local.posx", {1, 9}, {5, 6}, false}},
};

class InactiveItem : public testing::TestWithParam<Row> {
  protected:
    // Makes a model with a motion: one curve of two keys, and the curves in `more`.
    static const headless::Object& Import(const std::vector<TestCurve>& more) {
        TestScene scene;
        const Zelk::Model model = scene.AddModel(L"take");
        const Zelk::Null hips = scene.AddNull(model, L"Hips", 0, 0, 0);
        scene.AddNull(hips, L"Hips_End", 0, 10, 0);
        scene.AddAction(model, L"Base", 0.0, {});
        std::vector<TestCurve> curves{{L"Hips.kine.local.posx", {1, 4}, {1, 4}}};
        curves.insert(curves.end(), more.begin(), more.end());
        scene.AddAction(model, L"Motion", 2.0, curves);
        return *TestScene::Get().Models().front();
    }
};

TEST_P(InactiveItem, IsIgnoredByFactsTimelineAndEvaluation) {
    const headless::Object& model = Import({GetParam().inactive});
    const headless::ActionSource* const motion = exporters::MotionOf(model);
    ASSERT_EQ(motion->items.size(), 2u);

    const exporters::ModelFacts facts = exporters::MeasureModel(TestScene::Get(), model);
    EXPECT_EQ(facts.curves, 1u);
    EXPECT_EQ(facts.frames, 2u);
    EXPECT_EQ(facts.firstFrame, 1.0);
    EXPECT_EQ(facts.lastFrame, 4.0);
    EXPECT_EQ(facts.secondsPerFrame, 0.5);
    EXPECT_EQ(facts.badKeys, 0u);

    exporters::Notes notes;
    const exporters::Timeline timeline = exporters::MakeTimeline(model, motion, {}, false, notes);
    EXPECT_THAT(timeline.frames, ElementsAre(1, 4));
    EXPECT_EQ(timeline.secondsPerFrame, 0.5);

    const headless::MotionEvaluator evaluator(TestScene::Get(), model, motion);
    std::vector<headless::Transform> globals(evaluator.Objects().size());
    evaluator.Evaluate(4.0, globals);
    EXPECT_THAT(globals[1].origin, ElementsAre(4.0, 0.0, 0.0));
}

TEST_P(InactiveItem, ChangesNoOutput) {
    for (const char* extension : {".bvh", ".csv", ".fbx", ".glb", ".npz"}) {
        Import({});
        const std::string without = exported::Export(extension);
        Import({GetParam().inactive});
        EXPECT_EQ(exported::Export(extension), without) << extension;
    }
}

INSTANTIATE_TEST_SUITE_P(, InactiveItem, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

}  // namespace inactive_items_test
