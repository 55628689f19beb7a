// What stands below the options on the help pages: rules, exit codes and examples.
#pragma once

#include <string>

extern const char* const kHelpFooter;
extern const char* const kShowFooter;
extern const char* const kListFooter;
extern const char* const kDescribeFooter;
extern const char* const kCatalogueFooter;
extern const char* const kConvertFooter;
extern const char* const kDumpFooter;
extern const char* const kMatchFooter;
extern const char* const kEventsFooter;
extern const char* const kEventsStoreFooter;
extern const char* const kEventsListFooter;
extern const char* const kEventsFollowFooter;
extern const char* const kEventsReportFooter;
extern const char* const kEventsShowFooter;
extern const char* const kEventsPruneFooter;

// The forms as a list, with what each is for.
std::string FormsHelp();
