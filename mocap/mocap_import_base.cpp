#include "mocap/mocap_import_base.h"

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

std::int32_t CMocapImportBase::FailForCount(const wchar_t* what, const FileAllowance& allowance) {
    return Fail(Zelk::status::kOutOfMemory, ExceededAllowance(what, allowance).c_str());
}

std::int32_t CMocapImportBase::FailForDerivedNames() {
    return FailForCount(L"characters of derived names", allowances.derivedNames);
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

std::int32_t CMocapImportBase::RecordParserError(const MocapParser& parser, std::int32_t status) {
    const wchar_t* const message = parser.LastError().message;
    if (status >= 0 || message[0] == L'\0') return status;
    if (message == MocapParser::kOutOfMemoryMessage) return FailForMemory(status);
    return Fail(status, message);
}
