// The options that hold for every command.
#pragma once

#include <string>

// The encoding of an input's texts; Found is UTF-8, or UTF-16 after a byte order mark.
enum class Encoding { Found, Utf8, Utf16Little, Utf16Big, Latin1 };

struct Settings {
    bool strict = false;      // remarks about an action are errors
    bool names = false;       // enum values by name, in and out
    bool force = false;       // binary output to a terminal
    bool jsonReport = false;  // diagnoses as JSON, one a line
    Encoding encoding = Encoding::Found;
};

// Set once, before a command begins.
inline Settings settings;
