#include "catalogue/queries.h"

#include <iterator>

#include "catalogue/boundary.h"

namespace OrvPLC::Queries {

namespace {

template <class Text>
const OrvWChar* Wide(const Text& text)
{
    return Boundary(text.c_str());
}

// The records of the families and of the entries differ in a few fields; what a record lacks is left out.
template <class Record>
void FillTexts(Record& record, const TOrvBaseNameInfo& entry)
{
    record.NameA = entry.NameA.c_str();
    record.NameW = Wide(entry.NameW);
    const DisplayText& plain = entry.Plain();
    record.PlainNameA = plain.A.c_str();
    record.PlainNameU = plain.U.c_str();
    record.PlainNameW = Wide(plain.W);
    if constexpr (requires { record.DescriptionW; }) {
        record.DescriptionA = entry.Description.A.c_str();
        record.DescriptionU = entry.Description.U.c_str();
        record.DescriptionW = Wide(entry.Description.W);
    }
}

}  // namespace

ParameterList::ParameterList(const TOrvActionInternalInfo* action)
{
    if (action) items_ = {action->Parameters.begin(), action->Parameters.size()};
}

ParameterList ParameterList::General()
{
    ParameterList list;
    list.items_ = Catalogue().GeneralParameters();
    return list;
}

ParameterList ParametersOfAction(std::uint32_t code)
{
    return ParameterList(Catalogue().FindActionByCode(code));
}

ParameterList ParametersOfActionOrGeneral(std::uint32_t code)
{
    return code == ORV_GENERAL_PARAMETERS ? ParameterList::General() : ParametersOfAction(code);
}

ParameterList EventFields()
{
    return ParameterList(Catalogue().EventEntry());
}

const TOrvParameterInternalInfo* MatchActionDescription()
{
    return Catalogue().FindGeneralParameter(u"comment");
}

EnumFilter EnumFilter::OfEnum(std::uint32_t id)
{
    // The key holds the enum above the value, so this interval is the enum.
    return {EnumKey(id, 0), EnumKey(id, std::numeric_limits<std::uint32_t>::max())};
}

EnumFilter EnumFilter::FromPublicType(std::uint32_t publicType)
{
    // The default interval holds every key.
    return publicType == ORV_ALL_ENUM_VALUES ? EnumFilter{} : OfEnum(EnumIdFromPublicType(publicType));
}

EnumFilter EnumFilter::FromKind(std::uint32_t kind, std::uint32_t id)
{
    return kind == ORV_ENUM_KIND_ALL ? EnumFilter{} : OfEnum(EnumIdFromKind(kind, id));
}

std::uint32_t EnumIdFromKind(std::uint32_t kind, std::uint32_t id)
{
    return kind == ORV_ENUM_KIND_BOOLEAN ? kBooleanEnum : id;
}

EnumValues::EnumValues(const EnumFilter& filter)
    : begin_(Catalogue().EnumValues().lower_bound(filter.first)),
      end_(Catalogue().EnumValues().upper_bound(filter.last))
{}

std::uint32_t EnumValues::size() const
{
    return static_cast<std::uint32_t>(std::distance(begin_, end_));
}

template <class Record>
void Fill(Record& record, const TOrvActionClassInternalInfo& entry)
{
    record.Code = entry.Code;
    if constexpr (requires { record.Priority; }) {
        record.Priority = entry.Priority;
        record.Flags = entry.Flags;
    }
    record.Reserved = nullptr;
    FillTexts(record, entry);
}

template <class Record>
void Fill(Record& record, const TOrvActionInternalInfo& entry)
{
    record.ClassCode = entry.Class ? entry.Class->Code : 0;
    record.Code = entry.Code;
    if constexpr (requires { record.Priority; }) record.Priority = entry.Priority;
    record.Flags = entry.Flags;
    record.ParameterCount = static_cast<std::uint32_t>(entry.Parameters.size());
    FillTexts(record, entry);
}

template <class Record>
void Fill(Record& record, const TOrvParameterInternalInfo& entry)
{
    record.View = entry.View;
    if constexpr (requires { record.DbField; }) {
        record.Type = entry.Type;
        record.Priority = entry.Priority;
        record.EnumType = entry.EnumType;
        record.DbField = entry.DbField;
    } else {
        record.Type = PublicType(entry.Type, entry.EnumType);
        record.Reserved = 0;
    }
    FillTexts(record, entry);
}

template <class Record>
void Fill(Record& record, const TOrvEnumInternalInfo& entry)
{
    if constexpr (requires { record.EnumId; }) {
        record.EnumId = entry.EnumId;
    } else {
        record.Type = PublicEnumType(entry.EnumId);
    }
    record.Value = entry.Value;
    FillTexts(record, entry);
}

template void Fill(TOrvActionClassPlainInfo&, const TOrvActionClassInternalInfo&);
template void Fill(TOrvActionPlainInfo&, const TOrvActionInternalInfo&);
template void Fill(TOrvParameterPlainInfo&, const TOrvParameterInternalInfo&);
template void Fill(TOrvEnumValuePlainInfo&, const TOrvEnumInternalInfo&);
template void Fill(TTalvecActionClassPlainInfo&, const TOrvActionClassInternalInfo&);
template void Fill(TTalvecActionPlainInfo&, const TOrvActionInternalInfo&);
template void Fill(TTalvecParameterPlainInfo&, const TOrvParameterInternalInfo&);
template void Fill(TTalvecEnumValuePlainInfo&, const TOrvEnumInternalInfo&);

void WriteTexts(const TOrvBaseNameInfo& entry, std::u16string_view plain, std::u16string_view description)
{
    // The catalogue hands its entries out as constant to everybody else; no entry is a constant object.
    const_cast<TOrvBaseNameInfo&>(entry).WriteTexts(plain, description);
}

}  // namespace OrvPLC::Queries
