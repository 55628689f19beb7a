#include "sample.h"

#include <cstring>
#include <iterator>
#include <map>

namespace Sample {

namespace {

constexpr const char16_t* kLong = u"Gr\u00FCn und mehr als f\u00FCnfzehn Zeichen";
constexpr const char16_t* kTechnical =
    u"EventStarted (EventID: 7, TypeID: {9, \"ein Ereignis mit Namen\"}, Comment: \"<a b=\"1\"/> und mehr Text\", "
    u"other: {5, 7, \"ein Kanal mit langem Namen\"}, set: {{1,2,3,4,5,\"ein langer Name\"},{1,2,3,4,5,\"b\"}}, "
    u"when: \"2024/02/29 12:13:14,150 GMT+01:00\", id: \"{714596EB-24D2-43BB-A3E2-1FA78B5BEC09}\", real: 1.5, yes: "
    u"true)";
constexpr const char16_t* kSibling = u"PanLeft (7, 3)";

const TOrvChannelValue kChannel{5, reinterpret_cast<const OrvWChar*>(kLong), 7};
const TOrvEventTypeValue kEventType{9, reinterpret_cast<const OrvWChar*>(kLong), 0};
const TOrvGuid kGuid{0x714596EB, 0x24D2, 0x43BB, {0xA3, 0xE2, 0x1F, 0xA7, 0x8B, 0x5B, 0xEC, 0x09}};
const TOrvResourceValue kResource{kGuid, reinterpret_cast<const OrvWChar*>(kLong)};
const TUlmoDateTime kDate{13350000000000ULL};
constexpr std::int64_t kLarge = 0x0004000300020001;
constexpr double kReal = 1.5;

const OrvWChar* W(const char16_t* text)
{
    return reinterpret_cast<const OrvWChar*>(text);
}

void SetOne(ITalvecMatchAction& object, const OrvWChar* name, std::uint32_t kind)
{
    const TOrvResultDataItem items[] = {{1, 2, -3, 4, 5, SysAllocString(W(kLong))},
                                        {6, 7, -8, 9, 10, SysAllocString(W(kLong))}};
    switch (kind) {
    case ORV_KIND_Boolean: object.SetBoolean(name, 1); break;
    case ORV_KIND_Numeric32Bit: object.SetInt32(name, 3); break;
    case ORV_KIND_Numeric64Bit: object.SetInt64(name, &kLarge); break;
    case ORV_KIND_NumericDouble: object.SetDouble(name, &kReal); break;
    case ORV_KIND_String: object.SetString(name, W(kLong)); break;
    case ORV_KIND_DateTime: object.SetDateTime(name, &kDate); break;
    case ORV_KIND_Guid: object.SetGuid(name, &kGuid); break;
    case ORV_KIND_EventType: object.SetEventType(name, &kEventType); break;
    case ORV_KIND_MediaChannel: object.SetMediaChannel(name, &kChannel); break;
    case ORV_KIND_Resource: object.SetResource(name, &kResource); break;
    case ORV_KIND_Rect: object.SetRect(name, &kLarge); break;
    case ORV_KIND_ResultDataSet: {
        const TOrvResultDataItem* read = nullptr;
        std::uint64_t count = 0;
        object.SetResultDataSet(name, items, std::size(items));
        object.GetResultDataSet(name, &read, &count);  // so that a copy of the value has items to copy
        break;
    }
    default: break;
    }
    for (const TOrvResultDataItem& item : items) SysFreeString(item.name);
}

// p1 to p12, by the number of their kind.
const char16_t* const kNames[] = {u"p0", u"p1", u"p2", u"p3",  u"p4",  u"p5", u"p6",
                                  u"p7", u"p8", u"p9", u"p10", u"p11", u"p12"};
// Declared ones of an action of the catalogue: as it spells them, otherwise, and one that the object has not got.
const char16_t* const kDeclared[] = {u"EventText", u"eVENTtEXT", u"AssetID"};

void SetEveryKind(TOrvHandle object)
{
    for (unsigned kind = 1; kind <= kKinds; ++kind) SetOne(*OrvInterfaceOf(object), W(kNames[kind]), kind);
}

// The functions of an action bear its name, or a second one for a later set of parameters.
const std::map<std::string_view, const char16_t*>& ActionsOfPairs()
{
#define ORV_PAIR_ROW(pair, action) {#pair, u"" #action},
    static const std::map<std::string_view, const char16_t*> rows{ORV_FOR_EACH_PAIR(ORV_PAIR_ROW)};
#undef ORV_PAIR_ROW
    return rows;
}

bool Contains(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

bool NamesParameter(std::string_view function)
{
    if (function.starts_with("OrvAct_Create") || function.starts_with("OrvAct_Decode")) return false;
    for (const char* end : {"Boolean", "Int32", "Int64", "Double", "String", "DateTime", "Guid", "EventType",
                            "MediaChannel", "Resource", "Rect", "ResultDataSet", "Enum", "HasParameter",
                            "RemoveParameter", "GetParameterType", "GetParameterEnum", "ParameterByName"}) {
        if (function.ends_with(end)) return true;
    }
    return false;
}

bool NamesDeclared(const Case& test)
{
    return NamesParameter(test.function) && test.variant > kKinds;
}

const char16_t* ActionName(const Case& test)
{
    for (const std::string_view head : {"OrvAct_Decode", "OrvAct_Create"}) {
        if (!test.function.starts_with(head)) continue;
        const auto pair = ActionsOfPairs().find(test.function.substr(head.size()));
        if (pair != ActionsOfPairs().end()) return pair->second;
    }
    return u"LenelAccessEvent";
}

TOrvHandle Generic()
{
    return OrvAct_CreateGenericAction(&kChannel, &kChannel, &kChannel, &kChannel, 7);
}

}  // namespace

unsigned Variants(std::string_view function)
{
    return NamesParameter(function) ? kKinds + 1 + static_cast<unsigned>(std::size(kDeclared)) : kSubjects;
}

void SetEveryParameter(TOrvHandle object)
{
    std::uint32_t code = 0;
    Talvec_Action_GetActionCode(object, &code);
    std::vector<TTalvecParameterPlainInfo> rows(64);
    rows.resize(Talvec_Action_EnumerateActionParameters(rows.data(), 64, code));
    for (const TTalvecParameterPlainInfo& row : rows) SetOne(*OrvInterfaceOf(object), row.NameW, row.Type);
}

TOrvHandle MakeSubject(const Case& test)
{
    if (NamesDeclared(test)) {
        TOrvHandle object = Talvec_Action_CreateActionByName(W(u"LenelAccessEvent"));
        SetEveryParameter(object);
        OrvInterfaceOf(object)->RemoveParameter(W(kDeclared[2]));
        return object;
    }
    const bool everyKind = NamesParameter(test.function) || test.variant % kSubjects == 3;
    if (!everyKind && test.variant % kSubjects == 2) return Generic();
    TOrvHandle object = nullptr;
    if (everyKind) {
        object = Talvec_Action_CreateActionByName(W(u"EveryKind"));
        SetEveryKind(object);
    } else if (test.variant % kSubjects == 1) {
        object = TalvecMatchAct_CreateActionByName(W(ActionName(test)));
        OrvInterfaceOf(object)->SetString(W(u"Comment"), W(kLong));
    } else {
        object = Talvec_Action_CreateActionByName(W(ActionName(test)));
    }
    SetEveryParameter(object);
    OrvAct_UpdateWindowsClientInfo(object, W(kLong), 3, W(kLong));
    return object;
}

std::string StateOf(TOrvHandle object)
{
    std::string state;
    std::uint32_t size = 0;
    OrvAct_StoreToBinBuffer(object, nullptr, 0, &size);
    state.resize(size);
    if (!OrvAct_StoreToBinBuffer(object, state.data(), size, &size)) state += "(no binary form)";
    std::uint32_t flags = 0;
    std::uint64_t data = 0;
    OrvAct_GetMessageFlags(object, &flags);
    OrvAct_GetInternalData(object, &data);
    DescribeBytes(state, &flags, sizeof flags);
    DescribeBytes(state, &data, sizeof data);
    return state;
}

std::uint32_t CloseAll(TOrvHandle object)
{
    std::uint32_t count = 0;
    OrvAct_GetReferenceCounter(object, &count);
    if (count == 0) OrvInterfaceOf(object)->AddRef();
    for (std::uint32_t i = 0; i < (count ? count : 1); ++i) OrvInterfaceOf(object)->Release();
    return count;
}

const char16_t* Text(const Case& test, unsigned place)
{
    const std::string_view name = test.function;
    if (NamesParameter(name) && place > 1) return kLong;
    if (NamesParameter(name)) return NamesDeclared(test) ? kDeclared[test.variant - kKinds - 1] : kNames[test.variant];
    if (Contains(name, "HeskActionTextTo")) return test.variant % 2 ? u"no action" : kSibling;
    if (Contains(name, "OrvActionTextTo")) return test.variant % 2 ? kTechnical : u"PanLeft (Camera: 7, Speed: 3)";
    if (Contains(name, "FromTextBuffer")) {
        const char16_t* const texts[] = {kTechnical, u"?EventStarted (EventID: 7, Comment: \"x\")",
                                         u"A(when: \"2026/13/01 00:00:00,000 GMT+00:00\")", kSibling};
        return texts[test.variant % 4];
    }
    if (Contains(name, "Property")) {
        const char16_t* const keys[] = {u"client-host", u"client-type", u"client-account", u"another property of mine"};
        return place < 2 ? keys[test.variant % 4] : kLong;
    }
    if (Contains(name, "ActionClassByName")) return u"CameraControl";
    if (Contains(name, "ByName")) return test.variant % 2 ? u"An action that nobody knows" : u"CameraOn";
    return kLong;
}

const char* NarrowText(const Case& test, unsigned place)
{
    static std::map<const char16_t*, std::string> narrow;
    const char16_t* wide = Text(test, place);
    std::string& text = narrow[wide];
    if (text.empty()) {
        for (const char16_t* unit = wide; *unit; ++unit) {
            if (*unit < 0x80) {
                text += static_cast<char>(*unit);
            } else {
                text += static_cast<char>(0xC0 | *unit >> 6);
                text += static_cast<char>(0x80 | (*unit & 0x3F));
            }
        }
    }
    return text.c_str();
}

std::uint64_t Number(const Case& test, unsigned place, unsigned width)
{
    const std::string_view name = test.function;
    if (width < 4) return 1;
    if (Contains(name, "FromTextBuffer")) return place <= 2 && width == 4 ? ORV_LENGTH_TERMINATED : 0;
    if (Contains(name, "FromBinBuffer")) return place <= 2 && width == 4 ? Image().size() : 0;
    if (Contains(name, "Store")) return place < 3 ? 4000 : 9;
    if (Contains(name, "EnumValue")) return place == 1 && Contains(name, "Enumerate") ? 2000 : name[0] == 'O' ? 11 : 2;
    if (Contains(name, "Enumerate") && place == 1) return 2000;
    if (Contains(name, "PriorityLevel")) return 5;
    if (Contains(name, "SysAlloc") || Contains(name, "CoTask")) return 8;
    if (Contains(name, "ClassInfo")) return 1;
    if (Contains(name, "ByCode") || Contains(name, "Parameter") || Contains(name, "GetActionInfo")) {
        static const std::uint32_t code = OrvAct_GetActionCodeByNameA("CameraOn");
        return place >= 2 ? 0 : code;
    }
    return 3;
}

const std::vector<char>& Image()
{
    static const std::vector<char> image = [] {
        TOrvHandle object = MakeSubject({"", 3});
        std::uint32_t size = 0;
        OrvAct_StoreToBinBuffer(object, nullptr, 0, &size);
        std::vector<char> bytes(size);
        OrvAct_StoreToBinBuffer(object, bytes.data(), size, &size);
        CloseAll(object);
        return bytes;
    }();
    return image;
}

const TOrvEventData& EventRecord()
{
    static const TOrvEventData record = [] {
        static TOrvHandle object = MakeSubject({"", 0});
        TOrvEventData made{};
        made.size = sizeof made;
        OrvAct_GetActionEventData(object, &made, nullptr);
        static std::vector<char> image;
        std::uint32_t size = 0;
        OrvAct_StoreToBinBuffer(object, nullptr, 0, &size);
        image.resize(size);
        OrvAct_StoreToBinBuffer(object, image.data(), size, &size);
        made.image = image.data();
        made.imageSize = size;
        return made;
    }();
    return record;
}

TOrvParameterValue ParameterValue(unsigned kind)
{
    TOrvParameterValue value{};
    value.kind = kind;
    if (kind == ORV_KIND_MediaChannel) value.payload.channel = kChannel;
    if (kind == ORV_KIND_Resource) value.payload.resource = kResource;
    if (kind == ORV_KIND_EventType) value.payload.eventType = {9, W(kLong)};
    if (kind == ORV_KIND_DateTime) value.payload.dateTime = kDate;
    if (kind == ORV_KIND_String || kind == ORV_KIND_ResultDataSet) value.text = SysAllocString(W(kLong));
    return value;
}

std::uint64_t told = 0;

void Tell(std::uint64_t number)
{
    told = (told ^ number) * 0x100000001B3;
}

void Tell(const OrvWChar* text)
{
    if (!text) return Tell(std::uint64_t{0});
    for (; *text; ++text) Tell(static_cast<std::uint64_t>(*text));
}

void DescribeBytes(std::string& answer, const void* bytes, std::size_t size)
{
    answer.append(static_cast<const char*>(bytes), size);
    answer += ';';
}

void Describe(std::string& answer, const OrvWChar* text)
{
    if (!text) {
        answer += "(null);";
        return;
    }
    std::size_t length = 0;
    while (text[length]) ++length;
    DescribeBytes(answer, text, length * sizeof(OrvWChar));
}

void Describe(std::string& answer, const char* text)
{
    answer.append(text ? text : "(null)") += ';';
}

void Describe(std::string& answer, const TOrvChannelValue& value)
{
    DescribeBytes(answer, &value.id, sizeof value.id);
    DescribeBytes(answer, &value.number, sizeof value.number);
    Describe(answer, value.name);
}

void Describe(std::string& answer, const TOrvEventTypeValue& value)
{
    DescribeBytes(answer, &value.id, sizeof value.id);
    Describe(answer, value.name);
}

void Describe(std::string& answer, const TOrvResourceValue& value)
{
    DescribeBytes(answer, &value.guid, sizeof value.guid);
    Describe(answer, value.name);
}

void Describe(std::string& answer, const TOrvResultDataItem& value)
{
    DescribeBytes(answer, &value, 12);  // without the padding
    Describe(answer, value.name);
}

void Describe(std::string& answer, const TOrvParameterValue& value)
{
    answer += std::to_string(value.kind) + ',' + std::to_string(value.enum_type) + ';';
    switch (value.kind) {
    case ORV_KIND_EventType:
        Describe(answer, TOrvEventTypeValue{value.payload.eventType.id, value.payload.eventType.name, 0});
        break;
    case ORV_KIND_MediaChannel: Describe(answer, value.payload.channel); break;
    case ORV_KIND_Resource: Describe(answer, value.payload.resource); break;
    default: DescribeBytes(answer, value.payload.bytes, 8); break;
    }
    Describe(answer, value.text);
}

void Describe(std::string& answer, const TOrvEventData& value)
{
    answer += std::to_string(value.code) + ';';
    const auto add = [&](const auto* field) {
        if (field) DescribeBytes(answer, field, sizeof *field);
        answer += field ? ';' : '-';
    };
    for (const std::int32_t* field : value.int32Field) add(field);
    for (const std::int64_t* field : value.int64Field) add(field);
    for (const double* field : value.doubleField) add(field);
    for (const TUlmoDateTime* field : value.dateField) add(field);
    for (const TOrvEventText& field : value.stringField) Describe(answer, field.text);
    for (const TOrvEventText& field : value.userField) Describe(answer, field.text);
}

}  // namespace Sample
