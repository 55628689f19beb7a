// orvact lint: checks extension files before they are deployed.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

struct LintOptions {
    std::vector<std::string> files;
};

void AddLint(CLI::App& app, LintOptions& options);

// The exit code: 0 if the files are read as they stand, 1 after a warning or an error about one, 2 if one cannot be
// opened.
int Lint(const LintOptions& options);
