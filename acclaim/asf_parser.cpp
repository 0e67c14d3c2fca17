// Parses ASF files, with one function for each production of the grammar. Sections may be in any
// order. Upper and lower case of keywords are not distinguished. A handler stops before the keyword
// of the next section. The loop in ParseASF reads that keyword.
#include <cstring>
#include <string>

#include "acclaim/acclaim_parser.h"
#include "acclaim/wide_text.h"
#include "host/status.h"
#include "mocap/parse_status.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using namespace Zelk::status;

namespace {

constexpr double kLowestVersion = 1.0;

}  // namespace

// version = ":version" number
std::int32_t AcclaimParser::ParseVersion() {
    const char* const token = GetNextAccString();
    if (token == nullptr || !textio::EqualsIgnoringCase(token, ":version"))
        return Fail(kIncompatibleFile, L"ASF file is invalid. Specify a valid ASF file");
    double version = 0.0;
    if (!stringFile.GetNextFloat(version))
        return Fail(kInvalidArgument, L"Bad ASF file version. Specify a valid ASF file");
    if (version < kLowestVersion)
        return Fail(kInvalidArgument, L"Unsupported ASF file version. Specify a valid ASF file");
    return kOk;
}

// sections = { ":name" name | ":units" units | ":documentation" text | ":root" root
//        | ":bonedata" bones | ":hierarchy" hierarchy | unknown }
std::int32_t AcclaimParser::ParseASF() {
    struct Section {
        const char* keyword;
        std::int32_t (AcclaimParser::*handle)();
        unsigned int steps;  // how many steps the progress bar advances after the section
    };
    static constexpr Section kSections[] = {
        {":name", &AcclaimParser::HandleName, 2},
        {":units", &AcclaimParser::HandleUnits, 0},
        {":documentation", &AcclaimParser::HandleDocumentation, 0},
        {":root", &AcclaimParser::HandleRoot, 3},
        {":bonedata", &AcclaimParser::HandleBoneData, 6},
        {":hierarchy", &AcclaimParser::HandleHierarchy, 4},
    };
    for (;;) {
        const char* const token = GetNextAccString();
        if (token == nullptr) return mocap::kEndOfFile;
        if (CheckCancelled()) return kCancelled;
        if (token[0] != ':') return Fail(kInvalidData, L"Invalid keyword");
        // An unknown keyword is skipped. If a value follows it, the next pass of the outer loop
        // fails, because the value does not begin with ":".
        for (const Section& section : kSections) {
            if (!EqualsIgnoringCase(token, section.keyword)) continue;
            const std::int32_t status = (this->*section.handle)();
            if (status < 0) return status;
            if (section.steps > 0) monitor.Advance(section.steps);
            break;
        }
    }
}

std::int32_t AcclaimParser::HandleName() {
    const char* const token = GetNextAccString();
    if (token == nullptr) return Fail(kUnexpectedEnd, L"Unexpected End of file");
    facts.name = token;
    return kOk;
}

// units = { "mass" number | "length" number | "angle" ( "deg" | "rad" ) }
std::int32_t AcclaimParser::HandleUnits() {
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
            if (!overrideLengthMultiplier) facts.lengthMultiplier = value;
        } else if (EqualsIgnoringCase(token, "angle")) {
            token = GetNextAccString();
            const bool isDegrees = token != nullptr && EqualsIgnoringCase(token, "deg");
            if (!isDegrees && (token == nullptr || !EqualsIgnoringCase(token, "rad")))
                return Fail(kInvalidData, L"Invalid :units.angle value");
            facts.degrees = isDegrees;
        } else {
            return Fail(kInvalidData, L"Invalid parameter in :units");
        }
    }
}

// text = everything up to the next ":" or the end of the file
std::int32_t AcclaimParser::HandleDocumentation() {
    const std::uint32_t start = stringFile.GetPosition();
    if (stringFile.GetNextString() == nullptr) return mocap::kEndOfFile;
    const char* const text = stringFile.GetBuffer() + start;
    const std::size_t length = std::strcspn(text, ":");
    const std::uint32_t end = start + static_cast<std::uint32_t>(length);
    if (length > 0) facts.documentation = WideText(std::string(text, length).c_str());
    if (stringFile.SetPosition(end)) return kOk;
    // SetPosition cannot move to the end of the file. GetNextString moves there from the last byte.
    stringFile.SetPosition(end - 1);
    stringFile.GetNextString();
    return mocap::kEndOfFile;
}

// root = { "order" channels | "axis" axes | "position" x y z | "orientation" x y z }
std::int32_t AcclaimParser::HandleRoot() {
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

std::int32_t AcclaimParser::ParseRootParameter(MOCAPMODEL& root, const char* token,
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

// `order` is the axis order after the last "axis" keyword so far. It is "xyz" if there was no such
// keyword.
std::int32_t AcclaimParser::ParseRootOrientation(MOCAPMODEL& root, const char* order) {
    static constexpr const wchar_t* kExpected[] = {L"Expected :root.rotation float value",
                                                   L"Expected :root.rotation float value",
                                                   L"Expected :root.rotation float value"};
    const std::int32_t status = ParseVector(root.orientation, kExpected);
    if (status < 0) return status;
    ConvertToXYZ(root.orientation, order);
    return kOk;
}
