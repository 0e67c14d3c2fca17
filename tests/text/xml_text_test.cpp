#include "text/xml_text.h"

#include <gtest/gtest.h>

namespace {

struct Row {
    const char* bytes;
    const char* text;
};

const Row kRows[] = {
    {"walk", "walk"},
    {"<img src=x onerror=alert(1)>", "&lt;img src=x onerror=alert(1)&gt;"},
    {"</script>", "&lt;/script&gt;"},
    {"a & b", "a &amp; b"},
    {"\"'", "&quot;&apos;"},
    {"tab\tand\nline", "tab\\tand\\nline"},
    {"\x01\x1b", "\\x01\\x1b"},
    {"H\xC3\xBC"
     "fte \xE8\x85\xB0",
     "H\xC3\xBC"
     "fte \xE8\x85\xB0"},
    {"\xFF", "\xEF\xBF\xBD"},
    {"", ""},
};

TEST(XmlText, ReplacesWhatXmlWouldRead) {
    for (const Row& row : kRows)
        EXPECT_EQ(text::XmlText(row.bytes), row.text);
}

}  // namespace
