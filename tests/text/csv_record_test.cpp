#include "text/csv_record.h"

#include <gmock/gmock.h>

namespace {

using testing::IsEmpty;
using text::CsvRecord;
using text::ReadCsvRecord;

TEST(CsvRecord, QuotesFieldsThatNeedIt) {
    EXPECT_EQ(CsvRecord({"a", "b c", ""}), "a,b c,\n");
    EXPECT_EQ(CsvRecord({"a,b", "say \"a\"", "a\nb", "a\rb"}),
              "\"a,b\",\"say \"\"a\"\"\",\"a\nb\",\"a\rb\"\n");
    EXPECT_EQ(CsvRecord({""}), "\n");
}

TEST(CsvRecord, IsReadBack) {
    const std::vector<std::string> first = {"plain", "", "a,b", "\"", "\"\"", "a\r\n\"b\"\n", ""};
    const std::vector<std::string> second = {"", "x"};
    const std::string text = CsvRecord(first) + CsvRecord(second);
    std::string_view rest = text;
    EXPECT_EQ(ReadCsvRecord(rest), first);
    EXPECT_EQ(ReadCsvRecord(rest), second);
    EXPECT_THAT(rest, IsEmpty());
}

TEST(CsvRecord, IsNotReadIfItIsCutOff) {
    const std::string text = CsvRecord({"a,\n", "12.5"});
    for (std::size_t length = 0; length < text.size(); ++length) {
        std::string_view rest(text.data(), length);
        EXPECT_THAT(ReadCsvRecord(rest), IsEmpty()) << length;
        EXPECT_THAT(rest, IsEmpty());
    }
}

}  // namespace
