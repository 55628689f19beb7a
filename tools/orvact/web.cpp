#include "web.h"

std::string Replaced(std::string_view text, std::string_view part, std::string_view by)
{
    std::string result;
    for (std::size_t at = 0;;) {
        const std::size_t found = text.find(part, at);
        result += text.substr(at, found - at);
        if (found == std::string_view::npos) return result;
        result += by;
        at = found + part.size();
    }
}

std::string Filled(std::string_view frame, const std::vector<std::pair<std::string_view, std::string>>& texts)
{
    std::string result;
    while (true) {
        const std::size_t open = frame.find("{{");
        const std::size_t close = open == std::string_view::npos ? open : frame.find("}}", open);
        // An opening without an end is text.
        result += frame.substr(0, close == std::string_view::npos ? close : open);
        if (close == std::string_view::npos) return result;
        const std::string_view name = frame.substr(open + 2, close - open - 2);
        for (const auto& [key, text] : texts) {
            if (key == name) result += text;
        }
        frame.remove_prefix(close + 2);
    }
}

std::string Html(std::string_view text)
{
    std::string result;
    for (const char unit : text) {
        switch (unit) {
        case '&': result += "&amp;"; break;
        case '<': result += "&lt;"; break;
        case '>': result += "&gt;"; break;
        case '"': result += "&quot;"; break;
        default: result += unit;
        }
    }
    return result;
}
