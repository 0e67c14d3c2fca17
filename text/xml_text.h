// Writes text for XML.
#pragma once

#include <string>
#include <string_view>

namespace text {

// Returns the text for the contents of an element or an attribute: "<", ">", "&" and quotes become
// references, and control characters, which XML does not allow, become escapes as in
// EscapeControls. The result is valid UTF-8.
std::string XmlText(std::string_view bytes);

}  // namespace text
