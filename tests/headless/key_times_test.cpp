#include "headless/key_times.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>
#include <ostream>
#include <string>
#include <vector>

#include "headless/evaluation.h"
#include "tests/headless/host_scene.h"

using namespace host_test;
using testing::ElementsAreArray;

namespace key_times_test {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct Row {
    std::string name;
    std::vector<Item> items;
    std::vector<double> times;  // the result of KeyTimes
    double seconds;             // the result of SecondsPerFrame if AnimEnd is 2 seconds
};

std::ostream& operator<<(std::ostream& out, const Row& row) {
    return out << row.name;
}

Item Curve(const std::vector<double>& times, bool isActive = true) {
    return {L"a", times, std::vector<double>(times.size()), isActive};
}

const Row kRows[] = {
    {"OneCurve", {Curve({1, 2, 4})}, {1, 2, 4}, 0.5},
    {"Unsorted", {Curve({8, 2, 4})}, {2, 4, 8}, 0.25},
    {"TimeTwice", {Curve({4, 2, 4, 2})}, {2, 4}, 0.5},
    {"SeveralCurves", {Curve({1}), Curve({20}), Curve({3})}, {1, 3, 20}, 0.1},
    {"SharedTimes", {Curve({1, 4}), Curve({1, 4}), Curve({1, 4})}, {1, 4}, 0.5},
    {"SharedTimesOfAnInactiveItem", {Curve({1, 4}, false), Curve({1, 4})}, {1, 4}, 0.5},
    {"OverlappingTimes", {Curve({1, 4}), Curve({2, 4, 5}), Curve({1, 4})}, {1, 2, 4, 5}, 0.4},
    {"InactiveAlone", {Curve({1, 4}, false)}, {}, 0.0},
    {"InactiveWithALaterKey", {Curve({1, 4}), Curve({2, 8}, false)}, {1, 4}, 0.5},
    {"InactiveFirst", {Curve({2, 8}, false), Curve({1, 4})}, {1, 4}, 0.5},
    {"StaticValue", {{L"a", {}, {0}}}, {}, 0.0},
    {"StaticAndCurve", {{L"a", {}, {9}}, Curve({4})}, {4}, 0.5},
    {"NoItem", {}, {}, 0.0},
    {"TimeZero", {Curve({0})}, {0}, 0.0},
    {"BelowZero", {Curve({2, -4})}, {-4, 2}, 1.0},
    {"NotANumberLast", {Curve({4, kNan})}, {4}, 0.5},
    {"NotANumberFirst", {Curve({kNan, 4, 1})}, {1, 4}, 0.5},
    {"NotANumberAmongUnsorted", {Curve({8, kNan, 2, kNan, 4})}, {2, 4, 8}, 0.25},
    {"NotANumberAlone", {Curve({kNan})}, {}, 0.0},
    {"InfiniteAlone", {Curve({kInfinity})}, {}, 0.0},
    {"InfiniteLast", {Curve({1, 4, kInfinity})}, {1, 4}, 0.0},
    {"InfiniteBelow", {Curve({4, -kInfinity})}, {4}, 0.5},
    {"InfiniteInactive", {Curve({kInfinity}, false), Curve({4})}, {4}, 0.5},
};

class KeyTimesRow : public testing::TestWithParam<Row> {
  protected:
    void SetUp() override { headless::Session::Current().Reset(); }
};

TEST_P(KeyTimesRow, GivesTimesAndSecondsOfActiveCurves) {
    Zelk::ActionSource motion = AddAction(AddModel(L"Skel"), L"Walk", GetParam().items);
    motion.PutParameterValue(L"AnimEnd", 2.0, Zelk::kCurrentTime);
    EXPECT_THAT(headless::KeyTimes(RecordOf(motion)), ElementsAreArray(GetParam().times));
    EXPECT_DOUBLE_EQ(headless::SecondsPerFrame(RecordOf(motion)), GetParam().seconds);
}

INSTANTIATE_TEST_SUITE_P(, KeyTimesRow, testing::ValuesIn(kRows),
                         [](const auto& row) { return row.param.name; });

using KeyTimes = HostScene;

TEST_F(KeyTimes, GiveNoSecondsWithoutAFiniteEnd) {
    const struct {
        double end;
        double seconds;
    } kEnds[] = {{2.0, 1.0}, {0.0, 0.0}, {kInfinity, 0.0}, {kNan, 0.0}, {-2.0, -1.0}};
    Zelk::ActionSource motion = AddAction(AddModel(L"Skel"), L"Walk", {Curve({1, 2})});
    for (const auto& row : kEnds) {
        motion.PutParameterValue(L"AnimEnd", row.end, Zelk::kCurrentTime);
        EXPECT_DOUBLE_EQ(headless::SecondsPerFrame(RecordOf(motion)), row.seconds) << row.end;
    }
}

TEST_F(KeyTimes, LookAtASharedArrayOnce) {
    const Zelk::ActionSource motion =
        AddAction(AddModel(L"Skel"), L"Walk", {Curve({1, 4}), Curve({1, 4})});
    const auto& items = RecordOf(motion).items;
    EXPECT_EQ(items[0].GetCurve().keys.times, items[1].GetCurve().keys.times)
        << "the rows above do not test what their names say";
}

TEST_F(KeyTimes, AreThoseThatEvaluationKnows) {
    const Zelk::Model model = AddModel(L"Skel");
    AddNull(model, L"Hips");
    const Zelk::ActionSource motion = AddAction(model, L"Walk",
                                                {{L"Hips.kine.local.posx", {1, 4}, {1, 4}},
                                                 {L"Hips.kine.local.posy", {1, 9}, {1, 9}, false}});
    const headless::MotionEvaluator evaluator(Scene(), RecordOf(model), &RecordOf(motion));
    std::vector<headless::Transform> globals(2);
    evaluator.Evaluate(9.0, globals);
    EXPECT_EQ(globals[1].origin[0], 4.0);
    EXPECT_EQ(globals[1].origin[1], 0.0);
    EXPECT_THAT(headless::KeyTimes(RecordOf(motion)), testing::ElementsAre(1, 4));
}

}  // namespace key_times_test
