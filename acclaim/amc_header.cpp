// Parses the header of an AMC file.
#include "acclaim/acclaim_parser.h"
#include "host/status.h"
#include "textio/ascii.h"

using textio::EqualsIgnoringCase;
using namespace Zelk::status;

// header = [ ":SAMPLES-PER-SECOND" n ] ":fully-specified" [ unit ]
std::int32_t AcclaimParser::ParseMotionHeader() {
    const char* token = GetNextAccString();
    if (token != nullptr && EqualsIgnoringCase(token, ":SAMPLES-PER-SECOND")) {
        int samples = 0;
        if (stringFile.GetNextInt(samples) && samples > 1) facts.frameTime = 1.0 / samples;
        token = GetNextAccString();
    }
    if (token == nullptr || !EqualsIgnoringCase(token, ":fully-specified"))
        return Fail(kIncompatibleFile,
                    L"AMC file is invalid. Only ':fully-specified' motion files are supported");
    return ParseAngleUnit();
}

// unit = ":degrees" | ":radians"
// If there is no unit, the angles have the unit of the skeleton file.
std::int32_t AcclaimParser::ParseAngleUnit() {
    const std::uint32_t position = stringFile.GetPosition();
    const char* const token = GetNextAccString();
    if (token == nullptr) return Fail(kUnexpectedEnd, L"Unexpected end of file");
    if (token[0] != ':') {
        stringFile.SetPosition(position);
        return kOk;
    }
    const bool inDegrees = EqualsIgnoringCase(token, ":degrees");
    if (!inDegrees && !EqualsIgnoringCase(token, ":radians"))
        return Fail(kInvalidData, L"Unknown keyword");
    if (inDegrees != facts.degrees)
        return Fail(kIncompatibleFile,
                    L"Incompatible AMC file. File must use same angle units as the ASF file");
    return kOk;
}
