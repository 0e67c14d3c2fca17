#include "headless/object_walk.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/headless/host_scene.h"

using namespace host_test;
using testing::ElementsAre;

namespace {

using ObjectWalk = HostScene;

std::vector<std::wstring> Walked(const Zelk::CBase& root) {
    std::vector<std::wstring> lines;
    headless::WalkObjects(RecordOf(root), [&](const headless::Object& object, std::size_t depth) {
        lines.push_back(std::to_wstring(depth) + L' ' + Wide(object.name));
    });
    return lines;
}

TEST_F(ObjectWalk, VisitsParentsBeforeChildrenAndChildrenInTheirOrder) {
    const Zelk::Model model = AddModel(L"Skel");
    const Zelk::Null hips = AddNull(model, L"Hips");
    const Zelk::Null spine = AddNull(hips, L"Spine");
    AddNull(model, L"Last");
    AddNull(hips, L"Leg");
    AddNull(spine, L"Head");
    EXPECT_THAT(Walked(model),
                ElementsAre(L"0 Skel", L"1 Hips", L"2 Spine", L"3 Head", L"2 Leg", L"1 Last"));
    EXPECT_THAT(Walked(hips), ElementsAre(L"0 Hips", L"1 Spine", L"2 Head", L"1 Leg"))
        << "siblings of the root are no part of it";
    EXPECT_THAT(Walked(spine), ElementsAre(L"0 Spine", L"1 Head"));
}

TEST_F(ObjectWalk, VisitsARootWithoutChildrenAlone) {
    EXPECT_THAT(Walked(AddModel(L"Skel")), ElementsAre(L"0 Skel"));
}

TEST_F(ObjectWalk, GoesToAnyDepth) {
    constexpr std::size_t kDepth = 100'000;
    const Zelk::Model model = AddModel(L"Skel");
    Zelk3DObject parent = model;
    for (std::size_t depth = 0; depth < kDepth; ++depth)
        parent = AddNull(parent, L"");
    std::size_t deepest = 0;
    headless::WalkObjects(RecordOf(model), [&](const headless::Object&, std::size_t depth) {
        deepest = std::max(deepest, depth);
    });
    EXPECT_EQ(deepest, kDepth);
}

}  // namespace
