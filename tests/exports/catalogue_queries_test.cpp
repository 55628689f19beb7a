#include <string>
#include <vector>

#include "exports/boundary.h"

namespace {

using OrvTest::Text;
using OrvTest::W;

// Writes back what a test writes over, in the set that was selected then.
class KeptTexts {
public:
    explicit KeptTexts(uint32_t code)
    {
        OrvAct_GetNativeTranslation(&native_);
        for (const OrvBool set : {OrvBool{1}, OrvBool{0}}) {
            OrvAct_SetNativeTranslation(set);
            OrvAct_GetActionInfo(&record_, code);
            plain_[set] = Text(record_.PlainNameW);
        }
        description_ = Text(record_.DescriptionW);
        OrvAct_SetNativeTranslation(native_);
    }
    ~KeptTexts()
    {
        record_.DescriptionW = W(description_.c_str());
        for (const OrvBool set : {OrvBool{1}, OrvBool{0}}) {
            OrvAct_SetNativeTranslation(set);
            record_.PlainNameW = W(plain_[set].c_str());
            OrvAct_SetActionPlainInfo(&record_);
        }
        OrvAct_SetNativeTranslation(native_);
    }

private:
    TOrvActionPlainInfo record_{};
    std::u16string plain_[2];
    std::u16string description_;
    OrvBool native_ = 1;
};

std::u16string PlainName(uint32_t code)
{
    TOrvActionPlainInfo record{};
    EXPECT_TRUE(OrvAct_GetActionInfo(&record, code));
    return Text(record.PlainNameW);
}

TEST(CatalogueLookups, FindNamesInAnyCase)
{
    const struct {
        const char16_t* wide;
        const char* narrow;
        uint32_t action;
        uint32_t actionClass;
    } cases[] = {
        {u"PanLeft", "PanLeft", ORV_ACTION_PanLeft, 0},
        {u"pANlEFT", "pANlEFT", ORV_ACTION_PanLeft, 0},
        {u"PanLef", "PanLef", 0, 0},
        {u"PanLeft ", "PanLeft ", 0, 0},
        {u"CAMERACONTROL", "CAMERACONTROL", 0, ORV_CLASS_CameraControl},
        {u"GeneralEventInfo", "GeneralEventInfo", 0, 0},
        {u"", "", 0, 0},
        {u"Schwenk\u00C4", "Schwenk\xC3\x84", 0, 0},
    };
    for (const auto& row : cases) {
        EXPECT_EQ(OrvAct_GetActionCodeByNameW(W(row.wide)), row.action) << row.narrow;
        EXPECT_EQ(Talvec_Action_GetActionCodeByNameA(row.narrow), row.action) << row.narrow;
        EXPECT_EQ(Talvec_Action_GetActionClassByNameW(W(row.wide)), row.actionClass) << row.narrow;
        EXPECT_EQ(OrvAct_GetActionClassByNameA(row.narrow), row.actionClass) << row.narrow;
    }
    EXPECT_EQ(OrvAct_GetActionCodeByNameW(nullptr), 0u);
    EXPECT_EQ(OrvAct_GetActionCodeByNameA(nullptr), 0u);
    EXPECT_EQ(OrvAct_GetActionCodeByNameA(std::string(1000, 'x').c_str()), 0u);
}

TEST(CatalogueLookups, IndexesFollowTheNames)
{
    std::vector<TOrvActionPlainInfo> actions(OrvAct_GetNumberOfActions());
    ASSERT_EQ(OrvAct_EnumerateActions(actions.data(), static_cast<uint32_t>(actions.size())), actions.size());
    for (uint32_t i = 0; i < actions.size(); ++i) {
        EXPECT_EQ(OrvAct_GetActionCodeByIndex(i), actions[i].Code) << actions[i].NameA;
        EXPECT_EQ(Talvec_Action_GetInternalIndexByCode(actions[i].Code), i) << actions[i].NameA;
    }
    EXPECT_EQ(OrvAct_GetActionCodeByIndex(429), 0u);
    EXPECT_EQ(OrvAct_GetInternalIndexByCode(4), 0u);
}

TEST(CatalogueQueries, Counts)
{
    EXPECT_EQ(OrvAct_GetNumberOfActions(), 429u);
    EXPECT_EQ(Talvec_Action_GetNumberOfActionClasses(), 23u);
    EXPECT_EQ(OrvAct_GetNumberOfActionParameters(ORV_ACTION_PanLeft), 2u);
    EXPECT_EQ(OrvAct_GetNumberOfActionParameters(4), 0u);
    EXPECT_EQ(OrvAct_GetNumberOfActionParameters(ORV_GENERAL_PARAMETERS), 0u);
    EXPECT_EQ(Talvec_Action_GetNumberOfActionParameters(ORV_GENERAL_PARAMETERS), 13u);
    EXPECT_EQ(OrvAct_GetNumberOfEnumValues(ORV_TYPE_BOOLEAN), 2u);
    EXPECT_EQ(OrvAct_GetNumberOfEnumValues(ORV_TYPE_INT32), 0u);
    EXPECT_EQ(Talvec_Action_GetNumberOfEnumValues(ORV_ENUM_KIND_BOOLEAN, ORV_ENUM_DigitalInputState), 2u);
    EXPECT_EQ(Talvec_Action_GetNumberOfEnumValues(77, ORV_ENUM_DigitalInputState), 3u);
    EXPECT_EQ(Talvec_Action_GetNumberOfEnumValues(ORV_ENUM_KIND_ALL, ORV_ENUM_DigitalInputState),
              OrvAct_GetNumberOfEnumValues(ORV_ALL_ENUM_VALUES));
}

TEST(CatalogueQueries, EnumerationsStopAtTheCapacity)
{
    TTalvecActionPlainInfo records[11] = {};
    EXPECT_EQ(Talvec_Action_EnumerateActions(records, 10), 10u);
    EXPECT_STREQ(records[0].NameA, "ABCConnect");
    EXPECT_EQ(records[10].NameA, nullptr);
    EXPECT_EQ(OrvAct_EnumerateActions(nullptr, 0), 0u);

    TOrvParameterPlainInfo parameters[4] = {};
    EXPECT_EQ(OrvAct_EnumerateActionParameters(parameters, 4, ORV_ACTION_PanLeft), 2u);
    EXPECT_STREQ(parameters[0].NameA, "Camera");
    EXPECT_EQ(OrvAct_EnumerateActionParameters(parameters, 1, ORV_ACTION_PanLeft), 1u);

    TOrvEnumValuePlainInfo values[3] = {};
    EXPECT_EQ(OrvAct_EnumerateEnumValues(values, 3, ORV_TYPE_BOOLEAN), 2u);
    EXPECT_EQ(Text(values[0].PlainNameW), u"False");
    EXPECT_EQ(Text(values[1].NameW), u"True");
    EXPECT_EQ(values[2].NameA, nullptr);
}

TEST(CatalogueQueries, ReportTypesByFamily)
{
    const struct {
        uint32_t action;
        uint32_t index;
        const char* name;
        uint32_t publicType;
        uint32_t kind;
        uint32_t enumType;
        uint32_t view;
        uint32_t columns;
    } cases[] = {
        {ORV_ACTION_PanLeft, 0, "Camera", ORV_TYPE_MEDIA_CHANNEL, ORV_KIND_MediaChannel, 0, ORV_VIEW_PTZHead, 0x111},
        {ORV_ACTION_PanLeft, 1, "Speed", ORV_TYPE_INT32, ORV_KIND_Numeric32Bit, 0, 0, ORV_COLUMN_Int32_B},
        {ORV_ACTION_DigitalInput, 1, "State", 10, ORV_KIND_Numeric32Bit, ORV_ENUM_DigitalInputState, 0, 2},
    };
    for (const auto& row : cases) {
        TOrvParameterPlainInfo plain{};
        plain.Reserved = 1;
        TTalvecParameterPlainInfo full{};
        ASSERT_TRUE(OrvAct_GetActionParameterInfo(&plain, row.action, row.index)) << row.name;
        ASSERT_TRUE(Talvec_Action_GetActionParameterInfo(&full, row.action, row.index)) << row.name;
        EXPECT_STREQ(plain.NameA, row.name);
        EXPECT_EQ(plain.Type, row.publicType) << row.name;
        EXPECT_EQ(plain.View, row.view) << row.name;
        EXPECT_EQ(plain.Reserved, 0u) << row.name;
        EXPECT_EQ(full.Type, row.kind) << row.name;
        EXPECT_EQ(full.EnumType, row.enumType) << row.name;
        EXPECT_EQ(full.DbField, row.columns) << row.name;
        EXPECT_EQ(full.NameW, plain.NameW) << row.name;
    }
    TOrvEnumValuePlainInfo value{};
    EXPECT_TRUE(OrvAct_GetEnumValueInfo(&value, 50, 0));
    TTalvecEnumValuePlainInfo same{};
    EXPECT_TRUE(Talvec_Action_GetEnumValueInfo(&same, ORV_ENUM_KIND_ALL, ORV_ENUM_PlcClientType, 0));
    EXPECT_EQ(same.NameA, value.NameA);
}

TEST(CatalogueQueries, FailuresLeaveTheRecord)
{
    TOrvParameterPlainInfo parameter{};
    parameter.Type = 99;
    EXPECT_FALSE(OrvAct_GetActionParameterInfo(&parameter, ORV_ACTION_PanLeft, 2));
    EXPECT_FALSE(OrvAct_GetActionParameterInfo(&parameter, ORV_GENERAL_PARAMETERS, 0));
    EXPECT_FALSE(OrvAct_GetEventFieldInfo(&parameter, 20));
    EXPECT_EQ(parameter.Type, 99u);
    EXPECT_EQ(parameter.NameA, nullptr);

    TOrvActionPlainInfo action{};
    EXPECT_FALSE(OrvAct_GetActionInfo(&action, 0));
    action.PlainNameW = action.DescriptionW = W(u"x");
    EXPECT_FALSE(OrvAct_SetActionPlainInfo(&action));
    TTalvecEnumValuePlainInfo value{};
    EXPECT_FALSE(Talvec_Action_GetEnumValueInfo(&value, 2, ORV_ENUM_DigitalInputState, 3));
    TTalvecActionClassPlainInfo actionClass{};
    EXPECT_FALSE(Talvec_Action_GetActionClassInfo(&actionClass, 23));
}

TEST(CatalogueQueries, DescribeEventsAndMatchActions)
{
    TTalvecActionPlainInfo event{};
    event.Reserved = 77;
    ASSERT_TRUE(Talvec_Action_GetEventDescriptionInfo(&event));
    EXPECT_STREQ(event.NameA, "GeneralEventInfo");
    EXPECT_EQ(event.Code, 0u);
    EXPECT_EQ(event.Reserved, 77u) << "the field is the caller's";
    std::vector<TOrvParameterPlainInfo> fields(event.ParameterCount + 1);
    EXPECT_EQ(OrvAct_EnumerateEventFields(fields.data(), event.ParameterCount + 1), 20u);

    TTalvecParameterPlainInfo comment{};
    EXPECT_EQ(Talvec_Action_EnumerateEventFields(&comment, 1), 1u);
    ASSERT_TRUE(Talvec_Action_GetMatchActionDescriptionInfo(&comment));
    EXPECT_STREQ(comment.NameA, "Comment");
    EXPECT_EQ(comment.Priority, 8u);
    EXPECT_EQ(comment.Type, uint32_t{ORV_KIND_String});
}

TEST(CatalogueTexts, WriteTheSelectedSetAlone)
{
    const KeptTexts kept(ORV_ACTION_PanLeft);
    const std::u16string native = PlainName(ORV_ACTION_PanLeft);
    TOrvActionPlainInfo record{};
    ASSERT_TRUE(OrvAct_GetActionInfo(&record, ORV_ACTION_PanLeft));
    const std::u16string description = Text(record.DescriptionW);

    OrvAct_SetNativeTranslation(7);
    OrvBool flag = 0;
    EXPECT_TRUE(Talvec_Action_GetNativeTranslation(&flag));
    EXPECT_EQ(flag, 1) << "any byte but 0 is true";

    Talvec_Action_SetNativeTranslation(0);
    EXPECT_EQ(PlainName(ORV_ACTION_PanLeft), u"PanLeft");
    record.PlainNameW = W(u"links \u00E4");
    record.DescriptionW = W(u"");
    EXPECT_TRUE(OrvAct_SetActionPlainInfo(&record));
    ASSERT_TRUE(OrvAct_GetActionInfo(&record, ORV_ACTION_PanLeft));
    EXPECT_EQ(Text(record.PlainNameW), u"links \u00E4");
    EXPECT_STREQ(record.PlainNameU, "links \xC3\xA4");
    EXPECT_EQ(Text(record.DescriptionW), description) << "empty means keep";
    EXPECT_EQ(Text(record.NameW), u"PanLeft");

    OrvAct_SetNativeTranslation(1);
    EXPECT_EQ(PlainName(ORV_ACTION_PanLeft), native);
}

TEST(CatalogueTexts, BelongToOneParameter)
{
    TTalvecParameterPlainInfo left{}, right{};
    ASSERT_TRUE(Talvec_Action_GetActionParameterInfo(&left, ORV_ACTION_PanLeft, 1));
    const std::u16string plain = Text(left.PlainNameW);
    left.PlainNameW = W(u"Tempo");
    left.DescriptionW = W(u"");
    EXPECT_TRUE(Talvec_Action_SetActionParameterPlainInfo(&left, ORV_ACTION_PanLeft, 1));
    EXPECT_FALSE(Talvec_Action_SetActionParameterPlainInfo(&left, ORV_ACTION_PanLeft, 2));

    Talvec_Action_GetActionParameterInfo(&left, ORV_ACTION_PanLeft, 1);
    Talvec_Action_GetActionParameterInfo(&right, ORV_ACTION_PanRight, 1);
    EXPECT_EQ(Text(left.PlainNameW), u"Tempo");
    EXPECT_EQ(Text(right.PlainNameW), plain);

    left.PlainNameW = W(plain.c_str());
    EXPECT_TRUE(Talvec_Action_SetActionParameterPlainInfo(&left, ORV_ACTION_PanLeft, 1));
}

TEST(CatalogueTexts, OfGeneralParametersGoByName)
{
    TTalvecParameterPlainInfo comment{};
    ASSERT_TRUE(Talvec_Action_GetMatchActionDescriptionInfo(&comment));
    const std::u16string plain = Text(comment.PlainNameW);

    TTalvecParameterPlainInfo written{};
    written.NameW = W(u"COMMENT");
    written.PlainNameW = W(u"Anmerkung");
    written.DescriptionW = W(u"");
    EXPECT_TRUE(Talvec_Action_SetActionParameterPlainInfo(&written, ORV_GENERAL_PARAMETERS, 4711));
    Talvec_Action_GetMatchActionDescriptionInfo(&comment);
    EXPECT_EQ(Text(comment.PlainNameW), u"Anmerkung") << "one entry behind both";

    TOrvParameterPlainInfo restored{};
    restored.PlainNameW = W(plain.c_str());
    restored.DescriptionW = W(u"");
    EXPECT_FALSE(OrvAct_SetActionParameterPlainInfo(&restored, ORV_GENERAL_PARAMETERS, 0));
    EXPECT_TRUE(OrvAct_SetMatchActionDescriptionPlainInfo(&restored));
    written.NameW = W(u"NoSuchParameter");
    EXPECT_FALSE(Talvec_Action_SetActionParameterPlainInfo(&written, ORV_GENERAL_PARAMETERS, 0));
}

// Writes a plain name, looks for it and puts back what was there.
template <class Record>
void ExpectWritable(OrvBool (*get)(Record*), OrvBool (*set)(const Record*))
{
    Record record{}, seen{};
    ASSERT_TRUE(get(&record));
    const std::u16string plain = Text(record.PlainNameW);
    record.PlainNameW = W(u"geschrieben");
    record.DescriptionW = W(u"");
    EXPECT_TRUE(set(&record));
    EXPECT_TRUE(get(&seen));
    EXPECT_EQ(Text(seen.PlainNameW), u"geschrieben");
    record.PlainNameW = W(plain.c_str());
    EXPECT_TRUE(set(&record));
}

TEST(CatalogueTexts, OfClassesAndEventRecords)
{
    ExpectWritable<TOrvActionClassPlainInfo>([](auto* record) { return OrvAct_GetActionClassInfo(record, 3); },
                                             OrvAct_SetActionClassPlainInfo);
    ExpectWritable(Talvec_Action_GetEventDescriptionInfo, Talvec_Action_SetEventDescriptionPlainInfo);
    ExpectWritable<TOrvParameterPlainInfo>([](auto* record) { return OrvAct_GetEventFieldInfo(record, 19); },
                                           [](auto* record) { return OrvAct_SetEventFieldPlainInfo(record, 19); });
    TOrvParameterPlainInfo field{};
    TTalvecActionClassPlainInfo unknown{};
    unknown.Code = 23;
    field.PlainNameW = field.DescriptionW = unknown.PlainNameW = unknown.DescriptionW = W(u"x");
    EXPECT_FALSE(OrvAct_SetEventFieldPlainInfo(&field, 20));
    EXPECT_FALSE(Talvec_Action_SetActionClassPlainInfo(&unknown));
}

TEST(CatalogueTexts, OfEnumValuesTakeTheDescriptionFromTheName)
{
    TTalvecEnumValuePlainInfo value{};
    ASSERT_TRUE(Talvec_Action_GetEnumValueInfo(&value, ORV_ENUM_KIND_BY_ID, ORV_ENUM_DigitalInputState, 1));
    const std::u16string description = Text(value.DescriptionW);
    EXPECT_TRUE(Talvec_Action_SetEnumValuePlainInfo(&value));
    Talvec_Action_GetEnumValueInfo(&value, ORV_ENUM_KIND_BY_ID, ORV_ENUM_DigitalInputState, 1);
    EXPECT_EQ(Text(value.DescriptionW), u"Middle");

    TOrvEnumValuePlainInfo restored{};
    restored.Type = 10;
    restored.Value = 1;
    restored.PlainNameW = W(u"");
    restored.NameW = W(description.c_str());
    EXPECT_TRUE(OrvAct_SetEnumValuePlainInfo(&restored));
    Talvec_Action_GetEnumValueInfo(&value, ORV_ENUM_KIND_BY_ID, ORV_ENUM_DigitalInputState, 1);
    EXPECT_EQ(Text(value.DescriptionW), description);
    EXPECT_EQ(Text(value.NameW), u"Middle");
}

TEST(CatalogueQueries, LeaveTheLastErrorAlone)
{
    const TOrvHandle action = Talvec_Action_CreateActionByCode(ORV_ACTION_PanLeft);
    ASSERT_FALSE(OrvAct_StoreToTextBufferW(action, nullptr, 0, 0, 0, nullptr));
    TOrvActionPlainInfo record{};
    OrvAct_GetActionInfo(&record, 0);
    OrvAct_GetActionInfo(&record, ORV_ACTION_PanLeft);
    OrvAct_GetActionCodeByNameW(W(u"nobody"));
    OrvBool native = 0;
    EXPECT_TRUE(OrvAct_GetNativeTranslation(&native));
    EXPECT_TRUE(Talvec_Action_SetNativeTranslation(native));

    TOrvLastErrorInfo error{};
    EXPECT_TRUE(OrvAct_GetLastError(&error));
    EXPECT_EQ(error.subCode, uint32_t{ORV_SUBERROR_BUFFER_TOO_SMALL});

    // Unlike the other switch, the level has the frame of most functions.
    uint32_t level = 0;
    EXPECT_TRUE(Talvec_Action_GetPriorityLevel(&level));
    EXPECT_FALSE(OrvAct_GetLastError(&error));
    ASSERT_FALSE(OrvAct_StoreToTextBufferW(action, nullptr, 0, 0, 0, nullptr));
    EXPECT_TRUE(Talvec_Action_SetPriorityLevel(level));
    EXPECT_FALSE(OrvAct_GetLastError(&error));
    OrvAct_CloseHandle(action);
}

}  // namespace
