#include "export/page.h"

#include <fmt/format.h>

#include "export/page_keys.h"
#include "export/page_record.h"
#include "export/page_template.h"
#include "export/tables.h"
#include "text/wide_text.h"
#include "text/xml_text.h"

namespace exporters {

bool HasViewer() {
    return kPageTemplate.has_value();
}

PageTake BuildPageTake(const headless::Scene& scene, const Options& options,
                       const RunRecord* record, const Progress& progress) {
    if (!HasViewer()) throw ExportError("this build has no viewer, which needs Node.js and npm");
    const Table table(scene, options, true);
    PageKeys keys = PackKeys(table, scene, options, progress);
    PageTake take;
    take.title = text::EncodeUtf8(TakeName(scene, options));
    take.record = PageRecord(table, scene, options, keys, record);
    take.keys = std::move(keys.text);
    take.notes = table.GetNotes();
    return take;
}

void WritePage(text::ByteSink& out, std::span<const PageTake> takes) {
    std::string title = text::XmlText(takes.front().title);
    if (takes.size() > 1) title += fmt::format(" +{}", takes.size() - 1);
    out.Write(kPageTemplate->beforeTitle);
    out.Write(title);
    out.Write(kPageTemplate->beforeTakes);
    out.Write(fmt::format(R"(<script type="application/json" id="takes">{{"version":{},"takes":[)",
                          kPageVersion));
    for (const PageTake& take : takes) {
        if (&take != &takes.front()) out.Write(",\n");
        out.Write(take.record);
    }
    out.Write("]}</script>\n");
    for (std::size_t index = 0; index < takes.size(); ++index) {
        out.Write(fmt::format(R"(<script type="application/octet-stream" id="keys-{}">)", index));
        out.Write(takes[index].keys);
        out.Write("</script>\n");
    }
    out.Write(kPageTemplate->end);
}

}  // namespace exporters
