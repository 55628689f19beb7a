#include "catalogue/entries.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "catalogue/settings.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// Nothing for an empty text, which means "keep".
using OptionalChange = std::optional<DisplayText::Change>;

OptionalChange PrepareUnlessEmpty(const DisplayText& target, std::u16string_view text)
{
    return text.empty() ? OptionalChange() : target.Prepare(text);
}

void CommitIfAny(DisplayText& target, OptionalChange& change) noexcept
{
    if (change) target.Commit(std::move(*change));
}

}  // namespace

DisplayText::Change DisplayText::Prepare(std::u16string_view text) const
{
    return {A.Prepare(Ulmo::AnsiFromWide(text)), U.Prepare(Ulmo::Utf8FromWide(text)), W.Prepare(text)};
}

void DisplayText::Commit(Change change) noexcept
{
    A.Commit(std::move(change.A));
    U.Commit(std::move(change.U));
    W.Commit(std::move(change.W));
}

void DisplayText::Forget() noexcept
{
    A.Forget();
    U.Forget();
    W.Forget();
}

TOrvBaseNameInfo::OwnNames::OwnNames(std::u16string_view name)
    : wide(name), lower(Ulmo::LowerCase(name)), ansi(Ulmo::AnsiFromWide(name))
{}

TOrvBaseNameInfo::TOrvBaseNameInfo(std::u16string_view name) : own_(std::make_unique<OwnNames>(name))
{
    NameW = StoredText<char16_t>(own_->wide);
    LowerName = StoredText<char16_t>(own_->lower);
    NameA = StoredText<char>(own_->ansi);
    for (DisplayText* text : {&NativePlain, &NeutralPlain, &Description}) {
        // Deliberately no UTF-8: an entry without texts shows its name as it came.
        text->Commit({text->A.Prepare(own_->ansi), text->U.Prepare(own_->ansi), text->W.Prepare(name)});
    }
}

const DisplayText& TOrvBaseNameInfo::Plain() const noexcept
{
    return Settings::NativeTranslation ? NativePlain : NeutralPlain;
}

void TOrvBaseNameInfo::WriteTexts(std::u16string_view plain, std::u16string_view description)
{
    DisplayText& selected = Settings::NativeTranslation ? NativePlain : NeutralPlain;
    // All that may fail comes first. It also copies the given texts before any of them can change.
    OptionalChange plainChange = PrepareUnlessEmpty(selected, plain);
    OptionalChange descriptionChange = PrepareUnlessEmpty(Description, description);
    CommitIfAny(selected, plainChange);
    CommitIfAny(Description, descriptionChange);
}

void TOrvBaseNameInfo::WriteTextsOfBothSets(std::u16string_view plain, std::u16string_view description)
{
    // Not all or nothing: the entry is new, and a failure drops it whole.
    if (!plain.empty()) {
        NativePlain.Commit(NativePlain.Prepare(plain));
        NeutralPlain.Commit(NeutralPlain.Prepare(plain));
    }
    if (!description.empty()) Description.Commit(Description.Prepare(description));
}

void TOrvBaseNameInfo::ForgetTexts() noexcept
{
    NativePlain.Forget();
    NeutralPlain.Forget();
    Description.Forget();
}

TOrvActionClassInternalInfo::TOrvActionClassInternalInfo(std::u16string_view name, std::uint32_t code,
                                                         std::uint32_t priority, std::uint32_t flags)
    : TOrvBaseNameInfo(name), Code(code), Priority(priority), Flags(flags)
{}

TOrvParameterInternalInfo::TOrvParameterInternalInfo(std::u16string_view name, std::uint32_t type, std::uint32_t view,
                                                     std::uint32_t priority, std::uint32_t enumType,
                                                     std::uint32_t dbField)
    : TOrvBaseNameInfo(name), Type(type), View(view), Priority(priority), EnumType(enumType), DbField(dbField)
{}

ParameterKey::ParameterKey(const TOrvParameterInternalInfo& entry)
    : name(entry.NameW), lower(entry.LowerName), viewBit(TOrvActionInternalInfo::ViewBit(entry.View))
{}

TOrvActionInternalInfo::TOrvActionInternalInfo(std::u16string_view name, std::uint32_t code, std::uint32_t priority,
                                               std::uint32_t flags)
    : TOrvBaseNameInfo(name),
      Code(code),
      Priority(priority),
      Flags(flags),
      InternalIndex(0),
      Parameters(0, 0),
      keys_(0),
      keyOrder_(0)
{}

std::size_t TOrvActionInternalInfo::FindParameter(std::u16string_view name) const
{
    // Up to here two walks cost less than lower-casing a copy. Repeated names need the ordered search, which finds the
    // first.
    constexpr std::size_t kFew = 64;
    const std::size_t count = Parameters.size();
    if (count > kFew || hasRepeatedNames_) return FindByKey(Ulmo::LowerCase(name));
    const ParameterKey* const keys = Keys();
    // Callers mostly use the catalogue's spelling, and lengths tell most names apart.
    for (std::size_t i = 0; i < count; ++i) {
        if (Ulmo::SameText(keys[i].name.view(), name)) return i;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::u16string_view lower = keys[i].lower.view();
        if (lower.size() == name.size() && Ulmo::EqualsLower(name, lower)) return i;
    }
    return kNotFound;
}

std::size_t TOrvActionInternalInfo::FindByKey(std::u16string_view lower) const
{
    const std::span<const std::uint32_t> order = KeyOrder();
    const ParameterKey* const keys = Keys();
    const auto found = std::lower_bound(
        order.begin(), order.end(), lower,
        [keys](std::uint32_t position, std::u16string_view key) { return keys[position].lower.view() < key; });
    return found != order.end() && keys[*found].lower.view() == lower ? *found : kNotFound;
}

void TOrvActionInternalInfo::SetParameters(std::vector<TOrvParameterInternalInfo> parameters)
{
    auto own = std::make_unique<OwnParameters>();
    own->entries = std::move(parameters);
    for (const TOrvParameterInternalInfo& entry : own->entries) {
        own->order.push_back(static_cast<std::uint32_t>(own->keys.size()));
        // The key refers to the entry's names, which keep their addresses.
        own->keys.emplace_back(entry);
        allViews_ |= own->keys.back().viewBit;
        hasZerosInNames_ |= entry.NameW.view().find(u'\0') != std::u16string_view::npos;
    }
    const auto lower = [&own](std::uint32_t position) { return own->keys[position].lower.view(); };
    // Stable, so that of repeated names the first in the declaration comes first.
    std::stable_sort(own->order.begin(), own->order.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return lower(a) < lower(b); });
    const auto sameKey = [&](std::uint32_t a, std::uint32_t b) { return lower(a) == lower(b); };
    hasRepeatedNames_ = std::adjacent_find(own->order.begin(), own->order.end(), sameKey) != own->order.end();
    Parameters = ParameterRange(own->entries);
    keys_ = {Builtin::parameterKeys, own->keys.data()};
    keyOrder_ = {Builtin::keyOrder, own->order.data()};
    own_ = std::move(own);
}

TOrvEnumInternalInfo::TOrvEnumInternalInfo(std::u16string_view name, std::uint32_t enumId, std::uint32_t value)
    : TOrvBaseNameInfo(name), EnumId(enumId), Value(value)
{}

}  // namespace OrvPLC
