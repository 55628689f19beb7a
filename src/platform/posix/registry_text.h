// A text in the format that the registry exports: keys in brackets, below each its values.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace Platform {

// Nothing, a number or a text. A value of any other type is nothing as well.
using RegistryValue = std::variant<std::monostate, std::uint32_t, std::u16string>;

// One search through a text, line by line. A value that is given twice counts as given the last time.
class RegistrySearch {
public:
    // The file's name is for messages. Key without its root, which is HKEY_LOCAL_MACHINE. All outlive the search.
    RegistrySearch(std::string_view fileName, std::u16string_view key, std::u16string_view value)
        : fileName_(fileName), key_(key), value_(value)
    {}

    RegistryValue Run(std::u16string_view text);

private:
    void ReadLine(std::u16string_view line);
    void ReadKey(std::u16string_view line);
    void ReadValue(std::u16string_view line);
    bool ReadQuoted(std::u16string_view& line, std::u16string& text);
    bool ReadData(std::u16string_view data, RegistryValue& value);
    bool Complain(std::string_view what) const;  // always false

    std::string_view fileName_;
    std::u16string_view key_;
    std::u16string_view value_;
    std::size_t lineNumber_ = 0;
    bool inKey_ = false;
    bool continued_ = false;  // the next line belongs to a value that is left out
    RegistryValue found_;
};

}  // namespace Platform
