// Where in an input something is wrong, on standard error.
#pragma once

#include <cstddef>
#include <string>

struct Place {
    std::string source;  // "" for an argument
    std::size_t line;
};

// "source:line:column: reason", and lines that show the place.
void ReportAt(const Place& place, std::size_t column, const std::string& reason, const std::string& context = {});

// Why a file cannot be opened or read, by errno; returns the exit code.
int ReportFile(const std::string& path);

// Blank lines and lines that begin with #.
bool IsSkipped(const std::string& line);
