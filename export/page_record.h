// Describes a take for the page that shows it. docs/viewer.md describes the format.
// Internal to export/.
#pragma once

#include <string>
#include <vector>

#include "export/json_record.h"
#include "export/options.h"
#include "export/page_keys.h"
#include "export/tables.h"
#include "headless/scene.h"

namespace exporters {

// The version of the format of the records and keys.
inline constexpr int kPageVersion = 1;

// The name under which people know the take: that of its last file, without folders, or that of
// the first model.
std::wstring TakeName(const headless::Scene& scene, const Options& options);

// Returns the record as the text of a JSON object of ASCII characters. It has no "<", so it can
// be part of an HTML script element. `record` may be null.
std::string PageRecord(const Table& table, const headless::Scene& scene, const Options& options,
                       const PageKeys& keys, const RunRecord* record);

}  // namespace exporters
