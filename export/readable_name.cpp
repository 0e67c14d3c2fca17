#include "export/readable_name.h"

#include "headless/text.h"
#include "text/escapes.h"
#include "text/wide_text.h"

namespace exporters {

std::string ReadableName(const Zelk::CString& name) {
    return text::EncodeUtf8(text::EscapeControls(headless::View(name)));
}

}  // namespace exporters
