// What the options say that hold for every command.
#pragma once

#include <string>

// In which bytes the texts of an input stand; Found is UTF-8, or UTF-16 where a byte order mark says so.
enum class Encoding { Found, Utf8, Utf16Little, Utf16Big, Latin1 };

struct Settings {
    bool strict = false;      // what is to be said about an action is an error
    bool names = false;       // enum values by name, in and out
    bool force = false;       // binary output to a terminal
    bool jsonReport = false;  // diagnoses as JSON, one a line
    Encoding encoding = Encoding::Found;
};

// Set once, before a command begins.
inline Settings settings;
