// The page that shows takes, as the viewer's build makes it.
// Internal to export/.
#pragma once

#include <optional>
#include <string_view>

namespace exporters {

// The parts of the page, in UTF-8. The title goes between the first two parts, the data of the
// takes between the last two.
struct PageTemplate {
    std::string_view beforeTitle;
    std::string_view beforeTakes;
    std::string_view end;
};

// Nullopt if the viewer was not built.
extern const std::optional<PageTemplate> kPageTemplate;

}  // namespace exporters
