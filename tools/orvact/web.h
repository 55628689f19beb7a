// The frames, styles and scripts of the pages that the tool writes. They are files in web/, which the build turns into
// constants.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace Web {
extern const std::string_view kPageCss;             // what all pages share
extern const std::string_view kCatalogueHtml;       // of every page of the catalogue
extern const std::string_view kCatalogueFrontHtml;  // the body of its first
extern const std::string_view kCatalogueCss;
extern const std::string_view kCatalogueJs;
extern const std::string_view kReportHtml;
extern const std::string_view kReportCss;
extern const std::string_view kReportJs;
}  // namespace Web

std::string Replaced(std::string_view text, std::string_view part, std::string_view by);

// A frame with {{name}} replaced by the text of that name, each once over, so what is put in is not looked at.
std::string Filled(std::string_view frame, const std::vector<std::pair<std::string_view, std::string>>& texts);

// Text as HTML, also inside an attribute.
std::string Html(std::string_view text);
