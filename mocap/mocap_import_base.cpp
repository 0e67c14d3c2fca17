#include "mocap/mocap_import_base.h"

#include <new>

CMocapImportBase::CMocapImportBase(MOCAP_FORMAT sourceFormat)
    : format(sourceFormat), outOfMemory(L"Out of memory") {}

CMocapImportBase::~CMocapImportBase() = default;

void CMocapImportBase::SetOptions(bool nulls, bool fromParentJoint, bool effectorUnderBone,
                                  bool group) {
    useNulls = nulls;
    chainFromParentJoint = fromParentJoint;
    effectorToLastBone = effectorUnderBone;
    createGroup = group;
}

const Zelk::CString& CMocapImportBase::GetLastError(std::uint32_t* line,
                                                    std::uint32_t* column) const {
    if (line != nullptr) *line = errorLine;
    if (column != nullptr) *column = errorColumn;
    return errorMessage;
}

void CMocapImportBase::RecordError(const Zelk::CString& message) noexcept {
    errorMessage = message;
    const bool isError = !message.IsEmpty();
    errorLine = isError ? stringFile.GetCurrentLine() : 0;
    errorColumn = isError ? stringFile.GetCurrentColumn() : 0;
}

std::int32_t CMocapImportBase::Fail(std::int32_t status, const Zelk::CString& message) noexcept {
    RecordError(message);
    return status;
}

std::int32_t CMocapImportBase::FailForMemory(std::int32_t status) noexcept {
    return Fail(status, outOfMemory);
}

bool CMocapImportBase::CheckCancelled() {
    if (!progressBar->IsCancelled()) return false;
    RecordError(L"User cancelled command");
    return true;
}

Zelk3DObject CMocapImportBase::GetModelParent(const MOCAPMODEL* node) const {
    return node->parent != nullptr ? Zelk3DObject(node->parent->nullObject) : Zelk3DObject();
}

Zelk3DObject CMocapImportBase::ParentObject(const MOCAPMODEL* node) const {
    const Zelk3DObject parent = GetModelParent(node);
    return parent.IsValid() ? parent : lastModel;
}

Zelk3DObject CMocapImportBase::AnimatedObject(const MOCAPMODEL& node) {
    return node.nullObject.IsValid() ? Zelk3DObject(node.nullObject) : Zelk3DObject(node.bone);
}

void CMocapImportBase::ResetAllowances() {
    for (FileAllowance* const allowance : {&derivedNames, &nodesLeft, &chainBytes})
        allowance->Reset(stringFile.GetSize());
}

MOCAPMODEL* CMocapImportBase::AppendNode() {
    if (!nodesLeft.Take()) return nullptr;
    std::unique_ptr<MOCAPMODEL> node(new (std::nothrow) MOCAPMODEL);
    if (!node) return nullptr;
    try {
        models.push_back(std::move(node));
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    return models.back().get();
}
