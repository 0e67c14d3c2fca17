#include "text/xml_text.h"

#include "text/escapes.h"

namespace text {

std::string XmlText(std::string_view bytes) {
    std::string text;
    for (const char character : EscapeControls(bytes)) {
        switch (character) {
            case '<':
                text += "&lt;";
                break;
            case '>':
                text += "&gt;";
                break;
            case '&':
                text += "&amp;";
                break;
            case '"':
                text += "&quot;";
                break;
            case '\'':
                text += "&apos;";
                break;
            default:
                text += character;
        }
    }
    return text;
}

}  // namespace text
