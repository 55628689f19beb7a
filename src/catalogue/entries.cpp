#include "catalogue/entries.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "catalogue/settings.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// What an empty text, which means "keep", has none of.
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

void DisplayText::Borrow(const Builtin::Text& constant)
{
    A.Borrow(constant.narrow);
    U.Borrow(constant.narrow);
    W.Borrow(constant.wide);
}

TOrvBaseNameInfo::TOrvBaseNameInfo(std::u16string_view name)
{
    const std::string ansi = Ulmo::AnsiFromWide(name);
    NameA.Assign(ansi);
    NameW.Assign(name);
    LowerName.Assign(Ulmo::LowerCase(name));
    for (DisplayText* text : {&NativePlain, &NeutralPlain, &Description}) {
        // Deliberately no UTF-8: an entry without texts shows its name as it came.
        text->Commit({text->A.Prepare(ansi), text->U.Prepare(ansi), text->W.Prepare(name)});
    }
}

TOrvBaseNameInfo::TOrvBaseNameInfo(TOrvBaseNameInfo&& other) noexcept
    : VirtualReferenceCountBaseClass(),
      NameA(std::move(other.NameA)),
      NameW(std::move(other.NameW)),
      LowerName(std::move(other.LowerName)),
      NativePlain(std::move(other.NativePlain)),
      NeutralPlain(std::move(other.NeutralPlain)),
      Description(std::move(other.Description))
{}

TOrvBaseNameInfo::TOrvBaseNameInfo(const Builtin::Name& name, const Builtin::Text& plain,
                                   const Builtin::Text& description)
{
    NameA.Borrow(name.text.narrow);
    NameW.Borrow(name.text.wide);
    LowerName.Borrow(name.lower);
    NativePlain.Borrow(plain.wide.empty() ? name.text : plain);
    NeutralPlain.Borrow(name.text);
    Description.Borrow(description.wide.empty() ? name.text : description);
}

const DisplayText& TOrvBaseNameInfo::Plain() const noexcept
{
    return Settings::NativeTranslation ? NativePlain : NeutralPlain;
}

void TOrvBaseNameInfo::WriteTexts(std::u16string_view plain, std::u16string_view description)
{
    DisplayText& selected = Settings::NativeTranslation ? NativePlain : NeutralPlain;
    OptionalChange plainChange = PrepareUnlessEmpty(selected, plain);
    OptionalChange descriptionChange = PrepareUnlessEmpty(Description, description);
    CommitIfAny(selected, plainChange);
    CommitIfAny(Description, descriptionChange);
}

void TOrvBaseNameInfo::WriteTextsOfBothSets(std::u16string_view plain, std::u16string_view description)
{
    if (!plain.empty()) {
        NativePlain.Commit(NativePlain.Prepare(plain));
        NeutralPlain = NativePlain;
    }
    if (!description.empty()) Description.Commit(Description.Prepare(description));
}

TOrvActionClassInternalInfo::TOrvActionClassInternalInfo(std::u16string_view name, std::uint32_t code,
                                                         std::uint32_t priority, std::uint32_t flags)
    : TOrvBaseNameInfo(name), Code(code), Priority(priority), Flags(flags)
{}

TOrvActionClassInternalInfo::TOrvActionClassInternalInfo(const Builtin::ClassRow& row)
    : TOrvBaseNameInfo(row.name, row.plain, row.description), Code(row.code), Priority(row.priority), Flags(0)
{}

TOrvParameterInternalInfo::TOrvParameterInternalInfo(std::u16string_view name, std::uint32_t type, std::uint32_t view,
                                                     std::uint32_t priority, std::uint32_t enumType,
                                                     std::uint32_t dbField)
    : TOrvBaseNameInfo(name), Type(type), View(view), Priority(priority), EnumType(enumType), DbField(dbField)
{}

TOrvParameterInternalInfo::TOrvParameterInternalInfo(const Builtin::ParameterRow& row)
    : TOrvBaseNameInfo(row.name, row.plain, row.description),
      Type(row.type),
      View(row.view),
      Priority(row.priority),
      EnumType(row.enumType),
      DbField(row.dbField)
{}

TOrvParameterInternalInfo::TOrvParameterInternalInfo(const TOrvParameterInternalInfo& other)
    : TOrvParameterInternalInfo(other.NameW.view(), other.Type, other.View, other.Priority, other.EnumType,
                                other.DbField)
{
    NativePlain = other.NativePlain;
    NeutralPlain = other.NeutralPlain;
    Description = other.Description;
}

TOrvParameterInternalInfo::TOrvParameterInternalInfo(TOrvParameterInternalInfo&& other) noexcept
    : TOrvBaseNameInfo(std::move(other)),
      Type(other.Type),
      View(other.View),
      Priority(other.Priority),
      EnumType(other.EnumType),
      DbField(other.DbField)
{}

TOrvActionInternalInfo::TOrvActionInternalInfo(std::u16string_view name, std::uint32_t code, std::uint32_t priority,
                                               std::uint32_t flags)
    : TOrvBaseNameInfo(name), Code(code), Priority(priority), Flags(flags)
{}

TOrvActionInternalInfo::TOrvActionInternalInfo(const Builtin::ActionRow& row)
    : TOrvBaseNameInfo(row.name, row.plain, row.description), Code(row.code), Priority(row.priority), Flags(0)
{
    Parameters.reserve(row.parameters.size());
    searchNames_.reserve(row.parameters.size());
    viewBits_.reserve(row.parameters.size());
    for (const Builtin::ParameterRow& parameter : row.parameters) {
        Parameters.emplace_back(parameter);
        searchNames_.push_back({parameter.name.text.wide, parameter.name.lower});
        viewBits_.push_back(ViewBit(parameter.view));
        allViews_ |= viewBits_.back();
    }
    keyOrder_.assign(row.keyOrder.begin(), row.keyOrder.end());
}

std::size_t TOrvActionInternalInfo::FindParameter(std::u16string_view name) const
{
    constexpr std::size_t kFew = 64;
    const std::size_t count = searchNames_.size();
    if (count > kFew || hasRepeatedNames_) return FindByKey(Ulmo::LowerCase(name));
    // Callers mostly use the catalogue's spelling, and lengths tell most names apart.
    for (std::size_t i = 0; i < count; ++i) {
        if (Ulmo::SameText(searchNames_[i].name, name)) return i;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const std::u16string_view lower = searchNames_[i].lower;
        if (lower.size() == name.size() && Ulmo::EqualsLower(name, lower)) return i;
    }
    return kNotFound;
}

std::size_t TOrvActionInternalInfo::FindByKey(std::u16string_view lower) const
{
    const auto found = std::lower_bound(
        keyOrder_.begin(), keyOrder_.end(), lower,
        [this](std::uint32_t position, std::u16string_view key) { return searchNames_[position].lower < key; });
    return found != keyOrder_.end() && searchNames_[*found].lower == lower ? *found : kNotFound;
}

void TOrvActionInternalInfo::SetParameters(std::vector<TOrvParameterInternalInfo> parameters)
{
    Parameters.swap(parameters);
    searchNames_.clear();
    viewBits_.clear();
    keyOrder_.clear();
    allViews_ = 0;
    for (const TOrvParameterInternalInfo& entry : Parameters) {
        keyOrder_.push_back(static_cast<std::uint32_t>(searchNames_.size()));
        searchNames_.push_back({entry.NameW.view(), entry.LowerName.view()});
        viewBits_.push_back(ViewBit(entry.View));
        allViews_ |= viewBits_.back();
    }
    std::stable_sort(keyOrder_.begin(), keyOrder_.end(), [this](std::uint32_t a, std::uint32_t b) {
        return searchNames_[a].lower < searchNames_[b].lower;
    });
    const auto sameKey = [this](std::uint32_t a, std::uint32_t b) {
        return searchNames_[a].lower == searchNames_[b].lower;
    };
    hasRepeatedNames_ = std::adjacent_find(keyOrder_.begin(), keyOrder_.end(), sameKey) != keyOrder_.end();
}

TOrvEnumInternalInfo::TOrvEnumInternalInfo(std::u16string_view name, std::uint32_t enumId, std::uint32_t value)
    : TOrvBaseNameInfo(name), EnumId(enumId), Value(value)
{}

TOrvEnumInternalInfo::TOrvEnumInternalInfo(const Builtin::EnumValueRow& row)
    : TOrvBaseNameInfo(row.name, row.plain, row.description), EnumId(row.enumId), Value(row.value)
{}

}  // namespace OrvPLC
