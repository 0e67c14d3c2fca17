#include "text/csv_record.h"

namespace text {

std::string CsvField(const std::string& field) {
    if (field.find_first_of(",\"\r\n") == std::string::npos) return field;
    std::string quoted = "\"";
    for (const char character : field) {
        if (character == '"') quoted += '"';
        quoted += character;
    }
    return quoted + '"';
}

std::string CsvRecord(const std::vector<std::string>& fields) {
    std::string record;
    for (const std::string& field : fields)
        record += CsvField(field) + ',';
    if (record.empty()) return "\n";
    record.back() = '\n';
    return record;
}

std::vector<std::string> ReadCsvRecord(std::string_view& text) {
    std::vector<std::string> fields(1);
    bool inQuotes = false;
    for (std::size_t index = 0; index < text.size(); ++index) {
        const char character = text[index];
        if (inQuotes && character == '"' && text.substr(index + 1).starts_with('"')) {
            fields.back() += '"';
            ++index;
        } else if (character == '"') {
            inQuotes = !inQuotes;
        } else if (!inQuotes && character == ',') {
            fields.emplace_back();
        } else if (!inQuotes && character == '\n') {
            text.remove_prefix(index + 1);
            return fields;
        } else {
            fields.back() += character;
        }
    }
    text = {};
    return {};
}

}  // namespace text
