#include <OrvActions.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

// The first three operations of a sink belong to the caller: the library must not touch them.
template <class Base>
struct Untouched : Base {
    std::int32_t QueryInterface(const TOrvGuid&, void**) override
    {
        ADD_FAILURE();
        return 0;
    }
    std::uint32_t AddRef() override
    {
        ADD_FAILURE();
        return 0;
    }
    std::uint32_t Release() override
    {
        ADD_FAILURE();
        return 0;
    }
    std::vector<std::u16string> names;
};

struct ClassSink : Untouched<ITalvecActionClassSink> {
    void OnActionClass(const TTalvecActionClassPlainInfo* record) override { names.push_back(Text(record->NameW)); }
};

struct ActionSink : Untouched<ITalvecActionSink> {
    void OnAction(const TTalvecActionPlainInfo* record) override
    {
        names.push_back(Text(record->NameW));
        // A sink may ask the catalogue on its own thread.
        EXPECT_EQ(Talvec_Action_GetNumberOfActionParameters(record->Code), record->ParameterCount);
    }
};

struct ParameterSink : Untouched<ITalvecParameterSink> {
    void OnParameter(const TTalvecParameterPlainInfo* record) override { names.push_back(Text(record->NameW)); }
};

struct EnumValueSink : Untouched<ITalvecEnumValueSink> {
    void OnEnumValue(const TTalvecEnumValuePlainInfo* record) override { names.push_back(Text(record->NameW)); }
};

TEST(Sinks, GetWhatTheArraysGet)
{
    ClassSink classes;
    EXPECT_TRUE(Talvec_Action_EnumerateActionClassesInterface(&classes));
    std::vector<TTalvecActionClassPlainInfo> records(Talvec_Action_GetNumberOfActionClasses());
    ASSERT_EQ(Talvec_Action_EnumerateActionClasses(records.data(), static_cast<std::uint32_t>(records.size())),
              classes.names.size());
    for (std::size_t i = 0; i < records.size(); ++i) EXPECT_EQ(classes.names[i], Text(records[i].NameW));

    ActionSink actions;
    EXPECT_TRUE(Talvec_Action_EnumerateActionsInterface(&actions));
    EXPECT_EQ(actions.names.size(), Talvec_Action_GetNumberOfActions());
    EXPECT_EQ(actions.names.front(), u"ABCConnect");
}

TEST(Sinks, ParametersOfAnActionOrTheGeneralOnes)
{
    ParameterSink own, general, none;
    EXPECT_TRUE(Talvec_Action_EnumerateActionParametersInterface(&own, ORV_ACTION_ViewerConnect));
    EXPECT_EQ(own.names, (std::vector<std::u16string>{u"Viewer", u"Channel", u"PlayMode"}));
    EXPECT_TRUE(Talvec_Action_EnumerateActionParametersInterface(&general, ORV_GENERAL_PARAMETERS));
    EXPECT_EQ(general.names.size(), 13u);
    EXPECT_FALSE(Talvec_Action_EnumerateActionParametersInterface(&none, 999));
    EXPECT_TRUE(none.names.empty());
}

TEST(Sinks, EnumValuesByKindAndId)
{
    struct {
        std::uint32_t kind, id, count;
    } cases[] = {
        {ORV_ENUM_KIND_ALL, 12345, OrvAct_GetNumberOfEnumValues(ORV_ALL_ENUM_VALUES)},
        {ORV_ENUM_KIND_BOOLEAN, 12345, 2},
        {ORV_ENUM_KIND_BY_ID, 1, 2},
        {77, ORV_ENUM_PlcViewerPlayMode, Talvec_Action_GetNumberOfEnumValues(77, ORV_ENUM_PlcViewerPlayMode)},
        {ORV_ENUM_KIND_BY_ID, 12345, 0},
    };
    for (const auto& c : cases) {
        EnumValueSink sink;
        EXPECT_TRUE(Talvec_Action_EnumerateEnumValuesInterface(&sink, c.kind, c.id));
        EXPECT_EQ(sink.names.size(), c.count) << c.kind << ' ' << c.id;
    }
}

TEST(Sinks, NullSinks)
{
    EXPECT_FALSE(Talvec_Action_EnumerateActionClassesInterface(nullptr));
    EXPECT_FALSE(Talvec_Action_EnumerateActionsInterface(nullptr));
    EXPECT_FALSE(Talvec_Action_EnumerateActionParametersInterface(nullptr, ORV_ACTION_ViewerConnect));
    EXPECT_FALSE(Talvec_Action_EnumerateEnumValuesInterface(nullptr, 0, 0));
}

}  // namespace
