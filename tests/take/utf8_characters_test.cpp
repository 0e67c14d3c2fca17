#include "take/utf8_characters.h"

#include <clocale>
#include <cwchar>
#include <gtest/gtest.h>

namespace {

wchar_t FirstOf(const char* bytes) {
    wchar_t character = 0;
    std::mbstate_t state{};
    return std::mbrtowc(&character, bytes, 4, &state) <= 4 ? character : L'\0';
}

TEST(Utf8Characters, AreDecodedWhileTheObjectExists) {
    const char bytes[] = "\xE6\xAD\xA9";
    const locale_t plain = newlocale(LC_CTYPE_MASK, "C", nullptr);
    const locale_t previous = uselocale(plain);
    EXPECT_NE(FirstOf(bytes), L'\x6B69');
    {
        const take::Utf8Characters characters(true);
        EXPECT_EQ(FirstOf(bytes), L'\x6B69');
    }
    EXPECT_EQ(uselocale(nullptr), plain);
    {
        const take::Utf8Characters characters(false);
        EXPECT_EQ(uselocale(nullptr), plain);
    }
    uselocale(previous);
    freelocale(plain);
}

}  // namespace
