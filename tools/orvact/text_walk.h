// Action text as people write it, place by place. The library searches a text for what it can use and does not
// report the rest; this walk reads in order and finds what that search skips.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct TextSpan {
    std::size_t begin = 0;
    std::size_t end = 0;

    std::u16string_view Of(std::u16string_view text) const { return text.substr(begin, end - begin); }
};

// What a value looks like. A word is not a value of the language; the tool reads it with --names.
enum class TextForm { Integer, Real, String, Rect, Channel, EventType, Resource, ResultData, Word };

struct WalkedParameter {
    TextSpan name;  // without quotes; empty for none
    TextSpan value;
    TextForm form = TextForm::Integer;
};

struct UnreadText {
    TextSpan span;
    bool lacksComma = false;  // a parameter in itself, but nothing ends it
};

struct TextWalk {
    bool sound = false;  // there are a name, an opening and a closing bracket
    TextSpan name;       // without quotes
    std::vector<WalkedParameter> parameters;
    std::vector<UnreadText> unread;  // up to the closing bracket
    TextSpan behind;                 // the closing bracket, without blanks; empty for none
    bool secondAction = false;       // begins there
};

TextWalk WalkText(std::u16string_view text);
