// The entries of the catalogue: what is known of a class, an action, a parameter, an enum value.
//
// Entries are made while the library loads and live until it unloads; only their display texts change afterwards.
// So an action object refers to its entry by a plain pointer: a counted one would cost two atomic operations an object
// on a line that all threads share.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/builtin_rows.h"
#include "catalogue/changing_text.h"
#include "catalogue/stored_text.h"
#include "ulmo/reference_count.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

inline constexpr std::uint32_t kDefaultPriority = 5;

// A display text in the system's ANSI code page, in UTF-8 and in UTF-16, so that queries hand out pointers without
// converting.
struct DisplayText {
    ChangingText<char> A;
    ChangingText<char> U;
    ChangingText<char16_t> W;

    // All forms of a text, derived from the wide one and ready to be written.
    struct Change {
        ChangingText<char>::Change A;
        ChangingText<char>::Change U;
        ChangingText<char16_t>::Change W;
    };
    Change Prepare(std::u16string_view text) const;  // may fail, and then nothing has changed
    void Commit(Change change) noexcept;
    void Borrow(const Builtin::Text& constant);  // the constants are ASCII: one narrow form serves as both
};

class TOrvBaseNameInfo : public Ulmo::VirtualReferenceCountBaseClass {
public:
    StoredText<char> NameA;
    StoredText<char16_t> NameW;      // as registered, case kept
    StoredText<char16_t> LowerName;  // the key of every name map
    DisplayText NativePlain;
    DisplayText NeutralPlain;
    DisplayText Description;

    // The plain name of the text set that the native translation switch selects.
    const DisplayText& Plain() const noexcept;
    // Writes the plain name into the selected set and the description, both or, when it fails, neither; an empty text
    // means "keep". The given texts may be texts of this very entry.
    void WriteTexts(std::u16string_view plain, std::u16string_view description);
    // The plain name into both sets, whatever the switch says.
    void WriteTextsOfBothSets(std::u16string_view plain, std::u16string_view description);

protected:
    TOrvBaseNameInfo(TOrvBaseNameInfo&& other) noexcept;  // texts keep their addresses; the count starts anew
    explicit TOrvBaseNameInfo(std::u16string_view name);  // the name is also the first text of all sets
    TOrvBaseNameInfo(const Builtin::Name& name, const Builtin::Text& plain, const Builtin::Text& description);
};

class TOrvActionClassInternalInfo final : public TOrvBaseNameInfo {
public:
    TOrvActionClassInternalInfo(std::u16string_view name, std::uint32_t code, std::uint32_t priority,
                                std::uint32_t flags);
    explicit TOrvActionClassInternalInfo(const Builtin::ClassRow& row);

    std::uint32_t Code;
    std::uint32_t Priority;
    std::uint32_t Flags;
};

class TOrvParameterInternalInfo final : public TOrvBaseNameInfo {
public:
    TOrvParameterInternalInfo(std::u16string_view name, std::uint32_t type, std::uint32_t view, std::uint32_t priority,
                              std::uint32_t enumType, std::uint32_t dbField);
    explicit TOrvParameterInternalInfo(const Builtin::ParameterRow& row);
    // A vector of parameters owns its entries; their counts are not used and a copy starts with a fresh one.
    TOrvParameterInternalInfo(const TOrvParameterInternalInfo& other);
    TOrvParameterInternalInfo(TOrvParameterInternalInfo&& other) noexcept;
    TOrvParameterInternalInfo& operator=(const TOrvParameterInternalInfo&) = delete;

    std::uint32_t Type;  // ORV_KIND_...
    std::uint32_t View;  // ORV_VIEW_..., what the value designates
    std::uint32_t Priority;
    std::uint32_t EnumType;  // 0 none, 1 the Boolean enum, else an id with bit 0x1000
    std::uint32_t DbField;   // ORV_COLUMN_... bits
};

class TOrvActionInternalInfo final : public TOrvBaseNameInfo {
public:
    TOrvActionInternalInfo(std::u16string_view name, std::uint32_t code, std::uint32_t priority, std::uint32_t flags);
    explicit TOrvActionInternalInfo(const Builtin::ActionRow& row);

    static constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

    // The position of a parameter by its name in any case, kNotFound when the action has none of it.
    std::size_t FindParameter(std::u16string_view name) const;
    // The first parameter from a position on whose view is in the set, kNotFound when there is none.
    std::size_t FindView(std::uint32_t views, std::size_t from = 0) const noexcept
    {
        if (!(allViews_ & views)) return kNotFound;
        for (std::size_t position = from; position < viewBits_.size(); ++position) {
            if (viewBits_[position] & views) return position;
        }
        return kNotFound;
    }
    // A view as a member of such a set; views from 32 on are members of none.
    static constexpr std::uint32_t ViewBit(std::uint32_t view) { return view < 32 ? std::uint32_t{1} << view : 0; }
    // Whether this is the catalogue's spelling of the parameter at a position.
    bool IsSpelt(std::size_t position, std::u16string_view name) const
    {
        return Ulmo::SameText(searchNames_[position].name, name);
    }
    // Before registration only. Any number of parameters, and one name may come several times: all stand in the list,
    // and lookups by name give the first.
    void SetParameters(std::vector<TOrvParameterInternalInfo> parameters);
    bool HasRepeatedNames() const noexcept { return hasRepeatedNames_; }

    // Positions of the parameters, ordered by lower-cased name and then by position.
    const std::vector<std::uint32_t>& KeyOrder() const noexcept { return keyOrder_; }

    std::uint32_t Code;
    std::uint32_t Priority;
    std::uint32_t Flags;
    std::uint32_t InternalIndex = 0;                      // set at registration
    Ulmo::CountedPtr<TOrvActionClassInternalInfo> Class;  // may be null
    std::vector<TOrvParameterInternalInfo> Parameters;    // in declaration order, which is part of the contract

private:
    std::size_t FindByKey(std::u16string_view lower) const;

    // The names once more, side by side: a search touches a few cache lines instead of one a parameter.
    struct SearchName {
        std::u16string_view name;
        std::u16string_view lower;
    };
    std::vector<SearchName> searchNames_;
    std::vector<std::uint32_t> viewBits_;  // side by side for the same reason
    std::uint32_t allViews_ = 0;
    std::vector<std::uint32_t> keyOrder_;
    bool hasRepeatedNames_ = false;
};

class TOrvEnumInternalInfo final : public TOrvBaseNameInfo {
public:
    TOrvEnumInternalInfo(std::u16string_view name, std::uint32_t enumId, std::uint32_t value);
    explicit TOrvEnumInternalInfo(const Builtin::EnumValueRow& row);

    std::uint32_t EnumId;  // 1 for the Boolean enum, else with bit 0x1000
    std::uint32_t Value;
};

}  // namespace OrvPLC
