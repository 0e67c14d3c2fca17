// Builds the skeleton as chains of bones. A chain ends at a joint that has several children, no
// child, or only a detached child. A detached joint is not joined to its parent by a rigid bone. A
// node that cannot be a bone becomes a null. Most of these nulls are joints at which one chain ends
// and other chains begin.
#include "mocap/bones_skeleton.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include "host/constants.h"
#include "host/math.h"
#include "mocap/bone_matrices.h"
#include "mocap/mocap_import_base.h"
#include "mocap/scene_helpers.h"

namespace {

constexpr Zelk::MATH::CVector3 kChainNormal{0.0, 0.0, 1.0};
constexpr const wchar_t* kRotationNames[] = {L"rotx", L"roty", L"rotz"};

bool LiesInsideChain(const MOCAPMODEL& node) {
    return node.childCount == 1 && node.boneChildCount != 0;
}

Zelk::MATH::CVector3 PositionOf(const MOCAPMODEL& node) {
    return {node.globalPosition[0], node.globalPosition[1], node.globalPosition[2]};
}

bool HasZeroOffset(const MOCAPMODEL& node) {
    return node.offset[0] == 0.0 && node.offset[1] == 0.0 && node.offset[2] == 0.0;
}

// Encodes the name of a host object with the encoding of the process's locale. The result ends
// before the first character that this encoding does not have. Returns null when memory runs out.
std::unique_ptr<char[]> NarrowName(const Zelk::CString& name) {
    const std::size_t capacity = std::size_t{name.Length()} * MB_CUR_MAX + 1;
    std::unique_ptr<char[]> text(new (std::nothrow) char[capacity]());
    if (text) std::wcstombs(text.get(), name.GetWideString(), capacity - 1);
    return text;
}

bool EndsInNull(const MOCAPMODEL& last) {
    return last.childCount != 0 || last.isDetached;
}

std::vector<BoneChain> GatherChains(const std::vector<std::unique_ptr<MOCAPMODEL>>& nodes) {
    const auto endsChain = [](const auto& node) { return !LiesInsideChain(*node); };
    std::vector<BoneChain> chains;
    chains.reserve(static_cast<std::size_t>(std::count_if(nodes.begin(), nodes.end(), endsChain)));
    for (const auto& node : nodes)
        if (endsChain(node)) chains.push_back(GatherChain(node.get()));
    return chains;
}

// Returns the chains in the order of ChainsCompare: parents before children, and short chains
// before long chains. Chains that compare equal keep their order.
std::vector<BoneChain*> Sorted(std::vector<BoneChain>& chains) {
    std::vector<BoneChain*> sorted;
    sorted.reserve(chains.size());
    for (BoneChain& chain : chains)
        sorted.push_back(&chain);
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return ChainsCompare(&a, &b) < 0; });
    return sorted;
}

}  // namespace

BoneChain GatherChain(MOCAPMODEL* last) {
    BoneChain chain{last};
    for (MOCAPMODEL* node = last->parent; node != nullptr && node->childCount <= 1;
         node = node->parent) {
        if (node->boneChildCount == 0) break;
        chain.push_back(node);
        if (node->isDetached) break;
    }
    std::reverse(chain.begin(), chain.end());
    return chain;
}

int ChainsCompare(const void* a, const void* b) {
    const BoneChain& left = **static_cast<const BoneChain* const*>(a);
    const BoneChain& right = **static_cast<const BoneChain* const*>(b);
    if (left.front()->depth != right.front()->depth)
        return left.front()->depth > right.front()->depth ? 1 : -1;
    if (left.size() != right.size()) return left.size() > right.size() ? 1 : -1;
    return 0;
}

Zelk::CStatus CMocapImportBase::CreateBonesSkeleton() {
    std::vector<BoneChain> chains;
    std::vector<BoneChain*> sorted;
    try {
        chains = GatherChains(models);
        sorted = Sorted(chains);
    } catch (const std::bad_alloc&) {
        return Zelk::status::kOutOfMemory;
    }
    // If there are too many chains, the import fails before it creates the first chain.
    if (!allowances.chains.Reserve(CountChains(chains)))
        return FailForCount(L"bone chains and nulls at their ends", allowances.chains);
    for (BoneChain* const chain : sorted) {
        const Zelk::CStatus status = CreateChainObjects(*chain);
        if (!status.Succeeded()) return status;
        BoneChain().swap(*chain);
    }
    return Zelk::status::kOk;
}

std::size_t CMocapImportBase::CountChains(const std::vector<BoneChain>& chains) const {
    std::size_t count = 0;
    for (const BoneChain& chain : chains)
        if (!BecomesNull(chain)) count += EndsInNull(*chain.back()) ? 2 : 1;
    return count;
}

// A chain of a single node becomes a bone only if this bone can start at the parent joint of the
// node.
bool CMocapImportBase::BecomesNull(const BoneChain& chain) const {
    const MOCAPMODEL& first = *chain.front();
    return chain.size() == 1 &&
           (first.isDetached || !chainFromParentJoint || first.parent == nullptr);
}

Zelk::CStatus CMocapImportBase::CreateChainObjects(const BoneChain& chain) {
    MOCAPMODEL* const first = chain.front();
    MOCAPMODEL* const last = chain.back();
    Zelk3DObject parent = ParentObject(first);
    if (BecomesNull(chain)) return CreateNull(first, parent);

    Zelk::ChainRoot root;
    Zelk::ChainEffector effector;
    Zelk::CStatus status = CreateChainBones(chain, parent, root, effector);
    if (!status.Succeeded()) return status;

    if (effectorToLastBone) {
        const Zelk::CRefArray bones = root.GetBones();
        if (bones.GetCount() == 0) return Zelk::status::kOk;
        Zelk::CRefArray moved;
        moved.Add(effector.GetRef());
        status = Zelk3DObject(bones[bones.GetCount() - 1]).AddChild(moved);
        if (!status.Succeeded()) return status;
    }
    if (!EndsInNull(*last)) return Zelk::status::kOk;
    // The null has the position of the effector. It becomes the parent of the chains that begin at
    // this joint.
    std::fill(last->offset, last->offset + 3, 0.0);
    return CreateNull(last, effector);
}

Zelk::CStatus CMocapImportBase::CreateChainBones(const BoneChain& chain, Zelk3DObject& parent,
                                                 Zelk::ChainRoot& root,
                                                 Zelk::ChainEffector& effector) {
    MOCAPMODEL* const first = chain.front();
    const bool startsAtItself = first->isDetached && first->boneChildCount > 0;
    std::size_t next = 0;
    Zelk::CStatus status;
    if (chainFromParentJoint && !startsAtItself) {
        MOCAPMODEL start;
        // The chain begins at the parent. The names of its root, its first bone and its effector
        // contain the parent's name.
        const Zelk::CString parentName = parent.GetName();
        if (!allowances.derivedNames.Reserve(std::uint64_t{3} * parentName.Length()))
            return FailForDerivedNames();
        start.name = NarrowName(parentName);
        if (!start.name) return Zelk::status::kOutOfMemory;
        if (first->parent != nullptr)
            std::copy_n(first->parent->globalPosition, 3, start.globalPosition);
        status = CreateBoneChain(&start, first, parent, root, effector);
    } else {
        status = CreateBoneChain(first, chain[1], parent, root, effector);
        next = 1;
    }
    for (; status.Succeeded() && next + 1 < chain.size(); ++next) {
        MOCAPMODEL* const end = chain[next + 1];
        if (format == MOCAP_FORMAT_BIOVISION && end->isEndSite && HasZeroOffset(*end)) break;
        status = CreateBone(chain[next], end, root);
    }
    return status;
}

Zelk::CStatus CMocapImportBase::CreateBoneChain(MOCAPMODEL* start, MOCAPMODEL* end,
                                                Zelk3DObject& parent, Zelk::ChainRoot& root,
                                                Zelk::ChainEffector& effector) {
    const Zelk::CString name = ZelkStringFromANSI(start->name.get());
    const Zelk::CStatus status =
        parent.Add2DChain(PositionOf(*start), PositionOf(*end), kChainNormal,
                          Zelk::zk2DChainNormalAlign, name + L"Root", root);
    if (!status.Succeeded()) {
        RecordError(L"Failed to create 2D chain");
        return status;
    }
    for (const wchar_t* parameter : {L"posx", L"posy", L"posz", L"rotx", L"roty", L"rotz"})
        AddBasePose(root, parameter, nullptr);

    const Zelk::CRefArray bones = root.GetBones();
    Zelk::ChainBone bone;
    if (bones.GetCount() > 0) bone = Zelk::ChainBone(bones[0]);
    if (!bone.IsValid()) return Zelk::status::kFail;
    bone.PutName(name);
    start->bone = bone;
    AddBoneBasePose(*start);

    effector = root.GetEffector();
    effector.PutName(name + L"Eff");
    return Zelk::status::kOk;
}

Zelk::CStatus CMocapImportBase::CreateBone(MOCAPMODEL* start, MOCAPMODEL* end,
                                           Zelk::ChainRoot& root) {
    const Zelk::CStatus status = root.AddBone(PositionOf(*end), Zelk::zkChainBonePin,
                                              ZelkStringFromANSI(start->name.get()), start->bone);
    if (!status.Succeeded()) {
        RecordError(L"Failed to add bone to chain");
        return status;
    }
    AddBoneBasePose(*start);
    return Zelk::status::kOk;
}

void CMocapImportBase::AddBoneBasePose(MOCAPMODEL& node) {
    double* value = node.basePose + kRotationX - 1;
    for (const wchar_t* parameter : kRotationNames)
        AddBasePose(node.bone, parameter, value++);
    if (format == MOCAP_FORMAT_ACCLAIM && FindChannel(node, kBoneLength) != nullptr)
        AddBasePose(node.bone, L"bone.length", value);
}
