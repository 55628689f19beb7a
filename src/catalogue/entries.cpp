#include "catalogue/entries.h"

#include <algorithm>

#include "catalogue/settings.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

void DisplayText::Write(std::u16string_view text)
{
    A.Assign(Ulmo::AnsiFromWide(text));
    U.Assign(Ulmo::Utf8FromWide(text));
    W.Assign(text);
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
        text->A.Assign(ansi);
        text->U.Assign(ansi);  // deliberately not UTF-8: an entry without texts shows its name as it came
        text->W.Assign(name);
    }
}

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
    if (!plain.empty()) (Settings::NativeTranslation ? NativePlain : NeutralPlain).Write(plain);
    if (!description.empty()) Description.Write(description);
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
    const std::size_t count = searchNames_.size();
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

void TOrvActionInternalInfo::AddParameter(const TOrvParameterInternalInfo& parameter)
{
    Parameters.push_back(parameter);
    viewBits_.push_back(ViewBit(parameter.View));
    allViews_ |= viewBits_.back();
    const std::size_t position = Parameters.size() - 1;
    // The vector may have moved its entries, whose constants stay where they are but whose own texts are theirs.
    searchNames_.clear();
    for (const TOrvParameterInternalInfo& entry : Parameters) {
        searchNames_.push_back({entry.NameW.view(), entry.LowerName.view()});
    }
    const auto byKey = [this](std::uint16_t a, std::uint16_t b) {
        return searchNames_[a].lower < searchNames_[b].lower;
    };
    const auto place = static_cast<std::uint16_t>(position);
    keyOrder_.insert(std::upper_bound(keyOrder_.begin(), keyOrder_.end(), place, byKey), place);
}

TOrvEnumInternalInfo::TOrvEnumInternalInfo(std::u16string_view name, std::uint32_t enumId, std::uint32_t value)
    : TOrvBaseNameInfo(name), EnumId(enumId), Value(value)
{}

TOrvEnumInternalInfo::TOrvEnumInternalInfo(const Builtin::EnumValueRow& row)
    : TOrvBaseNameInfo(row.name, row.plain, row.description), EnumId(row.enumId), Value(row.value)
{}

}  // namespace OrvPLC
