// What the pages show: the catalogue of this process, and what extension files would add to it.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "catalogue_view.h"

struct CatalogueContent {
    std::vector<ClassView> classes;
    std::vector<ActionView> actions;
    std::vector<EnumView> enums;
    std::vector<ParameterView> general;

    static CatalogueContent Present();
    // Reads extension files as the library does while it loads, and adds what is not there yet. Faults inside the files
    // are reported by lint. False, with a report, for a file that cannot be read or is not XML.
    bool AddExtensions(const std::vector<std::string>& files);

    const EnumView* FindEnum(std::uint32_t id) const;
};
