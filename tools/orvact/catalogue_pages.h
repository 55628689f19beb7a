// The catalogue as a folder of pages that link to each other, for a browser without a server.
#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

struct CatalogueOptions {
    std::string folder;
    std::vector<std::string> extensions;  // files whose content is shown as well
};

int WriteCatalogue(const CatalogueOptions& options);
