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

// What both importers share: options, the error record, the parsed skeleton, and the building of
// scene objects from it. Operations return host status codes, negative on failure; of the
// messages that a failing operation records, the last one counts.
class CMocapImportBase : protected MocapSkeleton {
  public:
    enum MOCAP_FORMAT { MOCAP_FORMAT_BIOVISION = 0, MOCAP_FORMAT_ACCLAIM = 1 };

    explicit CMocapImportBase(MOCAP_FORMAT sourceFormat);
    virtual ~CMocapImportBase();
    CMocapImportBase(const CMocapImportBase&) = delete;
    CMocapImportBase& operator=(const CMocapImportBase&) = delete;

    // Nulls or bone chains; a chain starts at the parent's joint; each chain's effector becomes a
    // child of its last bone; the animated objects are gathered in a group.
    void SetOptions(bool nulls, bool fromParentJoint, bool effectorUnderBone, bool group);

    // The last recorded message, empty without an error, and the reader's position at that moment,
    // counted from 0. Either pointer may be null.
    const Zelk::CString& GetLastError(std::uint32_t* line, std::uint32_t* column) const;
    // Whether that was while a file was parsed, so that the line means something.
    bool WasParsing() const { return parsing; }

    // What the last import made; empty handles where it did not get that far.
    Zelk::Model GetLastModel() const { return lastModel; }
    Zelk::ActionSource GetLastBasePose() const { return lastBasePose; }
    Zelk::ActionSource GetLastMotion() const { return lastMotion; }

    // The nodes that the importer holds at present, with the scene objects that were made for them.
    const MocapSkeleton& GetSkeleton() const { return *this; }

  protected:
    using CHANNELS = MOCAPMODEL::CHANNELS;

    // Replaces the recorded error; an empty message clears it.
    void RecordError(const Zelk::CString& message) noexcept;
    // The same, returning `status`.
    std::int32_t Fail(std::int32_t status, const Zelk::CString& message) noexcept;
    // The same with "Out of memory", which takes no memory.
    std::int32_t FailForMemory(std::int32_t status = Zelk::status::kOutOfMemory) noexcept;
    // The same for a file that asks for more of `what` than it may take: says so, and the limit.
    // Throws std::bad_alloc.
    std::int32_t FailForCount(const wchar_t* what, const FileAllowance& allowance);
    std::int32_t FailForDerivedNames();
    // Whether the user pressed cancel; then "User cancelled command" is recorded.
    bool CheckCancelled();

    // The parent's null; empty for a root and where the parent was not made as a null.
    Zelk3DObject GetModelParent(const MOCAPMODEL* node) const;
    // The same, or the model where that is empty.
    Zelk3DObject ParentObject(const MOCAPMODEL* node) const;
    // The node's null or, without one, its bone; empty where it has neither.
    static Zelk3DObject AnimatedObject(const MOCAPMODEL& node);

    // Takes over the error of a parser whose operation returned `status`, which it returns. Throws
    // std::bad_alloc.
    std::int32_t RecordParserError(const MocapParser& parser, std::int32_t status);

    // --- rotation_order.cpp ---
    // Appends the node's rotation slots, at most three, in slot order. `list` is not cleared.
    static void GetAllRotationChannels(MOCAPMODEL* node, CHANNELS** list);
    // Completes the node's rotation channels with zero-valued ones. The list holds its own in slot
    // order, then the new. mocap::kNoRotation, with an empty list, where the node has none.
    std::int32_t AllocateAllRotationChannels(MOCAPMODEL* node, CHANNELS** list);
    // Rewrites the keys of every node whose rotations are not listed x before y before z.
    std::int32_t FixRotationsOrder();

    // --- nulls_skeleton.cpp ---
    Zelk::CStatus CreateNull(MOCAPMODEL* node, Zelk3DObject& parent);
    Zelk::CStatus CreateNullsSkeleton();
    Zelk::CStatus CreateGroup();

    // --- bones_skeleton.cpp ---
    // The whole skeleton as chains, and nulls where there can be no bone.
    Zelk::CStatus CreateBonesSkeleton();
    // Those of them that are made as chains, and the nulls at their ends.
    std::size_t CountChains(const std::vector<BoneChain>& chains) const;
    // Whether a chain is a single node that can be no bone.
    bool BecomesNull(const BoneChain& chain) const;
    // One chain, or that null.
    Zelk::CStatus CreateChainObjects(const BoneChain& chain);
    Zelk::CStatus CreateChainBones(const BoneChain& chain, Zelk3DObject& parent,
                                   Zelk::ChainRoot& root, Zelk::ChainEffector& effector);
    // A chain whose first bone reaches from `start` to `end` and belongs to `start`.
    Zelk::CStatus CreateBoneChain(MOCAPMODEL* start, MOCAPMODEL* end, Zelk3DObject& parent,
                                  Zelk::ChainRoot& root, Zelk::ChainEffector& effector);
    // The next bone of the chain, from its end to `end`; it belongs to `start`.
    Zelk::CStatus CreateBone(MOCAPMODEL* start, MOCAPMODEL* end, Zelk::ChainRoot& root);
    void AddBoneBasePose(MOCAPMODEL& node);

    // --- bone_rotations.cpp ---
    // After the skeleton stands and before its curves are made. kCancelled when the user did.
    std::int32_t FixBonesRotations();

    // --- action_curves.cpp ---
    // Hands `frameCount` keys to the curve and adds the curve to the motion for that parameter.
    Zelk::CStatus AddFCurve(Zelk3DObject object, std::uint8_t channelType, const MOCAP_RAWKEY* keys,
                            Zelk::FCurve& fcurve);
    // Adds a parameter's present value to the base pose; `value`, unless null, receives it too.
    Zelk::CStatus AddBasePose(Zelk3DObject object, const Zelk::CString& parameterName,
                              double* value);
    // The property whose curve carries every channel's keys to the motion, on the first node's
    // object or on the model. Its curve is empty where the host did not make it.
    struct ScratchCurve {
        Zelk::CustomProperty property;
        Zelk::FCurve fcurve;
    };
    ScratchCurve CreateScratchCurve();
    // One curve for each imported channel of the node that has keys, which are given up.
    Zelk::CStatus AttachCurves(MOCAPMODEL& node, Zelk::FCurve& fcurve);
    // Whether frames exist but the channel never got a key: its object then keeps the base pose.
    bool LacksKeys(const CHANNELS& channel) const { return frameCount > 0 && !channel.keys; }
    // Deletes the scratch property and puts the model into its base pose: the status of the latter.
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
    CIFPlugProgressBar* progressBar = nullptr;  // of the running import, the import operation's

  private:
    const Zelk::CString outOfMemory;  // the message, made while there is memory

    // What AddFCurve hands to the host, kept from channel to channel.
    Zelk::CTimeArray keyTimes;
    Zelk::CValueArray keyValues;
};
