#include "export/csv_names.h"

#include <vector>

#include "export/column_names.h"
#include "export/tables.h"
#include "text/csv_record.h"
#include "text/wide_text.h"

namespace exporters {
namespace {

void WriteRows(text::ByteSink& out, const Table& table) {
    const std::vector<Table::Column>& columns = table.Columns();
    const std::vector<std::string> names = ColumnNames(table);
    out.Write("joint,column,parent,end_site\n");
    for (std::size_t index = 0; index < columns.size(); ++index) {
        const std::size_t parent = columns[index].parent;
        out.Write(text::CsvRecord({text::EncodeUtf8(columns[index].sourceName), names[index],
                                   parent == Joint::kNoParent ? "" : names[parent],
                                   columns[index].isEndSite ? "1" : "0"}));
    }
}

}  // namespace

std::string WriteCsvNames(text::ByteSink& out, const headless::Scene& scene,
                          const Options& options) {
    try {
        WriteRows(out, Table(scene, options, false));
        return {};
    } catch (const ExportError& error) {
        return error.what();
    }
}

}  // namespace exporters
