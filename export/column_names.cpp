#include "export/column_names.h"

#include <cstddef>
#include <unordered_map>
#include <unordered_set>

namespace exporters {
namespace {

std::string PlainName(const std::wstring& name) {
    std::string plain;
    for (const wchar_t character : name) {
        const bool isKept = (character >= L'A' && character <= L'Z') ||
                            (character >= L'a' && character <= L'z') ||
                            (character >= L'0' && character <= L'9');
        plain += isKept ? static_cast<char>(character) : '_';
    }
    return plain.empty() ? "_" : plain;
}

}  // namespace

std::vector<std::string> ColumnNames(const Table& table) {
    std::vector<std::string> names;
    std::unordered_set<std::string> used;
    std::unordered_map<std::string, std::size_t> next;  // by plain name, the number to try next
    for (const Table::Column& column : table.Columns()) {
        const std::string plain = PlainName(column.name);
        std::string name = plain;
        std::size_t& number = next.try_emplace(plain, 2).first->second;
        while (!used.insert(name).second)
            name = plain + '_' + std::to_string(number++);
        names.push_back(std::move(name));
    }
    return names;
}

}  // namespace exporters
