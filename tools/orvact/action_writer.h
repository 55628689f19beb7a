// Actions as results, in a form or as a table.
#pragma once

#include <string>

#include "csv.h"
#include "forms.h"

class ActionWriter {
public:
    // Reports and gives false when there is no such form, it is not written, or it is not for a terminal.
    bool Open(const std::string& form);
    // False when the form does not hold the action, which is reported.
    bool Write(const Action& action, const Place& place);
    void Finish();

private:
    const Form* form_ = nullptr;  // null for the table
    CsvTable table_{{"name", "code"}};
};
