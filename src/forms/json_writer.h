// JSON by hand, for web-facing clients: text appended to a string, no tree, no way back.
//
// What web clients know of it and what is therefore kept, although a strict parser refuses it: keys are written without
// any escaping, and tab, line feed, carriage return, backspace and form feed stand raw in strings.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "OrvActions/OrvTypes.h"

namespace OrvPLC {

class TOrvJsonWriter {
public:
    using View = std::u16string_view;

    // What stands for infinity and for what is no number. Any other mode raises Ulmo::UlmoException instead.
    enum class NonFinite : std::uint32_t {
        Null = 0,   // null
        Large = 1,  // 1e999, -1e999; null for what is no number
        Words = 2,  // "Infinity", "-Infinity", "NaN"
    };

    // With `wrap` the text is an object of its own: the brace is open from here on and Take closes it.
    explicit TOrvJsonWriter(bool wrap, NonFinite nonFinite = NonFinite::Null);

    void OpenObject(View key);
    void CloseObject() { output_ += u'}'; }
    void WriteRaw(View key, View text);
    void WriteString(View key, View text);  // a view without data, as of a null pointer, is written as null
    void WriteDecimal(View key, std::int64_t value);
    void WriteUnsigned(View key, std::uint32_t value);
    void WriteDouble(View key, double value);
    void WriteDate(View key, TUlmoDateTime value);  // raises when the date cannot be shown
    void WriteGuid(View key, const TOrvGuid& value);

    std::u16string Take();

private:
    void AppendKey(View key);
    void AppendString(View text);
    View NonFiniteText(double value) const;

    std::u16string output_;
    NonFinite nonFinite_;
    bool wrapping_;
};

}  // namespace OrvPLC
