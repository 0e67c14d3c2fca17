// The importers' base class with its protected members made public, and nodes made by hand.
#pragma once

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "headless/session.h"
#include "host/application.h"
#include "mocap/mocap_import_base.h"
#include "mocap/scene_helpers.h"
#include "tests/support/core/session_text.h"

namespace mocap_test {

using Keys = std::vector<double>;

struct Slot {
    std::uint8_t type;
    Keys values;
};

class Importer : public CMocapImportBase {
  public:
    using CMocapImportBase::AddBasePose;
    using CMocapImportBase::AddFCurve;
    using CMocapImportBase::AllocateAllRotationChannels;
    using CMocapImportBase::AttachCurves;
    using CMocapImportBase::chainFromParentJoint;
    using CMocapImportBase::channelCount;
    using CMocapImportBase::CHANNELS;
    using CMocapImportBase::CreateBone;
    using CMocapImportBase::CreateBoneChain;
    using CMocapImportBase::CreateBonesSkeleton;
    using CMocapImportBase::CreateGroup;
    using CMocapImportBase::createGroup;
    using CMocapImportBase::CreateNull;
    using CMocapImportBase::CreateNullsSkeleton;
    using CMocapImportBase::CreateScratchCurve;
    using CMocapImportBase::effectorToLastBone;
    using CMocapImportBase::FinishMotion;
    using CMocapImportBase::FixBonesRotations;
    using CMocapImportBase::FixRotationsOrder;
    using CMocapImportBase::format;
    using CMocapImportBase::frameCount;
    using CMocapImportBase::GetAllRotationChannels;
    using CMocapImportBase::GetModelParent;
    using CMocapImportBase::lastBasePose;
    using CMocapImportBase::lastModel;
    using CMocapImportBase::lastMotion;
    using CMocapImportBase::modelName;
    using CMocapImportBase::models;
    using CMocapImportBase::parsing;
    using CMocapImportBase::progressBar;
    using CMocapImportBase::RecordError;
    using CMocapImportBase::stringFile;
    using CMocapImportBase::useNulls;

    explicit Importer(MOCAP_FORMAT source = MOCAP_FORMAT_BIOVISION) : CMocapImportBase(source) {
        progressBar = &bar_;
    }

    // Makes a model "Skel" with its two actions, as the imports do before they build the skeleton.
    void MakeModel() {
        Zelk3DObject root = Zelk::Application().GetActiveSceneRoot();
        ASSERT_TRUE(root.AddModel(Zelk::CRefArray(), L"Skel", lastModel).Succeeded());
        modelName = lastModel.GetName();
        ASSERT_TRUE(AddActionSource(lastModel, L"Skel_BasePose", lastBasePose, 1.0).Succeeded());
        ASSERT_TRUE(AddActionSource(lastModel, L"Skel_Motion", lastMotion, 1.0).Succeeded());
    }

    // Adds a node with the counts and positions that the parsers would give it. It is detached if
    // its offset is zero.
    MOCAPMODEL& AddNode(const char* name, MOCAPMODEL* parent, std::array<double, 3> offset,
                        std::initializer_list<Slot> slots = {}) {
        // The parsers' way to add a node is not used, because it limits nodes by the size of a
        // file.
        models.push_back(std::make_unique<MOCAPMODEL>());
        MOCAPMODEL& node = *models.back();
        node.name = CopyText(name);
        node.parent = parent;
        node.isDetached = offset == std::array<double, 3>{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            node.offset[axis] = offset[axis];
            node.globalPosition[axis] =
                offset[axis] + (parent ? parent->globalPosition[axis] : 0.0);
        }
        if (parent != nullptr) {
            ++parent->childCount;
            parent->boneChildCount += !node.isDetached;
            node.depth = parent->depth + 1;
        }
        std::size_t next = 0;
        for (const Slot& slot : slots)
            Fill(node.channels[next++], slot);
        return node;
    }

    // Sets the type and one key for each frame; the first frame is 1.
    void Fill(CHANNELS& channel, const Slot& slot) {
        channel.type = slot.type;
        if (slot.values.empty() && frameCount > 0) return;
        channel.keys = AllocateKeys(frameCount);
        for (std::uint32_t i = 0; i < frameCount; ++i)
            channel.keys[i] = {i + 1.0, slot.values.at(i)};
    }

    std::string Message() const { return support::Utf8(GetLastError(nullptr, nullptr)); }

    static std::vector<int> Types(const MOCAPMODEL& node) {
        std::vector<int> types;
        for (const CHANNELS& slot : node.channels)
            types.push_back(slot.type);
        return types;
    }
    Keys Values(const CHANNELS& slot) const {
        Keys values;
        for (std::uint32_t i = 0; slot.keys && i < frameCount; ++i)
            values.push_back(slot.keys[i].value);
        return values;
    }

  private:
    CIFPlugProgressBar bar_;
};

inline const headless::Scene& Scene() {
    return headless::Session::Current().GetScene();
}
inline const headless::Object& ObjectOf(const Zelk::CBase& handle) {
    const headless::Object* const object = Scene().FindObject(handle.GetRef().Object());
    if (object == nullptr) throw std::runtime_error("the handle refers to no object");
    return *object;
}
inline std::string NameOf(const Zelk::CBase& handle) {
    return support::Utf8(ObjectOf(handle).name);
}
inline const headless::ActionSource& ActionOf(const Zelk::CBase& handle) {
    const headless::ActionSource* const action = Scene().FindAction(handle.GetRef().Object());
    if (action == nullptr) throw std::runtime_error("the handle refers to no action");
    return *action;
}

}  // namespace mocap_test
