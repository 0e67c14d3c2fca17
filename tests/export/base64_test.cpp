#include "export/base64.h"

#include <gtest/gtest.h>
#include <utility>

namespace {

// The examples of RFC 4648, section 10.
TEST(Base64, WritesTheExamplesOfItsStandard) {
    const std::pair<std::string, std::string> examples[] = {{"", ""},
                                                            {"f", "Zg=="},
                                                            {"fo", "Zm8="},
                                                            {"foo", "Zm9v"},
                                                            {"foob", "Zm9vYg=="},
                                                            {"fooba", "Zm9vYmE="},
                                                            {"foobar", "Zm9vYmFy"},
                                                            {"\xFB\xFF\xFE", "+//+"}};
    for (const auto& [bytes, text] : examples)
        EXPECT_EQ(exporters::Base64(bytes), text);
}

}  // namespace
