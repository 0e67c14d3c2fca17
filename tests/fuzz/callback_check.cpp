#include "tests/fuzz/callback_check.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <vector>

#include "headless/session.h"
#include "host/status.h"
#include "plugin/contract.h"
#include "tests/fuzz/memory_file.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scene_requirements.h"
#include "tests/support/core/session_text.h"

namespace fuzz {
namespace {

constexpr std::size_t kHead = 24;  // bytes before the text
constexpr std::size_t kLongestCall = 6000;
constexpr const wchar_t* kCommands[] = {plugin::kBiovisionCommand, plugin::kAcclaimCommand, L"",
                                        L"Biovision import function", L"Acclaim Import function "};

// Reads values from bytes, one after the other, and zeros after the last byte.
class Bytes {
  public:
    explicit Bytes(std::string_view bytes) : bytes_(bytes) {}

    template <class Value>
    Value Next() {
        std::array<char, sizeof(Value)> raw{};
        const std::size_t count = std::min(raw.size(), bytes_.size());
        std::copy_n(bytes_.begin(), count, raw.begin());
        bytes_.remove_prefix(count);
        Value value;
        std::memcpy(&value, raw.data(), sizeof(value));
        return value;
    }

  private:
    std::string_view bytes_;
};

// A path that a host may pass as a file name.
std::wstring PathFor(std::uint8_t choice, const MemoryFile& file, std::string_view text) {
    switch (choice % 8) {
        case 0:
            return {};
        case 1:
            return L"/";
        case 2:
            return L"/nowhere/at.all";
        case 3:  // the text, surrogates and a value that is no character
            return std::wstring(text.begin(), text.end()) + L"\xD800\xDC80\x7FFFFFFF/.";
        case 4:
            return std::wstring(5000, L'x') + L'/';
        default:
            return file.Path();
    }
}

class Arguments {
  public:
    Arguments(Bytes& bytes, bool acclaim, const MemoryFile& first, const MemoryFile& second,
              std::string_view text) {
        // The type fields and the bytes next to a flag may have any content.
        for (VARIANT& record : records_) {
            std::memset(static_cast<void*>(&record), bytes.Next<std::uint8_t>(), sizeof(record));
        }
        std::size_t nextFlag = plugin::biovision::kAddClip;
        if (!acclaim) {
            PutText(plugin::biovision::kFile, bytes, first, text);
        } else {
            PutText(plugin::acclaim::kSkeletonFile, bytes, first, text);
            PutText(plugin::acclaim::kMotionFile, bytes, second, text);
            PutWord(plugin::acclaim::kApplyLimits, bytes);
            PutWord(plugin::acclaim::kOverrideLength, bytes);
            records_[plugin::acclaim::kLengthMultiplier].dblVal = bytes.Next<double>();
            nextFlag = plugin::acclaim::kAddClip;
        }
        for (int flag = 0; flag < 5; ++flag)
            PutWord(nextFlag++, bytes);
    }
    const VARIANT* Data() const { return records_.data(); }

  private:
    void PutText(std::size_t index, Bytes& bytes, const MemoryFile& file, std::string_view text) {
        const auto choice = bytes.Next<std::uint8_t>();
        texts_[index] = PathFor(choice, file, text.substr(0, 40));
        records_[index].bstrVal = choice == 8 ? nullptr : texts_[index].c_str();
    }
    // Half of the words are kTrue, which a random word would almost never be.
    void PutWord(std::size_t index, Bytes& bytes) {
        const auto byte = bytes.Next<std::uint8_t>();
        const std::uint16_t word =
            byte % 2 == 0 ? plugin::kTrue : static_cast<std::uint16_t>(byte * 257 / 2);
        std::memcpy(&records_[index].boolVal, &word, sizeof(word));
    }

    static constexpr std::size_t kRecords = plugin::acclaim::kArgumentCount;
    std::array<VARIANT, kRecords> records_;
    std::array<std::wstring, kRecords> texts_;
};

void RequireOutcome(std::int32_t result, bool isImport) {
    std::vector<std::string> lines = support::LogLines();
    if (!isImport) {
        Require(result == Zelk::status::kFail, "an unknown command was known");
        Require(lines.empty() && support::CommandLines().empty(),
                "an unknown command did something");
        return;
    }
    Require(result == 0, "the callback returned " + support::StatusText(result));
    Require(!lines.empty(), "nothing was logged");
    if (lines.front() == "2: File name not specified") return;
    Require(lines.front().starts_with("-: Importing "), "the import was not announced");
    // The warnings about a motion may come after the line with the outcome of the skeleton.
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("4: "); });
    Require(lines.back().starts_with("8: "), "no outcome was logged");
    const bool failed = std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
        return line.starts_with("8: ERROR");
    });
    RequireSoundScene(!failed, true);
}

}  // namespace

void CheckCallback(plugin::Callback callback, std::string_view input) {
    if (input.size() < kHead || input.size() > kLongestCall) return;
    Bytes bytes(input.substr(0, kHead));
    const auto choice = bytes.Next<std::uint8_t>();
    const wchar_t* const command = kCommands[choice % std::size(kCommands)];
    const bool isImport = choice % std::size(kCommands) < 2;
    const std::string_view texts = input.substr(kHead);
    const std::size_t separator = texts.find('~');
    const MemoryFile first(texts.substr(0, separator));
    const MemoryFile second(separator == std::string_view::npos ? "" : texts.substr(separator + 1));

    support::StartSession((choice & 0x80) != 0);
    const Arguments arguments(bytes, choice % std::size(kCommands) == 1, first, second, texts);
    const std::int32_t result = callback(command, arguments.Data());
    RequireOutcome(result, isImport);
    RequireSoundScene(false, true);
    headless::Session::Current().Reset();
}

}  // namespace fuzz
