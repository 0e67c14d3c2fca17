#include "tests/support/core/session_text.h"

#include <cstdio>
#include <variant>

#include "headless/session.h"

namespace support {

namespace {

void AppendUtf8(std::string& bytes, char32_t c) {
    if (c < 0x80) {
        bytes += static_cast<char>(c);
        return;
    }
    const int tails = c < 0x800 ? 1 : c < 0x10000 ? 2 : 3;
    const char32_t heads[] = {0, 0xC0, 0xE0, 0xF0};
    bytes += static_cast<char>(heads[tails] | (c >> (6 * tails)));
    for (int tail = tails - 1; tail >= 0; --tail)
        bytes += static_cast<char>(0x80 | ((c >> (6 * tail)) & 0x3F));
}

struct ArgumentText {
    std::string operator()(std::monostate) const { return "-"; }
    std::string operator()(std::int32_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return std::to_string(value); }
    std::string operator()(const Zelk::CString& value) const { return Utf8(value); }
};

std::string EventText(const headless::BarEvent& event) {
    using Kind = headless::BarEvent::Kind;
    if (event.kind == Kind::Caption) return "caption " + Utf8(event.caption);
    const char* const name = event.kind == Kind::Minimum   ? "minimum "
                             : event.kind == Kind::Maximum ? "maximum "
                             : event.kind == Kind::Step    ? "step "
                             : event.kind == Kind::Value   ? "value "
                                                           : "visible ";
    return name + std::to_string(event.number);
}

}  // namespace

std::string Utf8(const Zelk::CString& text) {
    std::string bytes;
    for (const wchar_t* c = text.GetWideString(); *c != L'\0'; ++c)
        AppendUtf8(bytes, static_cast<char32_t>(*c));
    return bytes;
}

Lines BarLines() {
    Lines lines;
    for (const headless::BarEvent& event : headless::Session::Current().Bar())
        lines.push_back(EventText(event));
    return lines;
}

Lines LogLines() {
    Lines lines;
    for (const headless::LogLine& line : headless::Session::Current().Log())
        lines.push_back((line.severity ? std::to_string(*line.severity) : "-") + ": " +
                        Utf8(line.text));
    return lines;
}

Lines CommandLines() {
    Lines lines;
    for (const headless::CommandRecord& command : headless::Session::Current().Commands()) {
        std::string line = Utf8(command.name) + "(";
        for (std::size_t i = 0; i < command.arguments.size(); ++i) {
            if (i > 0) line += ", ";
            line += std::visit(ArgumentText(), command.arguments[i]);
        }
        line += ") ";
        lines.push_back(line + (command.status == 0 ? "0" : StatusText(command.status)));
    }
    return lines;
}

std::string StatusText(std::int32_t status) {
    char text[16];
    std::snprintf(text, sizeof(text), "0x%08X", static_cast<unsigned>(status));
    return text;
}

bool BarIsHidden() {
    using Kind = headless::BarEvent::Kind;
    bool visible = false;
    for (const headless::BarEvent& event : headless::Session::Current().Bar())
        if (event.kind == Kind::Visible) visible = event.number != 0;
    return !visible;
}

void StartSession(bool interactive) {
    headless::Session::Current().Reset();
    headless::Session::Current().SetInteractive(interactive);
}

}  // namespace support
