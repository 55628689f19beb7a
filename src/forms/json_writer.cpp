#include "forms/json_writer.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <utility>

#include "ulmo/date_time.h"
#include "ulmo/exceptions.h"
#include "ulmo/guid_tools.h"
#include "ulmo/number_text.h"

namespace OrvPLC {

namespace {

using View = std::u16string_view;

constexpr std::size_t kUsualLength = 2048;

enum class Form { Plain, Backslash, Number };

constexpr Form FormOf(char16_t unit)
{
    if (unit == u'"' || unit == u'\\') return Form::Backslash;
    if (unit >= 0x20) return unit == 0x85 || unit == 0x2028 || unit == 0x2029 ? Form::Number : Form::Plain;
    const bool raw = (unit >= 8 && unit <= 10) || unit == 12 || unit == 13;
    return raw ? Form::Plain : Form::Number;
}

constexpr std::uint64_t Lanes(std::uint64_t unit)
{
    return unit * 0x0001'0001'0001'0001;
}

// Whether four units are ASCII that stands for itself. No lane carries into the next one: with lanes below 0x80 each
// sum sets its bit 7 exactly for a unit that is not below 0x20, or not the mark.
constexpr bool IsPlainAscii(std::uint64_t units)
{
    if (units & Lanes(0xFF80)) return false;
    const std::uint64_t plain =
        (units + Lanes(0x60)) & ((units ^ Lanes(u'"')) + Lanes(0x7F)) & ((units ^ Lanes(u'\\')) + Lanes(0x7F));
    return (plain & Lanes(0x80)) == Lanes(0x80);
}

// How many units in front stand for themselves.
std::size_t PlainPrefix(View text)
{
    std::size_t length = 0;
    while (length < text.size()) {
        std::uint64_t units = 0;
        if (text.size() - length >= 4) {
            std::memcpy(&units, text.data() + length, sizeof units);
            if (IsPlainAscii(units)) {
                length += 4;
                continue;
            }
        }
        if (FormOf(text[length]) != Form::Plain) break;
        ++length;
    }
    return length;
}

void AppendEscape(std::u16string& output, char16_t unit)
{
    output += u'\\';
    if (FormOf(unit) == Form::Backslash) {
        output += unit;
        return;
    }
    constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    output += u'u';
    for (int shift = 12; shift >= 0; shift -= 4) output += kDigits[(unit >> shift) & 15];
}

}  // namespace

TOrvJsonWriter::TOrvJsonWriter(bool wrap, NonFinite nonFinite) : nonFinite_(nonFinite), wrapping_(wrap)
{
    output_.reserve(kUsualLength);
    if (wrap) output_ += u'{';
}

std::u16string TOrvJsonWriter::Take()
{
    if (std::exchange(wrapping_, false)) CloseObject();
    return std::move(output_);
}

void TOrvJsonWriter::OpenObject(View key)
{
    AppendKey(key);
    output_ += u'{';
}

void TOrvJsonWriter::WriteRaw(View key, View text)
{
    AppendKey(key);
    output_ += text;
}

void TOrvJsonWriter::WriteString(View key, View text)
{
    if (!text.data()) return WriteRaw(key, u"null");
    AppendKey(key);
    AppendString(text);
}

void TOrvJsonWriter::WriteDecimal(View key, std::int64_t value)
{
    AppendKey(key);
    Ulmo::AppendDecimal(output_, value);
}

void TOrvJsonWriter::WriteUnsigned(View key, std::uint32_t value)
{
    AppendKey(key);
    Ulmo::AppendUnsigned(output_, value);
}

void TOrvJsonWriter::WriteDouble(View key, double value)
{
    if (!std::isfinite(value)) return WriteRaw(key, NonFiniteText(value));
    if (value == 0) return WriteRaw(key, u"0.0");  // negative zero as well
    AppendKey(key);
    Ulmo::AppendDouble(output_, value, Ulmo::TrailingPoint::Keep);
}

void TOrvJsonWriter::WriteDate(View key, TUlmoDateTime value)
{
    Ulmo::DateText text;
    WriteString(key, Ulmo::ToIsoText(value, text));
}

void TOrvJsonWriter::WriteGuid(View key, const TOrvGuid& value)
{
    char16_t text[Ulmo::GuidTools::kTextLength];
    Ulmo::GuidTools::Write(value, text);
    WriteString(key, {text, Ulmo::GuidTools::kTextLength});
}

void TOrvJsonWriter::AppendKey(View key)
{
    const bool first = output_.empty() || output_.back() == u'{' || output_.back() == u'[';
    output_ += first ? View(u"\"") : View(u",\"");
    output_ += key;
    output_.append(u"\":", 2);
}

void TOrvJsonWriter::AppendString(View text)
{
    output_ += u'"';
    for (std::size_t plain = PlainPrefix(text);; plain = PlainPrefix(text)) {
        output_ += text.substr(0, plain);
        if (plain == text.size()) break;
        AppendEscape(output_, text[plain]);
        text.remove_prefix(plain + 1);
    }
    output_ += u'"';
}

TOrvJsonWriter::View TOrvJsonWriter::NonFiniteText(double value) const
{
    switch (nonFinite_) {
    case NonFinite::Null: return u"null";
    case NonFinite::Large: return std::isnan(value) ? u"null" : value > 0 ? u"1e999" : u"-1e999";
    case NonFinite::Words: return std::isnan(value) ? u"\"NaN\"" : value > 0 ? u"\"Infinity\"" : u"\"-Infinity\"";
    }
    throw Ulmo::UlmoException(u"NaN and Infinity are not allowed in standard JSon!@!");
}

}  // namespace OrvPLC
