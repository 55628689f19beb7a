// orvact lint: checks extension files before they are deployed.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

struct LintOptions {
    std::vector<std::string> files;
};

void AddLint(CLI::App& app, LintOptions& options);

// The exit code: 0 when the files are read as they stand, 1 when something is to be said about one, 2 when one cannot
// be opened.
int Lint(const LintOptions& options);
