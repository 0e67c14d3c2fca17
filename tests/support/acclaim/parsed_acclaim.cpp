#include "tests/support/acclaim/parsed_acclaim.h"

#include <stdexcept>

#include "tests/support/core/session_text.h"

namespace support {

void ParsedAcclaim::Monitor::Warn(const std::wstring& message) {
    warnings.push_back(Utf8(message.c_str()));
}

void ParsedAcclaim::Open(std::string_view text) {
    if (!file_.ReadMemory(text)) throw std::runtime_error("the text is empty or too long");
}

Outcome ParsedAcclaim::Report(std::int32_t status) const {
    const MocapParser::Error& error = parser.LastError();
    Outcome outcome{status, Utf8(error.message), 0};
    if (!outcome.message.empty()) outcome.line = error.line + 1;
    return outcome;
}

Outcome ParsedAcclaim::Parse(std::string_view asf) {
    parser.ForgetSkeleton();
    skeleton = {};
    Open(asf);
    allowances_.Reset(file_.GetSize());
    std::int32_t status = parser.ParseVersion();
    if (status >= 0) status = parser.ParseASF();
    return Report(status);
}

Outcome ParsedAcclaim::ParseMotion(std::string_view frames) {
    parser.ForgetFile();
    monitor_.warnings.clear();
    skeleton.frameCount = 0;
    for (const auto& node : skeleton.models)
        for (auto& channel : node->channels)
            channel.keys.reset();
    Open(frames);
    return Report(parser.ParseAMC());
}

TestCurve ParsedAcclaim::Keys(const std::string& node, std::size_t slot) {
    TestCurve curve;
    const auto* const channels = Node(node).channels.begin();
    if (channels == nullptr) return curve;
    const auto& channel = channels[slot];
    for (std::uint32_t i = 0; channel.keys && i < skeleton.frameCount; ++i) {
        curve.times.push_back(channel.keys[i].time);
        curve.values.push_back(channel.keys[i].value);
    }
    return curve;
}

MOCAPMODEL& ParsedAcclaim::Node(const std::string& name) {
    MOCAPMODEL* const node = parser.FindModelByName(name.c_str());
    if (node == nullptr) throw std::runtime_error("no node is called " + name);
    return *node;
}

}  // namespace support
