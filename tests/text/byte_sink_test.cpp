#include "text/byte_sink.h"

#include <gtest/gtest.h>

namespace {

TEST(StringSink, TakesSkippedBytesLater) {
    text::StringSink sink;
    sink.Write("ab");
    ASSERT_TRUE(sink.CanSkip());
    EXPECT_EQ(sink.Skip(4), 2U);
    EXPECT_EQ(sink.Skip(0), 6U);
    sink.Write("gh");
    sink.WriteAt(4, "ef");
    sink.WriteAt(2, "cd");
    EXPECT_EQ(sink.Bytes(), "abcdefgh");
}

// A pipe, for example.
class Appending : public text::ByteSink {
  public:
    void Write(std::string_view) override {}
};

TEST(ByteSink, CannotSkipUnlessItSaysSo) {
    Appending sink;
    EXPECT_FALSE(sink.CanSkip());
    EXPECT_THROW(sink.Skip(1), text::WriteError);
    EXPECT_THROW(sink.WriteAt(0, "a"), text::WriteError);
}

}  // namespace
