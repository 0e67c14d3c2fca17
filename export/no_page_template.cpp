// Takes the place of the generated source if the viewer is not built.
#include "export/page_template.h"

namespace exporters {

const std::optional<PageTemplate> kPageTemplate = std::nullopt;

}  // namespace exporters
