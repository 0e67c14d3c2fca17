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

class RotationJobs;

// The base class of the BVH and the Acclaim importer. It has the options, the recorded error, the
// parsed skeleton, and the code that builds scene objects from the skeleton. Operations return the
// host's status codes, which are negative on failure. If a failing operation records several
// messages, the last message is kept.
class CMocapImportBase : protected MocapSkeleton {
  public:
    enum MOCAP_FORMAT { MOCAP_FORMAT_BIOVISION = 0, MOCAP_FORMAT_ACCLAIM = 1 };

    explicit CMocapImportBase(MOCAP_FORMAT sourceFormat);
    virtual ~CMocapImportBase();
    CMocapImportBase(const CMocapImportBase&) = delete;
    CMocapImportBase& operator=(const CMocapImportBase&) = delete;

    // `nulls`: the skeleton becomes nulls instead of bone chains. `fromParentJoint`: a chain starts
    // at the parent joint of its first node. If its first node is detached and has a bone child,
    // the chain always starts at this node. `effectorUnderBone`: each chain's effector becomes a
    // child of the chain's last bone. `group`: the animated objects are put into a group.
    void SetOptions(bool nulls, bool fromParentJoint, bool effectorUnderBone, bool group);

    // Returns the last recorded message, or an empty string if there was no error. Stores the line
    // and the column at which the reader was when the error was recorded, counted from 0. A pointer
    // may be null if the caller does not need its number.
    const Zelk::CString& GetLastError(std::uint32_t* line, std::uint32_t* column) const;
    // Whether the error was recorded while a file was parsed. The line of the error has a meaning
    // only in this case.
    bool WasParsing() const { return parsing; }

    // Return the objects of the last import. The result is empty if the import did not create the
    // object. If an import fails early, for example because it cannot read its file, the objects of
    // an earlier import are returned.
    Zelk::Model GetLastModel() const { return lastModel; }
    Zelk::ActionSource GetLastBasePose() const { return lastBasePose; }
    Zelk::ActionSource GetLastMotion() const { return lastMotion; }

    // The nodes that the importer has at present, with the scene objects that were created for
    // them.
    const MocapSkeleton& GetSkeleton() const { return *this; }

  protected:
    using CHANNELS = MOCAPMODEL::CHANNELS;

    // Replaces the recorded error; an empty message clears it.
    void RecordError(const Zelk::CString& message) noexcept;
    // Records an error and returns `status`.
    std::int32_t Fail(std::int32_t status, const Zelk::CString& message) noexcept;
    // Records "Out of memory" and returns `status`. Allocates no memory.
    std::int32_t FailForMemory(std::int32_t status = Zelk::status::kOutOfMemory) noexcept;
    // Records that the file asks for more of `what` than its size allows. Throws std::bad_alloc.
    std::int32_t FailForCount(const wchar_t* what, const FileAllowance& allowance);
    std::int32_t FailForDerivedNames();
    // Whether the user pressed cancel. If so, "User cancelled command" is recorded.
    bool CheckCancelled();

    // The null of the node's parent. It is empty if the node is a root or if its parent has no
    // null.
    Zelk3DObject GetModelParent(const MOCAPMODEL* node) const;
    // The result of GetModelParent, or the model if that result is empty.
    Zelk3DObject ParentObject(const MOCAPMODEL* node) const;
    // The node's null. If the node has no null, this is its bone. It is empty if the node has no
    // bone either.
    static Zelk3DObject AnimatedObject(const MOCAPMODEL& node);

    // Returns `status`, which an operation of the parser has returned. If it is negative, first
    // records the parser's error. Throws std::bad_alloc.
    std::int32_t RecordParserError(const MocapParser& parser, std::int32_t status);

    // --- rotation_order.cpp ---
    // Stores pointers to the node's first three rotation slots in `list`, in slot order. If the
    // node has fewer rotation slots, the rest of `list` is not changed.
    static void GetAllRotationChannels(MOCAPMODEL* node, CHANNELS** list);
    // If the node has one or two rotation channels, adds the missing ones, with zeros as values.
    // Stores the existing channels in `list`, in slot order, and after them the new channels.
    // If the node has no rotation channel, returns mocap::kNoRotation, and `list` has three null
    // pointers.
    std::int32_t AllocateAllRotationChannels(MOCAPMODEL* node, CHANNELS** list);
    // Converts the keys of every node whose rotation channels are not in the order x, y, z.
    std::int32_t FixRotationsOrder();
    // Adds these conversions to `jobs`. The channels then have the types of the converted keys.
    std::int32_t CollectRotationsOrder(RotationJobs& jobs);

    // --- nulls_skeleton.cpp ---
    Zelk::CStatus CreateNull(MOCAPMODEL* node, Zelk3DObject& parent);
    Zelk::CStatus CreateNullsSkeleton();
    Zelk::CStatus CreateGroup();

    // --- bones_skeleton.cpp ---
    // Builds the whole skeleton as chains of bones. Nodes that cannot be bones become nulls.
    Zelk::CStatus CreateBonesSkeleton();
    // Returns how much of the allowance for chains these chains need: one for each chain, and one
    // for each null at the end of a chain. Chains that become a null are not counted.
    std::size_t CountChains(const std::vector<BoneChain>& chains) const;
    // Whether the chain is a single node that cannot be a bone.
    bool BecomesNull(const BoneChain& chain) const;
    // Creates the objects of one chain, or a single null if BecomesNull is true.
    Zelk::CStatus CreateChainObjects(const BoneChain& chain);
    Zelk::CStatus CreateChainBones(const BoneChain& chain, Zelk3DObject& parent,
                                   Zelk::ChainRoot& root, Zelk::ChainEffector& effector);
    // Creates a chain with one bone, which goes from `start` to `end`. Stores the bone in
    // `start->bone`, and the chain's root and effector in `root` and `effector`.
    Zelk::CStatus CreateBoneChain(MOCAPMODEL* start, MOCAPMODEL* end, Zelk3DObject& parent,
                                  Zelk::ChainRoot& root, Zelk::ChainEffector& effector);
    // Adds a bone to the end of the chain with this root. The new bone ends at `end`. It is stored
    // in `start->bone`.
    Zelk::CStatus CreateBone(MOCAPMODEL* start, MOCAPMODEL* end, Zelk::ChainRoot& root);
    void AddBoneBasePose(MOCAPMODEL& node);

    // --- bone_rotations.cpp ---
    // Converts rotations about the model's axes to rotations about the axes of each bone or null.
    // Call it after the skeleton was built and before AttachCurves. Returns kCancelled if the user
    // cancelled.
    std::int32_t FixBonesRotations();
    // Adds these conversions to `jobs`.
    std::int32_t CollectBonesRotations(RotationJobs& jobs);

    // --- action_curves.cpp ---
    // Sets the first `frameCount` of the keys in `fcurve`. Then adds `fcurve` to the motion, for
    // the parameter of `object` that belongs to the channel type. The host may keep the memory of
    // the keys, so they must not be changed any more.
    Zelk::CStatus AddFCurve(Zelk3DObject object, std::uint8_t channelType, const KeyArray& keys,
                            Zelk::FCurve& fcurve);
    // Adds the present value of a parameter to the base pose. If `value` is not null, also stores
    // the parameter's value there.
    Zelk::CStatus AddBasePose(Zelk3DObject object, const Zelk::CString& parameterName,
                              double* value);
    // A temporary curve. The keys of each channel are set in this curve, and go from there to the
    // motion, one channel after the other. `property` contains the curve. It belongs to the object
    // of the first node, or to the model if that node has no object. `fcurve` is empty if the host
    // did not create it.
    struct ScratchCurve {
        Zelk::CustomProperty property;
        Zelk::FCurve fcurve;
    };
    ScratchCurve CreateScratchCurve();
    // Adds a curve to the motion for each imported channel of the node that has keys, and frees the
    // keys. `fcurve` is the scratch curve.
    Zelk::CStatus AttachCurves(MOCAPMODEL& node, Zelk::FCurve& fcurve);
    // Whether the motion has frames but the channel has no keys. The channel's parameter then keeps
    // its value of the base pose.
    bool LacksKeys(const CHANNELS& channel) const { return frameCount > 0 && !channel.keys; }
    // Deletes the scratch property and puts the model into its base pose. Returns the status of the
    // command that applies the base pose.
    Zelk::CStatus FinishMotion(const ScratchCurve& scratch);

    CStringFile stringFile;
    FileAllowances allowances;
    MOCAP_FORMAT format;
    std::uint32_t errorLine = 0;
    std::uint32_t errorColumn = 0;
    Zelk::CString errorMessage;
    bool parsing = false;
    Zelk::CString modelName;  // the name that the host gave the model
    bool useNulls = false;
    bool chainFromParentJoint = true;
    bool effectorToLastBone = false;
    bool createGroup = true;
    Zelk::Model lastModel;
    Zelk::ActionSource lastBasePose;
    Zelk::ActionSource lastMotion;
    CIFPlugProgressBar* progressBar = nullptr;  // owned by the running import; null between imports

  private:
    const Zelk::CString outOfMemory;  // built in advance, while memory is available
};
