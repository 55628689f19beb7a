// A text in the format that the registry exports: keys in brackets, below each its values.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace Platform {

// Nothing, a number or a text. A value of any other type reads as nothing.
using RegistryValue = std::variant<std::monostate, std::uint32_t, std::u16string>;

struct RegistryEntry {
    std::u16string name;
    RegistryValue value;
};

// One reading of a text, line by line, that collects the values of one key. Of a value that is given twice the last
// counts.
class RegistryReader {
public:
    // The file's name is for messages. Key without its root, which is HKEY_LOCAL_MACHINE. Both outlive the reading.
    RegistryReader(std::string_view fileName, std::u16string_view key) : fileName_(fileName), key_(key) {}

    std::vector<RegistryEntry> Run(std::u16string_view text);

private:
    void ReadLine(std::u16string_view line);
    void ReadKey(std::u16string_view line);
    void ReadValue(std::u16string_view line);
    bool ReadQuoted(std::u16string_view& line, std::u16string& text);
    bool ReadData(std::u16string_view data, RegistryValue& value);
    void Keep(std::u16string name, RegistryValue value);
    bool Complain(std::string_view what) const;  // always false

    std::string_view fileName_;
    std::u16string_view key_;
    std::size_t lineNumber_ = 0;
    bool seenKey_ = false;
    bool inKey_ = false;
    bool continued_ = false;  // the next line belongs to a value that is skipped
    std::vector<RegistryEntry> found_;
    std::map<std::u16string, std::size_t> places_;  // among what was found, by lower-cased name
};

}  // namespace Platform
