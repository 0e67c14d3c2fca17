#include "acclaim/acclaim_import.h"

#include <cstring>
#include <limits>

namespace {

constexpr std::uint32_t kUnknown = std::numeric_limits<std::uint32_t>::max();

}  // namespace

CAcclaimImport::CAcclaimImport() : CMocapImportBase(MOCAP_FORMAT_ACCLAIM), lastLine(kUnknown) {
    hasSeparators = stringFile.RegisterWhiteSpaces("\t\r\n (),");
}

CAcclaimImport::~CAcclaimImport() {
    Clear(true);
}

void CAcclaimImport::OverrideLengthMultiplier(bool overrideMultiplier, double multiplier) {
    overrideLengthMultiplier = overrideMultiplier;
    if (overrideMultiplier) lengthMultiplier = multiplier;
}

void CAcclaimImport::Clear(bool all) {
    stringFile.ClearFile();
    lastLine = kUnknown;
    frameCount = 0;
    lastFrame = 0;
    for (const auto& node : models)
        for (CHANNELS& channel : node->channels)
            channel.keys.reset();
    if (!all) return;
    degrees = true;
    channelCount = 0;
    documentation = Zelk::CString();
    modelName = Zelk::CString();
    models.clear();
    names.Clear();
    namedNodes = 0;
    settledNodes = 0;
}

MOCAPMODEL* CAcclaimImport::FindModelByName(const char* name) {
    for (; namedNodes < models.size(); ++namedNodes)
        if (models[namedNodes]->name)
            names.Add(models[namedNodes]->name.get(), static_cast<std::uint32_t>(namedNodes));
    const std::uint32_t found = names.Find(name);
    return found == NodeNames::kNone ? nullptr : models[found].get();
}

const char* CAcclaimImport::GetNextAccString() {
    for (;;) {
        const char* const token = stringFile.GetNextString();
        if (token == nullptr || token[0] != '#') return token;
        if (SkipLine()) continue;
        // Back before the comment, so that whoever asks again meets it again and not its words.
        const std::uint32_t end = stringFile.GetPosition();
        if (end < stringFile.GetSize())
            stringFile.SetPosition(end - static_cast<std::uint32_t>(std::strlen(token)));
        return nullptr;
    }
}

// What is known about the last line is kept: a long one may be full of words to skip.
bool CAcclaimImport::SkipLine() {
    if (stringFile.GetPosition() >= lastLine) return false;
    if (stringFile.GotoNextLine()) return true;
    lastLine = stringFile.GetPosition();
    return false;
}
