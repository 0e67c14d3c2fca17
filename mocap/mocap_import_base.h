#pragma once

#include <cstdint>
#include <vector>

#include "host/action.h"
#include "host/parameter.h"
#include "host/scene_objects.h"
#include "host/status.h"
#include "host/string.h"
#include "mocap/bones_skeleton.h"
#include "mocap/file_allowance.h"
#include "mocap/mocap_parser.h"
#include "mocap/mocap_skeleton.h"
#include "mocap/progress_bar.h"
#include "textio/string_file.h"

// What both importers share: the options, the error record, the parsed skeleton, and the building
// of scene objects from it. Operations return the host's status codes, negative on failure. When a
// failing operation records several messages, the last one counts.
class CMocapImportBase : protected MocapSkeleton {
  public:
    enum MOCAP_FORMAT { MOCAP_FORMAT_BIOVISION = 0, MOCAP_FORMAT_ACCLAIM = 1 };

    explicit CMocapImportBase(MOCAP_FORMAT sourceFormat);
    virtual ~CMocapImportBase();
    CMocapImportBase(const CMocapImportBase&) = delete;
    CMocapImportBase& operator=(const CMocapImportBase&) = delete;

    // `nulls`: the skeleton becomes nulls instead of bone chains. `fromParentJoint`: a chain starts
    // at the parent's joint. `effectorUnderBone`: each chain's effector becomes a child of its last
    // bone. `group`: the animated objects are put into a group.
    void SetOptions(bool nulls, bool fromParentJoint, bool effectorUnderBone, bool group);

    // Returns the last recorded message, empty when there was no error, and stores the line and
    // column of the reader at that moment, counted from 0. Either pointer may be null.
    const Zelk::CString& GetLastError(std::uint32_t* line, std::uint32_t* column) const;
    // Whether the error was recorded while a file was parsed. Only then does its line mean
    // something.
    bool WasParsing() const { return parsing; }

    // What the last import made. A handle is empty when the import did not get that far.
    Zelk::Model GetLastModel() const { return lastModel; }
    Zelk::ActionSource GetLastBasePose() const { return lastBasePose; }
    Zelk::ActionSource GetLastMotion() const { return lastMotion; }

    // The nodes that the importer holds at present, with the scene objects that were made for them.
    const MocapSkeleton& GetSkeleton() const { return *this; }

  protected:
    using CHANNELS = MOCAPMODEL::CHANNELS;

    // Replaces the recorded error; an empty message clears it.
    void RecordError(const Zelk::CString& message) noexcept;
    // Records an error and returns `status`.
    std::int32_t Fail(std::int32_t status, const Zelk::CString& message) noexcept;
    // Records "Out of memory", which needs no memory, and returns `status`.
    std::int32_t FailForMemory(std::int32_t status = Zelk::status::kOutOfMemory) noexcept;
    // Records that the file asks for more of `what` than its size allows. Throws std::bad_alloc.
    std::int32_t FailForCount(const wchar_t* what, const FileAllowance& allowance);
    std::int32_t FailForDerivedNames();
    // Whether the user pressed cancel. If so, "User cancelled command" is recorded.
    bool CheckCancelled();

    // The null of the node's parent; empty for a root and when the parent is not a null.
    Zelk3DObject GetModelParent(const MOCAPMODEL* node) const;
    // The null of the node's parent or, when it has none, the model.
    Zelk3DObject ParentObject(const MOCAPMODEL* node) const;
    // The node's null or, when it has none, its bone; empty when it has neither.
    static Zelk3DObject AnimatedObject(const MOCAPMODEL& node);

    // Records the error of a parser whose operation returned `status`, and returns `status`. Throws
    // std::bad_alloc.
    std::int32_t RecordParserError(const MocapParser& parser, std::int32_t status);

    // --- rotation_order.cpp ---
    // Appends the node's rotation slots, at most three, in slot order. `list` is not cleared.
    static void GetAllRotationChannels(MOCAPMODEL* node, CHANNELS** list);
    // Adds channels of zeros for the rotations that the node lacks. The list gets the node's own
    // channels in slot order, then the new ones. Returns mocap::kNoRotation, and an empty list,
    // when the node has no rotation channel.
    std::int32_t AllocateAllRotationChannels(MOCAPMODEL* node, CHANNELS** list);
    // Rewrites the keys of every node whose rotations are not listed x before y before z.
    std::int32_t FixRotationsOrder();

    // --- nulls_skeleton.cpp ---
    Zelk::CStatus CreateNull(MOCAPMODEL* node, Zelk3DObject& parent);
    Zelk::CStatus CreateNullsSkeleton();
    Zelk::CStatus CreateGroup();

    // --- bones_skeleton.cpp ---
    // Builds the whole skeleton as chains, with nulls for what cannot be a bone.
    Zelk::CStatus CreateBonesSkeleton();
    // How much of the allowance for chains is needed: one for each chain and for each null at the
    // end of a chain.
    std::size_t CountChains(const std::vector<BoneChain>& chains) const;
    // Whether the chain is a single node that cannot be a bone.
    bool BecomesNull(const BoneChain& chain) const;
    // Builds one chain, or the null that it becomes.
    Zelk::CStatus CreateChainObjects(const BoneChain& chain);
    Zelk::CStatus CreateChainBones(const BoneChain& chain, Zelk3DObject& parent,
                                   Zelk::ChainRoot& root, Zelk::ChainEffector& effector);
    // Makes a chain whose first bone reaches from `start` to `end` and is the bone of `start`.
    Zelk::CStatus CreateBoneChain(MOCAPMODEL* start, MOCAPMODEL* end, Zelk3DObject& parent,
                                  Zelk::ChainRoot& root, Zelk::ChainEffector& effector);
    // Adds a bone to the chain, from its end to `end`. It is the bone of `start`.
    Zelk::CStatus CreateBone(MOCAPMODEL* start, MOCAPMODEL* end, Zelk::ChainRoot& root);
    void AddBoneBasePose(MOCAPMODEL& node);

    // --- bone_rotations.cpp ---
    // Called after the skeleton was built and before its curves are made. Returns kCancelled when
    // the user cancelled.
    std::int32_t FixBonesRotations();

    // --- action_curves.cpp ---
    // Copies `frameCount` keys to the curve and adds the curve to the motion for that parameter.
    Zelk::CStatus AddFCurve(Zelk3DObject object, std::uint8_t channelType, const MOCAP_RAWKEY* keys,
                            Zelk::FCurve& fcurve);
    // Adds a parameter's present value to the base pose, and stores it in `value` unless that is
    // null.
    Zelk::CStatus AddBasePose(Zelk3DObject object, const Zelk::CString& parameterName,
                              double* value);
    // The property with the curve through which the keys of all channels are copied to the motion,
    // one channel after the other. It is on the first node's object or, when that node has none, on
    // the model. `fcurve` is empty when the host did not make it.
    struct ScratchCurve {
        Zelk::CustomProperty property;
        Zelk::FCurve fcurve;
    };
    ScratchCurve CreateScratchCurve();
    // Makes a curve for each imported channel of the node that has keys, and frees the keys.
    Zelk::CStatus AttachCurves(MOCAPMODEL& node, Zelk::FCurve& fcurve);
    // Whether there are frames but the channel never got a key. Its object then keeps the base
    // pose.
    bool LacksKeys(const CHANNELS& channel) const { return frameCount > 0 && !channel.keys; }
    // Deletes the scratch property, puts the model into its base pose and returns the status of
    // that.
    Zelk::CStatus FinishMotion(const ScratchCurve& scratch);

    CStringFile stringFile;
    FileAllowances allowances;
    MOCAP_FORMAT format;
    std::uint32_t errorLine = 0;
    std::uint32_t errorColumn = 0;
    Zelk::CString errorMessage;
    bool parsing = false;
    Zelk::CString modelName;  // as the host gave it
    bool useNulls = false;
    bool chainFromParentJoint = true;
    bool effectorToLastBone = false;
    bool createGroup = true;
    Zelk::Model lastModel;
    Zelk::ActionSource lastBasePose;
    Zelk::ActionSource lastMotion;
    CIFPlugProgressBar* progressBar = nullptr;  // owned by the import operation that is running

  private:
    const Zelk::CString outOfMemory;  // the message, made while memory is available

    // What AddFCurve passes to the host. Their memory is used again for the next channel.
    Zelk::CTimeArray keyTimes;
    Zelk::CValueArray keyValues;
};
