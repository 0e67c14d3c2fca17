// Empty handles, handles of deleted objects and handles of another kind can be used everywhere.
#include <gtest/gtest.h>

#include "tests/headless/operation_calls.h"
#include "tests/headless/scene_text.h"

using namespace host_test;

namespace {

using EmptyHandles = HostScene;

void ExpectNothing(Handles handles, const char* what) {
    Handles valid;
    valid.Make();
    const std::wstring scene = SceneText();
    for (const OperationCall& row : OperationCallsOfAllKinds()) {
        if (row.needsNoHandle) continue;
        const std::size_t bar = headless::Session::Current().Bar().size();
        EXPECT_FALSE(row.call(handles)) << row.operation << " on " << what;
        EXPECT_EQ(SceneText(), scene) << row.operation << " on " << what;
        EXPECT_EQ(headless::Session::Current().Bar().size(), bar) << row.operation;
    }
}

Handles AllOf(const Zelk::CRef& ref) {
    Handles handles;
    handles.model = Zelk::Model(ref);
    handles.null = Zelk::Null(ref);
    handles.chain = Zelk::ChainRoot(ref);
    handles.bone = Zelk::ChainBone(ref);
    handles.kinematics = Zelk::Kinematics(ref);
    handles.local = Zelk::KinematicState(ref);
    handles.position = Zelk::Parameter(ref);
    handles.property = Zelk::CustomProperty(ref);
    handles.curveParameter = Zelk::Parameter(ref);
    handles.curve = Zelk::FCurve(ref);
    handles.action = Zelk::ActionSource(ref);
    handles.group = Zelk::Group(ref);
    handles.toolkit = Zelk::UIToolkit(ref);
    handles.bar = Zelk::ProgressBar(ref);
    return handles;
}

TEST_F(EmptyHandles, DoNothingAndGiveNothing) {
    ExpectNothing(Handles(), "nothing");
}

TEST_F(EmptyHandles, AreWhatAResetObjectLeaves) {
    Handles handles;
    handles.Make();
    const Zelk::Null kept = handles.null;
    handles.null.ResetObject();
    EXPECT_FALSE(handles.null.IsValid());
    EXPECT_TRUE(kept.IsValid());
    EXPECT_EQ(handles.null.GetRef(), Zelk::CRef());
}

TEST_F(EmptyHandles, AreLikeHandlesOfWhatIsDeleted) {
    Handles handles;
    handles.Make();
    Delete(L"Skel");
    handles.toolkit.ResetObject();  // the toolkit is no object of the scene, so it stays valid
    handles.bar.ResetObject();
    ExpectNothing(handles, "what is deleted");
}

TEST_F(EmptyHandles, AreLikeHandlesFromAnEarlierSession) {
    Handles handles;
    handles.Make();
    headless::Session::Current().Reset();
    handles.toolkit.ResetObject();
    handles.bar.ResetObject();
    ExpectNothing(handles, "what an earlier session had");
}

TEST_F(EmptyHandles, AreLikeReferencesToNothing) {
    Handles valid;
    valid.Make();
    const std::uint32_t object = valid.null.GetRef().Object();
    for (const Zelk::CRef& ref :
         {Zelk::CRef(0, 1), Zelk::CRef(1u << 30, 0), Zelk::CRef(object, 10), Zelk::CRef(object, 9),
          Zelk::CRef(object, 0xFFFFFFFF), Zelk::CRef(valid.action.GetRef().Object(), 4),
          Zelk::CRef(valid.property.GetRef().Object(), 3),
          Zelk::CRef(valid.group.GetRef().Object(), 1), Zelk::CRef(0xFFFFFFFF, 1)}) {
        EXPECT_FALSE(Zelk::CBase(ref).IsValid()) << ref.Object() << ' ' << ref.Part();
        headless::Session::Current().Reset();
        ExpectNothing(AllOf(Zelk::CRef(ref.Object() == object ? 0 : ref.Object(), ref.Part())),
                      "what never was");
        valid = Handles();
        valid.Make();
    }
}

// A handle of the wrong kind, as a careless cast makes one, must do no harm.
TEST_F(EmptyHandles, OfAnotherKindDoNoHarm) {
    Handles valid;
    valid.Make();
    for (const Zelk::CBase& wrong :
         {Zelk::CBase(valid.model), Zelk::CBase(valid.null), Zelk::CBase(valid.chain),
          Zelk::CBase(valid.bone), Zelk::CBase(valid.chain.GetEffector()),
          Zelk::CBase(valid.kinematics), Zelk::CBase(valid.local), Zelk::CBase(valid.position),
          Zelk::CBase(valid.property), Zelk::CBase(valid.curveParameter), Zelk::CBase(valid.curve),
          Zelk::CBase(valid.action), Zelk::CBase(valid.group), Zelk::CBase(SceneRoot()),
          Zelk::CBase(valid.toolkit), Zelk::CBase(valid.bar)}) {
        Handles handles = AllOf(wrong.GetRef());
        for (const OperationCall& row : OperationCallsOfAllKinds())
            row.call(handles);
    }
    for (const headless::Object* object : Scene().Objects())
        EXPECT_EQ(Scene().FindObject(object->id), object);
}

}  // namespace
