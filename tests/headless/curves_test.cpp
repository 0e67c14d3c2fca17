#include <algorithm>
#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <utility>
#include <vector>

#include "tests/headless/host_scene.h"
#include "tests/headless/scene_text.h"

using namespace host_test;
using testing::ElementsAre;

namespace {

class Curves : public HostScene {
  protected:
    void SetUp() override {
        HostScene::SetUp();
        model = AddModel(L"Skel");
        hips = AddNull(model, L"Hips");
        scratch = AddScratch(hips);
        motion = model.AddActionSource(L"Walk");
    }
    const headless::Curve& Record(std::size_t index = 0) const {
        return RecordOf(hips).Properties()[0]->curves[index].curve;
    }

    Zelk::Model model;
    Zelk::Null hips;
    Scratch scratch;
    Zelk::ActionSource motion;
};

TEST_F(Curves, HoldWhatIsSet) {
    EXPECT_EQ(Record().keys.Count(), 0u);
    EXPECT_TRUE(SetKeys(scratch.curve, {3, 1, 1}, {30, 10, 11}).Succeeded());
    EXPECT_THAT(*Record().keys.times, ElementsAre(3, 1, 1)) << "as they were handed over";
    EXPECT_THAT(*Record().keys.values, ElementsAre(30, 10, 11));
    EXPECT_TRUE(SetKeys(scratch.curve, {5}, {50}).Succeeded());
    EXPECT_THAT(*Record().keys.times, ElementsAre(5));
    EXPECT_TRUE(SetKeys(scratch.curve, {}, {}).Succeeded());
    EXPECT_EQ(Record().keys.Count(), 0u);
}

TEST_F(Curves, AddToWhatTheyHoldOnRequest) {
    SetKeys(scratch.curve, {1, 2}, {10, 20});
    EXPECT_TRUE(SetKeys(scratch.curve, {0, 3}, {0, 30}, true).Succeeded());
    EXPECT_THAT(*Record().keys.times, ElementsAre(1, 2, 0, 3));
    EXPECT_THAT(*Record().keys.values, ElementsAre(10, 20, 0, 30));
    SetKeys(scratch.curve, {4}, {40});
    EXPECT_TRUE(SetKeys(scratch.curve, {4}, {41}, true).Succeeded());
    EXPECT_THAT(*Record().keys.times, ElementsAre(4, 4)) << "equal to the times it holds";
    EXPECT_THAT(*Record().keys.values, ElementsAre(40, 41));
}

std::shared_ptr<const double[]> Memory(const std::vector<double>& numbers) {
    const std::shared_ptr<double[]> memory(new double[numbers.size()]);
    std::copy(numbers.begin(), numbers.end(), memory.get());
    return memory;
}

TEST_F(Curves, KeepTheMemoryOfSharedKeys) {
    const auto times = Memory({1, 2, 3});
    const auto values = Memory({10, 20, 30});
    Zelk::FCurve& curve = scratch.curve;
    EXPECT_TRUE(curve.SetKeys({times, 3}, {values, 3}, false).Succeeded());
    EXPECT_EQ(Record().keys.times->data(), times.get());
    EXPECT_EQ(Record().keys.values->data(), values.get());
    EXPECT_THAT(*Record().keys.values, ElementsAre(10, 20, 30));
    EXPECT_TRUE(curve.SetKeys({times, 1}, {values, 1}, true).Succeeded());
    EXPECT_THAT(*Record().keys.times, ElementsAre(1, 2, 3, 1));
    EXPECT_THAT(*Record().keys.values, ElementsAre(10, 20, 30, 10));
    EXPECT_TRUE(curve.SetKeys({nullptr, 0}, {nullptr, 0}, false).Succeeded());
    EXPECT_EQ(Record().keys.Count(), 0u);
}

TEST(SharedArrays, AreCopiedBeforeTheyAreChanged) {
    const auto numbers = Memory({1, 2, 3});
    Zelk::CTimeArray times(numbers, 3);
    EXPECT_EQ(std::as_const(times)[1], 2.0);
    EXPECT_EQ(times.Shared(), numbers);
    times[1] = 5;
    EXPECT_EQ(times.Shared(), nullptr);
    Zelk::CValueArray values(numbers, 3);
    EXPECT_EQ(std::as_const(values)[1].AsDouble(), 2.0);
    values[1] = 6.0;
    EXPECT_EQ(values.Shared(), nullptr);
    Zelk::CValueArray longer(numbers, 3);
    longer.Resize(4);
    EXPECT_EQ(longer.GetCount(), 4u);
    EXPECT_EQ(std::as_const(longer)[2].AsDouble(), 3.0);
    EXPECT_EQ(std::as_const(longer)[3].GetType(), Zelk::CValue::Type::Empty);
    EXPECT_EQ(numbers[1], 2.0);
}

TEST_F(Curves, RefuseTimesAndValuesOfUnequalLengths) {
    SetKeys(scratch.curve, {1, 2}, {10, 20});
    const std::wstring before = SceneText();
    EXPECT_FALSE(SetKeys(scratch.curve, {1, 2}, {10}).Succeeded());
    EXPECT_FALSE(SetKeys(scratch.curve, {1}, {10, 20}).Succeeded());
    EXPECT_FALSE(SetKeys(scratch.curve, {}, {10}).Succeeded());
    EXPECT_FALSE(SetKeys(scratch.curve, {1}, {}, true).Succeeded());
    EXPECT_EQ(SceneText(), before);
}

TEST_F(Curves, ReadOtherValuesAsZero) {
    Zelk::CTimeArray times(4);
    Zelk::CValueArray values(4);
    values[0] = Zelk::CValue(7);
    values[1] = Zelk::CValue(Zelk::CString(L"5"));
    values[2] = 2.5;
    EXPECT_TRUE(scratch.curve.SetKeys(times, values, false).Succeeded());
    EXPECT_THAT(*Record().keys.values, ElementsAre(7, 0, 2.5, 0));
}

TEST_F(Curves, ShareEqualTimes) {
    Zelk::Parameter parameter;
    scratch.property.AddFCurveParameter(L"second", parameter);
    const Zelk::FCurve second(parameter.GetValue(Zelk::kCurrentTime).AsRef());
    SetKeys(scratch.curve, {1, 2, 3}, {10, 20, 30});
    SetKeys(second, {1, 2, 3}, {11, 21, 31});
    EXPECT_EQ(Record(0).keys.times, Record(1).keys.times);
    EXPECT_NE(Record(0).keys.values, Record(1).keys.values);
    SetKeys(second, {1, 2, 4}, {11, 21, 31});
    EXPECT_NE(Record(0).keys.times, Record(1).keys.times);
    EXPECT_THAT(*Record(0).keys.times, ElementsAre(1, 2, 3));
    EXPECT_THAT(*Record(1).keys.times, ElementsAre(1, 2, 4));
    SetKeys(second, {1, 2}, {11, 21});
    EXPECT_THAT(*Record(1).keys.times, ElementsAre(1, 2));
}

TEST_F(Curves, TellTheTwoZerosApartWhenTheyShareTimes) {
    SetKeys(scratch.curve, {0.0}, {1});
    const auto times = Record().keys.times;
    SetKeys(scratch.curve, {-0.0}, {1});
    EXPECT_TRUE(std::signbit(Record().keys.times->front()));
    EXPECT_FALSE(std::signbit(times->front()));
}

TEST_F(Curves, GiveTheirInterpolation) {
    EXPECT_EQ(Record().interpolation, 0);
    EXPECT_TRUE(scratch.curve.PutInterpolation(Zelk::zkLinearInterpolation).Succeeded());
    EXPECT_EQ(Record().interpolation, 1);
}

TEST_F(Curves, LeaveItemsAsTheyWereWhenTheyChange) {
    scratch.curve.PutInterpolation(Zelk::zkLinearInterpolation);
    SetKeys(scratch.curve, {1, 2}, {10, 20});
    motion.AddSourceItem(L"Hips.kine.local.posx", scratch.curve.GetRef(), true);
    SetKeys(scratch.curve, {1, 2}, {11, 21});
    motion.AddSourceItem(L"Hips.kine.local.posy", scratch.curve.GetRef(), true);
    SetKeys(scratch.curve, {3}, {31}, true);
    ASSERT_EQ(Delete(L"Skel.Hips.Scratch"), Zelk::status::kOk);

    const auto& items = RecordOf(motion).items;
    ASSERT_EQ(items.size(), 2u);
    EXPECT_THAT(*items[0].GetCurve().keys.values, ElementsAre(10, 20));
    EXPECT_THAT(*items[1].GetCurve().keys.values, ElementsAre(11, 21));
    EXPECT_EQ(items[0].GetCurve().keys.times, items[1].GetCurve().keys.times)
        << "one array for both";
    EXPECT_THAT(*items[0].GetCurve().keys.times, ElementsAre(1, 2));
    EXPECT_EQ(items[0].GetCurve().interpolation, 1);
}

}  // namespace
