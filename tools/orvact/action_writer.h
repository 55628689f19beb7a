// Actions as results, in a form or as a table.
#pragma once

#include <string>

#include "csv.h"
#include "forms.h"

class ActionWriter {
public:
    // False, with a report, if the form does not exist, is only read, or is not for a terminal.
    bool Open(const std::string& form);
    // False when the form does not hold the action, which is reported.
    bool Write(const Action& action, const Place& place);
    void Finish();

private:
    const Form* form_ = nullptr;  // null for the table
    CsvTable table_{{"name", "code"}};
};
