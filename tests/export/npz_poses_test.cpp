// Compares a .npz that is written out of order with one that is written from front to back.
#include <gtest/gtest.h>
#include <string>

#include "export/npz.h"
#include "tests/export/exported.h"
#include "text/byte_sink.h"

namespace {

constexpr const char* kHead =
    "HIERARCHY\nROOT Hips\n{\nOFFSET 0 0 0\nCHANNELS 6 Xposition Yposition Zposition Zrotation "
    "Xrotation Yrotation\nJOINT Chest\n{\nOFFSET 0 1 0\nCHANNELS 3 Zrotation Xrotation Yrotation\n"
    "End Site\n{\nOFFSET 0 1 0\n}\n}\n}\nMOTION\n";

// Turns of more than half a turn between frames make quaternions change their signs.
std::string Turning(int frames) {
    std::string text =
        std::string(kHead) + "Frames: " + std::to_string(frames) + "\nFrame Time: 0.01\n";
    for (int frame = 0; frame < frames; ++frame) {
        const auto angle = [&](int step) { return std::to_string(frame * step % 719 - 360) + ' '; };
        text += std::to_string(frame) + " 0 1 " + angle(7) + angle(0) + angle(11) + angle(101) +
                angle(13) + angle(173) + '\n';
    }
    return text;
}

// A pipe, for example.
class Appending : public text::ByteSink {
  public:
    void Write(std::string_view added) override { bytes += added; }
    std::string bytes;
};

struct NpzCase {
    const char* name;
    int frames;
    bool isFloat;
};

// Many frames are divided between threads.
constexpr NpzCase kCases[] = {{"OneFrame", 1, false},           {"OneBlock", 64, false},
                              {"TwoBlocks", 65, false},         {"ManyBlocks", 3'000, false},
                              {"ManyFloats", 3'000, true},      {"SeveralThreads", 30'000, false},
                              {"SeveralThreads4", 30'000, true}};

TEST(NpzPoses, AreTheSameOutOfOrder) {
    for (const NpzCase& row : kCases) {
        ASSERT_TRUE(exported::ImportText(Turning(row.frames)));
        exporters::Options options;
        options.float32 = row.isFloat;
        Appending expected;
        exporters::WriteNpz(expected, exported::CurrentScene(), options, {});
        text::StringSink actual;
        exporters::WriteNpz(actual, exported::CurrentScene(), options, {});
        // Not EXPECT_EQ, whose message would be long.
        EXPECT_TRUE(actual.Bytes() == expected.bytes) << row.name;
    }
}

// Fails at the nth piece that is written out of order.
class Full : public text::StringSink {
  public:
    explicit Full(int pieces) : pieces_(pieces) {}
    void WriteAt(std::uint64_t offset, std::string_view bytes) override {
        if (pieces_-- == 0) throw text::WriteError("no room");
        StringSink::WriteAt(offset, bytes);
    }

  private:
    int pieces_;
};

TEST(NpzPoses, PassOnWhatTheSinkThrows) {
    ASSERT_TRUE(exported::ImportText(Turning(30'000)));
    for (const int pieces : {0, 3, 4, 5, 20, 41}) {
        Full full(pieces);
        EXPECT_THROW(exporters::WriteNpz(full, exported::CurrentScene(), {}, {}), text::WriteError)
            << pieces;
    }
}

}  // namespace
