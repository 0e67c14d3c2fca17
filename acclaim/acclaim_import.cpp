#include "acclaim/acclaim_import.h"

#include "host/application.h"

CAcclaimImport::CAcclaimImport() : CMocapImportBase(MOCAP_FORMAT_ACCLAIM) {}

CAcclaimImport::~CAcclaimImport() {
    Clear(true);
}

void CAcclaimImport::Monitor::Warn(const std::wstring& message) {
    Zelk::Application().LogMessage(Zelk::CString(message.c_str()), Zelk::zkWarningSeverity);
}

void CAcclaimImport::Clear(bool all) {
    stringFile.ClearFile();
    parser.ForgetFile();
    frameCount = 0;
    for (const auto& node : models)
        for (CHANNELS& channel : node->channels)
            channel.keys.reset();
    if (!all) return;
    parser.ForgetSkeleton();
    channelCount = 0;
    documentation = Zelk::CString();
    modelName = Zelk::CString();
    models.clear();
}

std::int32_t CAcclaimImport::RefuseFile(bool all, std::int32_t status,
                                        const Zelk::CString& message) {
    Clear(all);
    return Fail(status, message);
}
