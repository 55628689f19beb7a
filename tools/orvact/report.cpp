#include "report.h"

#include <cerrno>
#include <cstring>

#include "commands.h"
#include "console.h"

void ReportAt(const Place& place, std::size_t column, const std::string& reason, const std::string& context)
{
    PrintError((place.source.empty() ? "" : place.source + ":") + std::to_string(place.line) + ":" +
               std::to_string(column) + ": " + reason + "\n" + context);
}

int ReportFile(const std::string& path)
{
    PrintError("orvact: " + path + ": " + std::strerror(errno) + "\n");
    return kUsage;
}

bool IsSkipped(const std::string& line)
{
    const std::size_t first = line.find_first_not_of(" \t");
    return first == std::string::npos || line[first] == '#';
}
