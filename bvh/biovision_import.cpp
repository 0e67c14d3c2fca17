#include "bvh/biovision_import.h"

CBiovisionImport::CBiovisionImport() : CMocapImportBase(MOCAP_FORMAT_BIOVISION) {}

CBiovisionImport::~CBiovisionImport() {
    Clear(true);
}

void CBiovisionImport::Clear(bool clearFile) {
    if (clearFile) stringFile.ClearFile();
    parser.Reset();
    models.clear();
    channelCount = 0;
    frameCount = 0;
    frameTime = 0.0;
    modelName = Zelk::CString();
}
