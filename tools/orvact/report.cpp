#include "report.h"

#include <cerrno>
#include <cstring>
#include <nlohmann/json.hpp>

#include "commands.h"
#include "console.h"
#include "settings.h"

namespace {

using Json = nlohmann::ordered_json;

std::string Asked(const Remark& remark)
{
    return remark.message + (remark.suggestion.empty() ? "" : "; did you mean " + remark.suggestion + "?") + "\n";
}

}  // namespace

std::string JsonReport(const Place& place, const std::string& severity, const Remark& remark)
{
    Json report = {{"file", place.source}};
    const Json number = place.number > 0 ? Json(place.number + remark.line) : Json();
    report[place.countsActions ? "action" : "line"] = number;
    report["column"] = remark.column > 0 ? Json(remark.column) : Json();
    report["severity"] = severity;
    report["code"] = remark.code;
    report["message"] = remark.message;
    report["suggestion"] = remark.suggestion.empty() ? Json() : Json(remark.suggestion);
    return report.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string TextOf(const Place& place)
{
    return (place.source.empty() ? "" : place.source + ":") + (place.countsActions ? "action " : "") +
           std::to_string(place.number);
}

void Report(const Place& place, Severity severity, const Remark& remark)
{
    if (settings.jsonReport) {
        constexpr const char* kWords[] = {"error", "note", "answer"};
        return PrintError(JsonReport(place, kWords[static_cast<int>(severity)], remark));
    }
    Place exact = place;
    exact.number += remark.line;
    PrintError(TextOf(exact) + (remark.column ? ":" + std::to_string(remark.column) : "") + ": " +
               (severity == Severity::Note ? "note: " : "") + Asked(remark) + remark.context);
}

int Complain(const std::string& code, const std::string& message, const std::string& suggestion,
             const std::string& file)
{
    const Remark remark{code, message, suggestion, 0, 0, {}};
    if (settings.jsonReport) {
        PrintError(JsonReport({file, 0}, "error", remark));
    } else {
        PrintError("orvact: " + (file.empty() ? "" : file + ": ") + Asked(remark));
    }
    return kUsage;
}

int ReportFile(const std::string& path)
{
    return Complain("file", std::strerror(errno), {}, path);
}

bool IsSkipped(std::string_view line)
{
    const std::size_t first = line.find_first_not_of(" \t");
    return first == std::string_view::npos || line[first] == '#';
}
