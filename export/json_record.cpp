#include "export/json_record.h"

#include <string>
#include <string_view>
#include <variant>

#include "export/json_scene.h"
#include "headless/text.h"
#include "text/byte_sink.h"
#include "text/json_text.h"

namespace exporters {
namespace {

// Writes the member `key`: an array with one line for each element. `append(line, element)` appends
// the text of an element to `line`.
template <class Range, class AppendElement>
void WriteLines(text::ByteSink& out, std::string_view key, const Range& range,
                AppendElement append) {
    std::string line = "\"" + std::string(key) + "\": [";
    bool first = true;
    for (const auto& element : range) {
        line += first ? "\n  " : ",\n  ";
        first = false;
        append(line, element);
        out.Write(line);
        line.clear();
    }
    line += first ? "],\n" : "\n],\n";
    out.Write(line);
}

void AppendLogLine(std::string& text, const headless::LogLine& line) {
    text += "{\"severity\": ";
    text += line.severity ? std::to_string(*line.severity) : "null";
    text += ", \"text\": ";
    text::AppendJsonString(text, headless::View(line.text));
    text += '}';
}

std::string_view NameOf(headless::BarEvent::Kind kind) {
    using Kind = headless::BarEvent::Kind;
    switch (kind) {
        case Kind::Minimum:
            return "minimum";
        case Kind::Maximum:
            return "maximum";
        case Kind::Step:
            return "step";
        case Kind::Value:
            return "value";
        case Kind::Caption:
            return "caption";
        case Kind::Visible:
            return "visible";
    }
    return {};
}

void AppendBarEvent(std::string& text, const headless::BarEvent& event) {
    using Kind = headless::BarEvent::Kind;
    text += "[\"";
    text += NameOf(event.kind);
    text += "\", ";
    if (event.kind == Kind::Caption)
        text::AppendJsonString(text, headless::View(event.caption));
    else if (event.kind == Kind::Visible)
        text += event.number != 0 ? "true" : "false";
    else
        text += std::to_string(event.number);
    text += ']';
}

void AppendArgument(std::string& text, const headless::CommandRecord::Argument& argument) {
    if (const auto* integer = std::get_if<std::int32_t>(&argument))
        text += std::to_string(*integer);
    else if (const auto* number = std::get_if<double>(&argument))
        text::AppendJsonNumber(text, *number);
    else if (const auto* name = std::get_if<Zelk::CString>(&argument))
        text::AppendJsonString(text, headless::View(*name));
    else
        text += "null";
}

void AppendCommand(std::string& text, const headless::CommandRecord& command) {
    text += "{\"name\": ";
    text::AppendJsonString(text, headless::View(command.name));
    text += ", \"args\": [";
    for (std::size_t index = 0; index < command.arguments.size(); ++index) {
        if (index > 0) text += ", ";
        AppendArgument(text, command.arguments[index]);
    }
    text += "], \"status\": " + std::to_string(static_cast<std::uint32_t>(command.status)) + '}';
}

}  // namespace

void WriteJsonRecord(text::ByteSink& out, const headless::Scene& scene, const RunRecord& record,
                     const Progress& progress) {
    const auto result = static_cast<std::uint32_t>(record.result);
    out.Write("{\n\"result\": " + std::to_string(result) + ",\n");
    WriteLines(out, "log", record.log, AppendLogLine);
    WriteLines(out, "bar", record.bar, AppendBarEvent);
    WriteLines(out, "commands", record.commands, AppendCommand);
    out.Write("\"userInput\": " + record.userInput + ",\n");
    if (record.findings)
        WriteLines(out, "findings", *record.findings,
                   [](std::string& line, const std::string& finding) { line += finding; });
    if (record.multiplied != 1.0) {
        std::string multiplied = "\"multiplied\": ";
        text::AppendJsonNumber(multiplied, record.multiplied);
        out.Write(multiplied + ",\n");
    }
    WriteJsonScene(out, scene, progress);
    out.Write("}\n");
}

}  // namespace exporters
