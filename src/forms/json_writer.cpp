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

enum class Escape { None, Backslash, Number };

constexpr Escape EscapeOf(char16_t unit)
{
    if (unit == u'"' || unit == u'\\') return Escape::Backslash;
    if (unit >= 0x20) return unit == 0x85 || unit == 0x2028 || unit == 0x2029 ? Escape::Number : Escape::None;
    // Deliberately raw although JSON wants an escape: clients take these five as they are.
    const bool raw = (unit >= 8 && unit <= 10) || unit == 12 || unit == 13;
    return raw ? Escape::None : Escape::Number;
}

// The unit in each of four lanes of 16 bits.
constexpr std::uint64_t Lanes(std::uint64_t unit)
{
    return unit * 0x0001'0001'0001'0001;
}

// Whether four units are ASCII that stands for itself. No lane carries into the next one, since all are below
// 0x80. Bit 7 of a lane is set in the first sum if the unit is at least 0x20, in the others if it is not the mark.
constexpr bool IsPlainAscii(std::uint64_t units)
{
    if (units & Lanes(0xFF80)) return false;
    const std::uint64_t plain =
        (units + Lanes(0x60)) & ((units ^ Lanes(u'"')) + Lanes(0x7F)) & ((units ^ Lanes(u'\\')) + Lanes(0x7F));
    return (plain & Lanes(0x80)) == Lanes(0x80);
}

// Copies the leading units that need no escape and moves both pointers past them. It writes whole steps of four, so
// up to three units after the new target may be garbage; the target has room for the whole source. The last step may
// reach back over units that were copied already.
void CopyPlain(char16_t*& target, const char16_t*& source, const char16_t* end)
{
    constexpr std::ptrdiff_t kStep = 4;
    const auto copyStep = [&](const char16_t* from, char16_t* to) {
        std::uint64_t units = 0;
        std::memcpy(&units, from, sizeof units);
        std::memcpy(to, &units, sizeof units);
        return IsPlainAscii(units);
    };
    const bool reachesBack = end - source >= kStep;
    while (source != end) {
        if (end - source >= kStep) {
            if (copyStep(source, target)) {
                source += kStep;
                target += kStep;
                continue;
            }
        } else if (reachesBack && copyStep(end - kStep, target - (kStep - (end - source)))) {
            target += end - source;
            source = end;
            return;
        }
        if (EscapeOf(*source) != Escape::None) return;
        *target++ = *source++;
    }
}

constexpr std::size_t kLongestEscape = 6;

char16_t* WriteEscape(char16_t* target, char16_t unit)
{
    *target++ = u'\\';
    if (EscapeOf(unit) == Escape::Backslash) {
        *target++ = unit;
        return target;
    }
    constexpr char16_t kDigits[] = u"0123456789ABCDEF";
    *target++ = u'u';
    for (int shift = 12; shift >= 0; shift -= 4) *target++ = kDigits[(unit >> shift) & 15];
    return target;
}

}  // namespace

TOrvJsonWriter::TOrvJsonWriter(bool wrap, NonFinite nonFinite) : nonFinite_(nonFinite), wrapping_(wrap)
{
    if (wrap) output_.Append(u"{");
}

View TOrvJsonWriter::Finish()
{
    if (std::exchange(wrapping_, false)) CloseObject();
    return output_.view();
}

void TOrvJsonWriter::OpenObject(View key)
{
    char16_t* end = BeginValue(key, 1);
    *end++ = u'{';
    output_.EndAt(end);
    follows_ = false;
}

void TOrvJsonWriter::CloseObject()
{
    output_.Append(u"}");
    follows_ = true;
}

void TOrvJsonWriter::WriteRaw(View key, View text)
{
    char16_t* const end = BeginValue(key, text.size());
    Ulmo::CopyUnits(end, text.data(), text.size());
    output_.EndAt(end + text.size());
}

void TOrvJsonWriter::WriteString(View key, View text)
{
    if (!text.data()) return WriteRaw(key, u"null");
    char16_t* end = BeginValue(key, text.size() + 2);
    *end++ = u'"';
    const char16_t* source = text.data();
    const char16_t* const sourceEnd = source + text.size();
    for (CopyPlain(end, source, sourceEnd); source != sourceEnd; CopyPlain(end, source, sourceEnd)) {
        output_.EndAt(end);
        // One escape and all the rest as it stands, the closing quote in place of the unit that is escaped.
        end = output_.Room(kLongestEscape + static_cast<std::size_t>(sourceEnd - source));
        end = WriteEscape(end, *source++);
    }
    *end++ = u'"';
    output_.EndAt(end);
}

void TOrvJsonWriter::WriteDecimal(View key, std::int64_t value)
{
    output_.EndAt(Ulmo::WriteDecimal(BeginValue(key, Ulmo::kLongestDecimal), value));
}

void TOrvJsonWriter::WriteUnsigned(View key, std::uint32_t value)
{
    output_.EndAt(Ulmo::WriteUnsigned(BeginValue(key, Ulmo::kLongestDecimal), value));
}

void TOrvJsonWriter::WriteDouble(View key, double value)
{
    if (!std::isfinite(value)) return WriteRaw(key, NonFiniteText(value));
    if (value == 0) return WriteRaw(key, u"0.0");  // negative zero as well
    std::u16string text;
    Ulmo::AppendDouble(text, value, Ulmo::TrailingPoint::Keep);
    WriteRaw(key, text);
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

char16_t* TOrvJsonWriter::BeginValue(View key, std::size_t units)
{
    constexpr std::size_t kMarks = 4;
    char16_t* end = output_.Room(key.size() + kMarks + units);
    // Without a jump: a comma that is not wanted is written over.
    *end = u',';
    end += follows_;
    *end++ = u'"';
    Ulmo::CopyUnits(end, key.data(), key.size());
    end += key.size();
    *end++ = u'"';
    *end++ = u':';
    follows_ = true;
    return end;
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
