// JSON by hand, for web-facing clients: members are appended to a growing text, no tree, no way back.
//
// What web clients know of it and what is therefore kept, although a strict parser refuses it: keys are written without
// any escaping, and tab, line feed, carriage return, backspace and form feed stand raw in strings.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "OrvActions/OrvTypes.h"
#include "ulmo/growing_text.h"

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

    // With `wrap` the text is an object of its own: the brace is open from here on and Finish closes it.
    explicit TOrvJsonWriter(bool wrap, NonFinite nonFinite = NonFinite::Null);

    void OpenObject(View key);
    void CloseObject();
    void WriteRaw(View key, View text);
    void WriteString(View key, View text);  // a view without data, as of a null pointer, is written as null
    void WriteDecimal(View key, std::int64_t value);
    void WriteUnsigned(View key, std::uint32_t value);
    void WriteDouble(View key, double value);
    void WriteDate(View key, TUlmoDateTime value);  // raises when the date cannot be shown
    void WriteGuid(View key, const TOrvGuid& value);

    // Ends the text, which lives as long as the writer. Nothing may be written afterwards.
    View Finish();

private:
    // Writes the key and returns the place for the value, which has room for `units` units.
    char16_t* BeginValue(View key, std::size_t units);
    View NonFiniteText(double value) const;

    NonFinite nonFinite_;
    bool wrapping_;
    bool follows_ = false;  // a member stands before the next one
    Ulmo::GrowingText output_;
};

}  // namespace OrvPLC
