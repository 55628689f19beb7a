// The entries of the catalogue: what is known of a class, an action, a parameter, an enum value.
//
// The built-in ones are constants that the generator writes, those of extension files are made while the library loads;
// all live until it unloads, and only their display texts change. So an action object refers to its entry by a plain
// pointer: a counted one would cost two atomic operations an object on a line that all threads share.
//
// Entries have no virtual function and hold no pointer to a constant, see builtin_texts.h.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "catalogue/builtin_texts.h"
#include "catalogue/changing_text.h"
#include "catalogue/stored_text.h"
#include "ulmo/reference_count.h"
#include "ulmo/string_conversion.h"
#include "ulmo/unit_search.h"

namespace OrvPLC {

inline constexpr std::uint32_t kDefaultPriority = 5;

// The enum of a Boolean's two values has the id 1; every other enum has an id with this bit.
inline constexpr std::uint32_t kBooleanEnum = 1;
inline constexpr std::uint32_t kEnumIdBit = 0x1000;

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

    constexpr DisplayText(Builtin::Text constant = {}) noexcept : A(constant), U(constant), W(constant) {}
    Change Prepare(std::u16string_view text) const;  // may fail, and then nothing has changed
    void Commit(Change change) noexcept;
    void Forget() noexcept;  // for the end of the library
};

// The count of an entry that is made at run time; a new one has count 0. Built-in entries have no owner.
template <class Entry>
class CountedEntry {
public:
    void AddRef() noexcept { count_.fetch_add(1, std::memory_order_relaxed); }
    void Release() noexcept
    {
        if (count_.fetch_sub(1, std::memory_order_acq_rel) == 1) delete static_cast<Entry*>(this);
    }

protected:
    constexpr CountedEntry() noexcept = default;
    CountedEntry(CountedEntry&&) noexcept {}
    ~CountedEntry() = default;

private:
    std::atomic<std::uint32_t> count_{0};
};

class TOrvBaseNameInfo {
    struct OwnNames {
        explicit OwnNames(std::u16string_view name);

        std::u16string wide;
        std::u16string lower;
        std::string ansi;
    };

public:
    StoredText<char16_t> NameW;      // as registered, case kept
    StoredText<char16_t> LowerName;  // the key of every name map
    StoredText<char> NameA;
    DisplayText NativePlain;
    DisplayText NeutralPlain;
    DisplayText Description;

    TOrvBaseNameInfo& operator=(const TOrvBaseNameInfo&) = delete;

    // The plain name of the text set that the native translation switch selects.
    const DisplayText& Plain() const noexcept;
    // Writes the plain name into the selected set and the description, both or, when it fails, neither; an empty text
    // means "keep". The given texts may be texts of this very entry.
    void WriteTexts(std::u16string_view plain, std::u16string_view description);
    // The plain name into both sets, whatever the switch says.
    void WriteTextsOfBothSets(std::u16string_view plain, std::u16string_view description);
    void ForgetTexts() noexcept;  // for the end of the library

protected:
    explicit TOrvBaseNameInfo(std::u16string_view name);   // the name is also the first text of all sets
    TOrvBaseNameInfo(TOrvBaseNameInfo&& other) = default;  // names and texts keep their addresses
    // Built-in content. A text that is empty is the name. The neutral set has no texts of its own.
    constexpr TOrvBaseNameInfo(Builtin::Name name, Builtin::Text plain, Builtin::Text description) noexcept
        : NameW(name.Spelt()),
          LowerName(name.Lower()),
          NameA(name.Spelt()),
          NativePlain(plain.length ? plain : name.Spelt()),
          NeutralPlain(name.Spelt()),
          Description(description.length ? description : name.Spelt())
    {}
    ~TOrvBaseNameInfo() = default;

private:
    std::unique_ptr<OwnNames> own_;
};

class TOrvActionClassInternalInfo final : public TOrvBaseNameInfo, public CountedEntry<TOrvActionClassInternalInfo> {
public:
    TOrvActionClassInternalInfo(std::u16string_view name, std::uint32_t code, std::uint32_t priority,
                                std::uint32_t flags);
    constexpr TOrvActionClassInternalInfo(Builtin::Name name, Builtin::Text plain, Builtin::Text description,
                                          std::uint32_t code, std::uint32_t priority) noexcept
        : TOrvBaseNameInfo(name, plain, description), Code(code), Priority(priority), Flags(0)
    {}

    std::uint32_t Code;
    std::uint32_t Priority;
    std::uint32_t Flags;
};

class TOrvParameterInternalInfo final : public TOrvBaseNameInfo {
public:
    TOrvParameterInternalInfo(std::u16string_view name, std::uint32_t type, std::uint32_t view, std::uint32_t priority,
                              std::uint32_t enumType, std::uint32_t dbField);
    constexpr TOrvParameterInternalInfo(Builtin::Name name, Builtin::Text plain, Builtin::Text description,
                                        std::uint32_t type, std::uint32_t view, std::uint32_t priority,
                                        std::uint32_t enumType, std::uint32_t dbField) noexcept
        : TOrvBaseNameInfo(name, plain, description),
          Type(type),
          View(view),
          Priority(priority),
          EnumType(enumType),
          DbField(dbField)
    {}

    std::uint32_t Type;  // ORV_KIND_...
    std::uint32_t View;  // ORV_VIEW_..., what the value designates
    std::uint32_t Priority;
    std::uint32_t EnumType;  // the id of an enum; 0 for none
    std::uint32_t DbField;   // ORV_COLUMN_... bits
};

class TOrvEnumInternalInfo final : public TOrvBaseNameInfo, public CountedEntry<TOrvEnumInternalInfo> {
public:
    TOrvEnumInternalInfo(std::u16string_view name, std::uint32_t enumId, std::uint32_t value);
    constexpr TOrvEnumInternalInfo(Builtin::Name name, Builtin::Text plain, Builtin::Text description,
                                   std::uint32_t enumId, std::uint32_t value) noexcept
        : TOrvBaseNameInfo(name, plain, description), EnumId(enumId), Value(value)
    {}

    std::uint32_t EnumId;  // kBooleanEnum, or with kEnumIdBit
    std::uint32_t Value;
};

// What a search looks at, side by side: a few cache lines instead of one a parameter.
struct ParameterKey {
    StoredText<char16_t> name;
    StoredText<char16_t> lower;
    std::uint32_t viewBit;  // see TOrvActionInternalInfo::ViewBit

    constexpr ParameterKey(Builtin::Name of, std::uint32_t view) noexcept
        : name(of.Spelt()), lower(of.Lower()), viewBit(view)
    {}
    explicit ParameterKey(const TOrvParameterInternalInfo& entry);
};

namespace Builtin {

// Defined by the generated sources, which alone know how much they hold.
extern union ClassTable classTable;
extern union ParameterTable parameterTable;  // the parameters of an action side by side
extern const ParameterKey parameterKeys[];   // parallel to the parameters
extern const std::uint32_t keyOrder[];       // parallel to the parameters, counted from the first of an action

}  // namespace Builtin

// The class of an action. Behaves as a pointer.
class ClassReference {
public:
    ClassReference() noexcept : class_(0), known_(false) {}
    constexpr explicit ClassReference(std::size_t builtIn) noexcept : class_(builtIn), known_(true) {}
    explicit ClassReference(const TOrvActionClassInternalInfo* entry) noexcept
        : class_(&Builtin::classTable, entry), known_(entry != nullptr)
    {}

    const TOrvActionClassInternalInfo* get() const noexcept
    {
        return known_ ? class_.From(&Builtin::classTable) : nullptr;
    }
    const TOrvActionClassInternalInfo* operator->() const noexcept { return class_.From(&Builtin::classTable); }
    explicit operator bool() const noexcept { return known_; }

private:
    Distance<const TOrvActionClassInternalInfo> class_;
    bool known_;
};

// The parameters of an action in declaration order, which is part of the contract.
class ParameterRange {
public:
    constexpr ParameterRange(std::size_t first, std::size_t count) noexcept : first_(first), count_(count) {}
    explicit ParameterRange(const std::vector<TOrvParameterInternalInfo>& own) noexcept
        : first_(&Builtin::parameterTable, own.data()), count_(own.size())
    {}

    std::size_t size() const noexcept { return count_; }
    bool empty() const noexcept { return count_ == 0; }
    const TOrvParameterInternalInfo& operator[](std::size_t position) const noexcept { return begin()[position]; }
    const TOrvParameterInternalInfo* begin() const noexcept { return first_.From(&Builtin::parameterTable); }
    const TOrvParameterInternalInfo* end() const noexcept { return begin() + count_; }

private:
    Distance<const TOrvParameterInternalInfo> first_;
    std::size_t count_;
};

class TOrvActionInternalInfo final : public TOrvBaseNameInfo, public CountedEntry<TOrvActionInternalInfo> {
public:
    TOrvActionInternalInfo(std::u16string_view name, std::uint32_t code, std::uint32_t priority, std::uint32_t flags);
    constexpr TOrvActionInternalInfo(Builtin::Name name, Builtin::Text plain, Builtin::Text description,
                                     std::uint32_t code, std::uint32_t priority, std::uint32_t index,
                                     std::size_t classAt, std::size_t firstParameter, std::size_t parameterCount,
                                     std::uint32_t views) noexcept
        : TOrvBaseNameInfo(name, plain, description),
          Code(code),
          Priority(priority),
          Flags(0),
          InternalIndex(index),
          Class(classAt),
          Parameters(firstParameter, parameterCount),
          keys_(firstParameter),
          keyOrder_(firstParameter),
          allViews_(views)
    {}

    static constexpr std::size_t kNotFound = static_cast<std::size_t>(-1);

    // The position of a parameter by its name in any case, kNotFound when the action has none of it.
    std::size_t FindParameter(std::u16string_view name) const;
    // The first parameter from a position on whose view is in the set, kNotFound if there is none.
    std::size_t FindView(std::uint32_t views, std::size_t from = 0) const noexcept
    {
        if (!(allViews_ & views)) return kNotFound;
        const ParameterKey* const keys = Keys();
        for (std::size_t position = from; position < Parameters.size(); ++position) {
            if (keys[position].viewBit & views) return position;
        }
        return kNotFound;
    }
    // A view as a member of such a set; views from 32 on are members of none.
    static constexpr std::uint32_t ViewBit(std::uint32_t view) { return view < 32 ? std::uint32_t{1} << view : 0; }
    // Whether this is the catalogue's spelling of the parameter at a position.
    bool IsSpelt(std::size_t position, std::u16string_view name) const
    {
        return Ulmo::SameText(Keys()[position].name.view(), name);
    }
    bool IsSpelt(std::size_t position, const char16_t* terminatedName) const
    {
        return !hasZerosInNames_ && Ulmo::SameTerminated(Keys()[position].name.view(), terminatedName);
    }
    // Once, before registration. Any number of parameters, and one name may come several times: all stand in the list,
    // and lookups by name give the first.
    void SetParameters(std::vector<TOrvParameterInternalInfo> parameters);
    bool HasRepeatedNames() const noexcept { return hasRepeatedNames_; }

    // Positions of the parameters, ordered by lower-cased name and then by position.
    std::span<const std::uint32_t> KeyOrder() const noexcept
    {
        return {keyOrder_.From(Builtin::keyOrder), Parameters.size()};
    }

    std::uint32_t Code;
    std::uint32_t Priority;
    std::uint32_t Flags;
    std::uint32_t InternalIndex;  // set at registration
    ClassReference Class;         // may be null
    ParameterRange Parameters;

private:
    struct OwnParameters {
        std::vector<TOrvParameterInternalInfo> entries;
        std::vector<ParameterKey> keys;
        std::vector<std::uint32_t> order;
    };
    const ParameterKey* Keys() const noexcept { return keys_.From(Builtin::parameterKeys); }
    std::size_t FindByKey(std::u16string_view lower) const;

    Distance<const ParameterKey> keys_;
    Distance<const std::uint32_t> keyOrder_;
    std::uint32_t allViews_ = 0;
    bool hasRepeatedNames_ = false;
    bool hasZerosInNames_ = false;
    std::unique_ptr<OwnParameters> own_;
};

}  // namespace OrvPLC
