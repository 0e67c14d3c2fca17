// The ASF grammar, one function a production. Sections come in any order; keywords and values are
// matched in any letter case. A handler leaves the next section's keyword to the loop.
#include <cstring>
#include <string>

#include "acclaim/acclaim_import.h"
#include "acclaim/wide_text.h"
#include "mocap/parse_status.h"
#include "mocap/scene_helpers.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using namespace Zelk::status;

// file = { ":name" name | ":units" units | ":documentation" text | ":root" root
//        | ":bonedata" bones | ":hierarchy" hierarchy | unknown }
std::int32_t CAcclaimImport::ParseASF() {
    struct Section {
        const char* keyword;
        std::int32_t (CAcclaimImport::*handle)();
        unsigned int steps;  // of the progress bar
    };
    static constexpr Section kSections[] = {
        {":name", &CAcclaimImport::HandleName, 2},
        {":units", &CAcclaimImport::HandleUnits, 0},
        {":documentation", &CAcclaimImport::HandleDocumentation, 0},
        {":root", &CAcclaimImport::HandleRoot, 3},
        {":bonedata", &CAcclaimImport::HandleBoneData, 6},
        {":hierarchy", &CAcclaimImport::HandleHierarchy, 4},
    };
    for (;;) {
        const char* const token = GetNextAccString();
        if (token == nullptr) return mocap::kEndOfFile;
        if (CheckCancelled()) return kCancelled;
        if (token[0] != ':') return Fail(kInvalidData, L"Invalid keyword");
        // An unknown section has no content: a value behind it is met by the next round, which
        // refuses it.
        for (const Section& section : kSections) {
            if (!EqualsIgnoringCase(token, section.keyword)) continue;
            const std::int32_t status = (this->*section.handle)();
            if (status < 0) return status;
            if (section.steps > 0) progressBar->Advance(section.steps);
            break;
        }
    }
}

std::int32_t CAcclaimImport::HandleName() {
    const char* const token = GetNextAccString();
    if (token == nullptr) return Fail(kUnexpectedEnd, L"Unexpected End of file");
    modelName = ZelkStringFromANSI(token);
    return kOk;
}

// units = { "mass" number | "length" number | "angle" ( "deg" | "rad" ) }
std::int32_t CAcclaimImport::HandleUnits() {
    for (;;) {
        const std::uint32_t position = stringFile.GetPosition();
        const char* token = GetNextAccString();
        if (token == nullptr) return mocap::kEndOfFile;
        double value = 0.0;
        if (token[0] == ':') {
            stringFile.SetPosition(position);
            return kOk;
        }
        if (EqualsIgnoringCase(token, "mass")) {
            if (!stringFile.GetNextFloat(value))
                return Fail(kInvalidData, L"Failed to get :units.mass");
        } else if (EqualsIgnoringCase(token, "length")) {
            if (!stringFile.GetNextFloat(value))
                return Fail(kInvalidData, L"Failed to get :units.length");
            if (!overrideLengthMultiplier) lengthMultiplier = value;
        } else if (EqualsIgnoringCase(token, "angle")) {
            token = GetNextAccString();
            const bool isDegrees = token != nullptr && EqualsIgnoringCase(token, "deg");
            if (!isDegrees && (token == nullptr || !EqualsIgnoringCase(token, "rad")))
                return Fail(kInvalidData, L"Invalid :units.angle value");
            degrees = isDegrees;
        } else {
            return Fail(kInvalidData, L"Invalid parameter in :units");
        }
    }
}

// text = everything up to the next ":" or the end of the file
std::int32_t CAcclaimImport::HandleDocumentation() {
    const std::uint32_t start = stringFile.GetPosition();
    if (stringFile.GetNextString() == nullptr) return mocap::kEndOfFile;
    const char* const text = stringFile.GetBuffer() + start;
    const std::size_t length = std::strcspn(text, ":");
    const std::uint32_t end = start + static_cast<std::uint32_t>(length);
    if (length > 0)
        documentation = Zelk::CString(WideText(std::string(text, length).c_str()).c_str());
    if (stringFile.SetPosition(end)) return kOk;
    // The end of the file is not a position to go to, but one that the last token leads to.
    stringFile.SetPosition(end - 1);
    stringFile.GetNextString();
    return mocap::kEndOfFile;
}

// root = { "order" channels | "axis" axes | "position" x y z | "orientation" x y z }
std::int32_t CAcclaimImport::HandleRoot() {
    MOCAPMODEL* const root = AppendNode();
    if (root == nullptr) return kOutOfMemory;
    root->name = CopyText("root");
    if (!root->name) return FailForMemory();

    const char* order = "xyz";
    for (;;) {
        const std::uint32_t position = stringFile.GetPosition();
        const char* const token = GetNextAccString();
        if (token == nullptr) break;
        if (token[0] == ':') {
            stringFile.SetPosition(position);
            break;
        }
        const std::int32_t status = ParseRootParameter(*root, token, order);
        if (status < 0) return status;
    }
    ConvertToDegrees(root->orientation);
    root->isDetached = true;
    std::memcpy(root->globalPosition, root->offset, sizeof(root->offset));
    return kOk;
}

std::int32_t CAcclaimImport::ParseRootParameter(MOCAPMODEL& root, const char* token,
                                                const char*& order) {
    static constexpr const wchar_t* kExpected[] = {L"Expected :root.position x value",
                                                   L"Expected :root.position y value",
                                                   L"Expected :root.position z value"};
    if (EqualsIgnoringCase(token, "axis"))
        return ParseAxisOrder(order, L"Unknown :root.axis order");
    if (EqualsIgnoringCase(token, "order")) return ParseRootOrder(root);
    if (EqualsIgnoringCase(token, "position")) return ParseVector(root.offset, kExpected);
    if (EqualsIgnoringCase(token, "orientation")) return ParseRootOrientation(root, order);
    return Fail(kInvalidData, L"Invalid parameter in :root");
}

// The order is the one that the section named before.
std::int32_t CAcclaimImport::ParseRootOrientation(MOCAPMODEL& root, const char* order) {
    static constexpr const wchar_t* kExpected[] = {L"Expected :root.rotation float value",
                                                   L"Expected :root.rotation float value",
                                                   L"Expected :root.rotation float value"};
    const std::int32_t status = ParseVector(root.orientation, kExpected);
    if (status < 0) return status;
    ConvertToXYZ(root.orientation, order);
    return kOk;
}
