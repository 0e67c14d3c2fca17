#include "survey/source_findings.h"

#include "survey/codes.h"
#include "survey/encoding.h"
#include "text/utf8.h"

namespace survey {

bool ReportSource(FindingList& findings) {
    const SourceText& source = findings.Source();
    const char* const first = source.Text().data();
    if (source.Text().empty()) {
        findings.Add({codes::kEmpty, Severity::Error, nullptr, "the file is empty"});
        return false;
    }
    if (source.HadMark())
        findings.Add({codes::kByteOrderMark, Severity::Note, first,
                      "the file begins with a byte-order mark; it is left out", "", true});
    if (source.WasUtf16())
        findings.Add({codes::kTextEncoding, Severity::Note, first,
                      "the file is UTF-16; it is converted to UTF-8", "", true});
    if (source.WasEncoded())
        findings.Add({codes::kTextEncoding, Severity::Note, first,
                      "the file is not UTF-8; it is converted from the encoding that --encoding "
                      "names",
                      "", true});
    return true;
}

std::string NameAsUtf8(std::string_view name, FindingList& findings) {
    if (text::IsValidUtf8(name)) return std::string(name);
    std::string converted = Windows1252ToUtf8(name);
    if (!findings.AddAgain(codes::kTextEncoding, Severity::Warning))
        findings.Add({codes::kTextEncoding, Severity::Warning, name.data(),
                      "the name \"" + converted +
                          "\" is not UTF-8 and was read as Windows-1252; "
                          "use --encoding if the file has another encoding",
                      converted, true});
    return converted;
}

}  // namespace survey
