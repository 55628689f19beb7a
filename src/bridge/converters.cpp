#include "bridge/converters.h"

#include <algorithm>
#include <optional>

#include "platform/system_error.h"
#include "platform/text.h"
#include "ulmo/ascii_words.h"
#include "ulmo/exceptions.h"
#include "ulmo/string_conversion.h"

namespace HeskPLC {

namespace {

constexpr std::size_t kLongestName = 64;  // longer than any name of the table

bool SameForUser(std::u16string_view a, std::u16string_view b)
{
    const std::optional<bool> same = Platform::EqualForUser(a, b);
    if (!same) throw Ulmo::SystemException(Platform::LastError(), u"CompareString");
    return *same;
}

}  // namespace

// ASCII letters and digits are the same in every language; only others need the system.
bool SameName(std::u16string_view a, std::u16string_view b)
{
    if (Ulmo::IsAscii(a) && Ulmo::IsAscii(b)) {
        return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                          [](char16_t x, char16_t y) { return Ulmo::LowerAscii(x) == Ulmo::LowerAscii(y); });
    }
    return SameForUser(a, b);
}

const Converter* FindConverter(std::u16string_view name)
{
    const std::span<const Converter> all = Converters();
    if (!Ulmo::IsAscii(name)) {
        // In the user's language such a name may equal one of ASCII, so the system is asked about each row.
        const auto row = std::find_if(all.begin(), all.end(),
                                      [name](const Converter& candidate) { return SameForUser(candidate.name, name); });
        return row == all.end() ? nullptr : &*row;
    }
    char16_t lower[kLongestName];
    // Longer than every name of the table, so there is no row for it.
    if (name.size() > kLongestName) return nullptr;
    std::copy(name.begin(), name.end(), lower);
    const std::u16string_view wanted(lower, Ulmo::LowerAsciiPrefix(lower, name.size()));
    const auto row = std::lower_bound(
        all.begin(), all.end(), wanted,
        [](const Converter& candidate, std::u16string_view value) { return candidate.lowerName.view() < value; });
    return row != all.end() && Ulmo::SameText(row->lowerName, wanted) ? &*row : nullptr;
}

}  // namespace HeskPLC
