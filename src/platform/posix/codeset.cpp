#include "platform/posix/codeset.h"

#include <iconv.h>
#include <algorithm>
#include <bit>
#include <cerrno>

#include "platform/posix/composition.h"
#include "platform/system_error.h"

namespace Platform {

namespace {

const char* Utf16Name()
{
    return std::endian::native == std::endian::little ? "UTF-16LE" : "UTF-16BE";
}

// An iconv run over a whole text that puts a replacement where the input does not convert.
class Conversion {
public:
    Conversion(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
    Conversion(const Conversion&) = delete;
    Conversion& operator=(const Conversion&) = delete;
    ~Conversion()
    {
        if (Usable()) iconv_close(handle_);
    }

    bool Usable() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

    bool Converts(std::string_view character)
    {
        char* next = const_cast<char*>(character.data());
        std::size_t left = character.size();
        std::string output;
        return Step(next, left, output);
    }

    // `skip` is the number of input bytes that one replacement stands for.
    template <class Skip>
    std::string Run(std::string_view input, std::string_view replacement, Skip skip)
    {
        std::string output;
        char* next = const_cast<char*>(input.data());  // iconv's prototype; the input is not written
        std::size_t left = input.size();
        while (left != 0) {
            if (Step(next, left, output)) continue;
            const std::size_t bytes = skip(std::string_view(next, left));
            next += bytes;
            left -= bytes;
            output.append(replacement);
        }
        char* none = nullptr;
        std::size_t nothing = 0;
        Step(none, nothing, output);  // back to the initial state of a codeset with shifts
        return output;
    }

private:
    // False if input that does not convert comes next.
    bool Step(char*& next, std::size_t& left, std::string& output)
    {
        char chunk[512];
        char* end = chunk;
        std::size_t room = sizeof chunk;
        const std::size_t result = iconv(handle_, next ? &next : nullptr, &left, &end, &room);
        const int reason = errno;
        output.append(chunk, sizeof chunk - room);
        // A full chunk is no fault: the next step goes on.
        return result != static_cast<std::size_t>(-1) || reason == E2BIG;
    }

    iconv_t handle_;
};

// One replacement stands for one byte, since nothing is known about the sequence.
std::size_t SkipByte(std::string_view)
{
    return 1;
}

// In bytes; a pair of surrogates gets one replacement.
std::size_t SkipUtf16Character(std::string_view rest)
{
    char16_t units[2] = {};
    rest.substr(0, sizeof units).copy(reinterpret_cast<char*>(units), sizeof units);
    const bool pair = units[0] >= 0xD800 && units[0] <= 0xDBFF && units[1] >= 0xDC00 && units[1] <= 0xDFFF;
    return pair ? 4 : 2;
}

std::string_view BytesOf(std::u16string_view text)
{
    return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)};
}

// Puts a letter and the mark after it into one character if the codeset has it. Others stay apart.
std::u16string Compose(const char* codeset, std::u16string_view text)
{
    Conversion probe(codeset, Utf16Name());
    std::u16string composed;
    for (const char16_t unit : text) {
        const char16_t both = composed.empty() ? u'\0' : Composed(composed.back(), unit);
        if (both != 0 && probe.Converts(BytesOf({&both, 1}))) {
            composed.back() = both;
        } else {
            composed += unit;
        }
    }
    return composed;
}

bool HoldsMarks(std::u16string_view text)
{
    return std::any_of(text.begin(), text.end(), [](char16_t unit) { return unit >= kFirstCombiningMark; });
}

template <class Text>
bool RefuseConversion(Text& output)
{
    output.clear();
    SetLastError(kInvalidParameter);
    return false;
}

}  // namespace

bool CodesetToWide(const char* codeset, std::string_view text, std::u16string& wide)
{
    Conversion conversion(Utf16Name(), codeset);
    if (!conversion.Usable()) return RefuseConversion(wide);
    const char16_t replacement = 0xFFFD;
    const std::string bytes = conversion.Run(text, BytesOf({&replacement, 1}), SkipByte);
    wide.resize(bytes.size() / sizeof(char16_t));
    bytes.copy(reinterpret_cast<char*>(wide.data()), bytes.size());
    return true;
}

bool WideToCodeset(const char* codeset, std::u16string_view text, std::string& narrow)
{
    Conversion conversion(codeset, Utf16Name());
    if (!conversion.Usable()) return RefuseConversion(narrow);
    std::u16string composed;
    // Few texts hold marks, and composing asks iconv about each of them.
    if (HoldsMarks(text)) text = composed = Compose(codeset, text);
    narrow = conversion.Run(BytesOf(text), "?", SkipUtf16Character);
    return true;
}

}  // namespace Platform
