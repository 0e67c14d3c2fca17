// Calls each operation of the host once, in a scene that is made for it.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "host/automation.h"
#include "tests/headless/host_scene.h"

namespace host_test {

// A handle of each kind. They are empty until Make was called.
struct Handles {
    Zelk::Model model;
    Zelk::Null null;
    Zelk::ChainRoot chain;
    Zelk::ChainBone bone;
    Zelk::Kinematics kinematics;
    Zelk::KinematicState local;
    Zelk::Parameter position;
    Zelk::CustomProperty property;
    Zelk::Parameter curveParameter;
    Zelk::FCurve curve;
    Zelk::ActionSource action;
    Zelk::Group group;
    Zelk::UIToolkit toolkit;
    Zelk::ProgressBar bar;

    void Make();
};

struct OperationCall {
    std::string_view operation;
    // Returns whether the call changed something or returned something.
    std::function<bool(Handles&)> call;
    bool needsNoHandle = false;  // it does the same with an empty handle
};

const std::vector<OperationCall>& OperationCallsOfAllKinds();

}  // namespace host_test
