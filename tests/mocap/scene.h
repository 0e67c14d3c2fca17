// Makes small scenes through the host's interface.
#pragma once

#include <gtest/gtest.h>

#include "host/application.h"
#include "host/scene_objects.h"

namespace mocap_test {

inline Zelk::Model MakeModel(const Zelk::CString& name) {
    Zelk::Model model;
    Zelk3DObject root = Zelk::Application().GetActiveSceneRoot();
    EXPECT_TRUE(root.AddModel(Zelk::CRefArray(), name, model).Succeeded());
    return model;
}

inline Zelk::Null MakeNull(Zelk3DObject parent, const Zelk::CString& name) {
    Zelk::Null null;
    EXPECT_TRUE(parent.AddNull(name, null).Succeeded());
    return null;
}

// Sets the local rotation of an object, in degrees.
inline void Turn(Zelk3DObject object, double x, double y, double z) {
    Zelk::KinematicState local = object.GetKinematics().GetLocal();
    EXPECT_TRUE(local.PutParameterValue(L"rotx", x, Zelk::kCurrentTime).Succeeded());
    EXPECT_TRUE(local.PutParameterValue(L"roty", y, Zelk::kCurrentTime).Succeeded());
    EXPECT_TRUE(local.PutParameterValue(L"rotz", z, Zelk::kCurrentTime).Succeeded());
}

}  // namespace mocap_test
