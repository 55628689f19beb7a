#include "catalogue/extension_reader.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "catalogue/settings.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {
namespace {

class ExtensionReading : public testing::Test, ExtensionListener {
protected:
    void Read(const std::string& document)
    {
        remarks_.clear();
        ExtensionReader(catalogue_, this).Read(document.c_str());
    }
    // One action with this inside, named A with code 10000.
    const TOrvActionInternalInfo& Action(const std::string& attributes, const std::string& inside)
    {
        const std::string code = std::to_string(10000 + actions_++);
        Read("<PLC><actions><action name='A" + code + "' code='" + code + "' " + attributes + ">" + inside +
             "</action></actions></PLC>");
        const TOrvActionInternalInfo* action = catalogue_.FindActionByName(Ulmo::WideFromUtf8("A" + code));
        EXPECT_NE(action, nullptr);
        EXPECT_EQ(action->Flags, 0U);
        return *action;
    }
    const TOrvParameterInternalInfo& Parameter(const std::string& attributes, const std::string& inside = {})
    {
        return Action("class='1'", "<params><parameter " + attributes + ">" + inside + "</parameter></params>")
            .Parameters[0];
    }
    void OnRemark(Severity severity, std::size_t position, const std::string& text) override
    {
        remarks_ += (severity == Severity::Error ? "E" : "W") + std::to_string(position) + " " + text + "\n";
    }

    TOrvActionCatalogue catalogue_{TOrvActionCatalogue::Content::BuiltIn};
    std::string remarks_;
    int actions_ = 0;
};

std::string Show(const TOrvBaseNameInfo& entry)
{
    EXPECT_EQ(entry.NativePlain.W.view(), entry.NeutralPlain.W.view());
    EXPECT_EQ(entry.NativePlain.U.view(), entry.NeutralPlain.U.view());
    return std::string(entry.NativePlain.U.view()) + "|" + std::string(entry.Description.U.view());
}

TEST_F(ExtensionReading, RefusesWhatIsBeyondTheLimits)
{
    const auto nested = [](std::size_t depth) {
        std::string begin, end;
        for (std::size_t i = 1; i < depth; ++i) {
            begin += "<a><b/>";
            end += "</a>";
        }
        return "<PLC>" + begin + end + "</PLC>";
    };
    Read(nested(ExtensionReader::kDeepestElement - 1));  // and one below the innermost
    EXPECT_THROW(Read(nested(ExtensionReader::kDeepestElement)), Ulmo::XMLNodeParsingException);
    const std::string document = "<PLC></PLC>";
    const std::string room(ExtensionReader::kLargestDocument - document.size(), ' ');
    Read(document + room);
    EXPECT_THROW(Read(document + room + ' '), Ulmo::XMLNodeParsingException);
}

TEST_F(ExtensionReading, TextsAndDefaults)
{
    Read(
        "<plc><actions><ACTION code='10001' class='0' priority='7' flags='9'>"
        "<name>Gr\xC3\xBC\xC3\x9F</name><plain>T\xC3\xBCr</plain><description/></ACTION></actions>"
        "<actionclasses><actionclass name='Own' code='1000'><name>no</name><description>d &amp; e</description>"
        "</actionclass></actionclasses>"
        "<enums><enum name='E' code='1000'><values><value name='V' value='-1'/><value name='W' value='+2' text='w'/>"
        "</values></enum></enums></plc>");
    EXPECT_EQ(remarks_.find("number"), std::string::npos) << remarks_;
    const TOrvActionInternalInfo* action = catalogue_.FindActionByCode(10001);
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(Show(*action), "T\xC3\xBCr|Gr\xC3\xBC\xC3\x9F");
    EXPECT_EQ(action->LowerName.view(), u"gr\u00FC\u00DF");
    EXPECT_EQ(action->Priority, 7U);
    EXPECT_EQ(action->Flags, 9U);
    EXPECT_EQ(action->Parameters.size(), 0U);
    EXPECT_EQ(action->InternalIndex, 429U);
    EXPECT_EQ(action->Class.get(), catalogue_.FindActionClassByCode(0));
    const TOrvActionClassInternalInfo* own = catalogue_.FindActionClassByName(u"OWN");
    EXPECT_EQ(Show(*own), "Own|d & e");
    EXPECT_EQ(own->Priority, 5U);
    EXPECT_EQ(own->Flags, 0U);
    EXPECT_EQ(catalogue_.FindEnumTypeId(u"e"), 5096U);
    EXPECT_EQ(Show(*catalogue_.FindEnumValue(5096, 0xFFFFFFFF)), "V|V");
    EXPECT_EQ(Show(*catalogue_.FindEnumValue(5096, 2)), "w|W");
    EXPECT_TRUE(Settings::NativeTranslation);
}

// Rows in, what is registered out: classes, actions and enum values beyond the built-in ones.
TEST_F(ExtensionReading, RowsThatCount)
{
    const std::size_t classes = catalogue_.ClassesByName().size();
    const std::size_t actions = catalogue_.ActionsByName().size();
    const std::size_t values = catalogue_.EnumValues().size();
    struct Case {
        const char* section;
        const char* rows;
        const char* added;
        const char* remark = "";
    };
    const Case cases[] = {
        {"actionclasses", "<actionclass name='a' code='999'/>", "000"},
        {"actionclasses", "<actionclass name='a' code='1000x'/>", "100", "no decimal number: it is read as 1000\n"},
        {"actionclasses", "<actionclass name='b'><code>1001</code></actionclass>", "000", "code is 0,"},
        {"actionclasses", "<actionclass name='b' Code='1001'/><actionclass code='1001'/>", "000"},
        {"actionclasses", "<actionclass name='' code='1001'><name>b</name></actionclass>", "000"},
        {"actionclasses", "<actionclass name='VIDEO' code='1002'/><class name='c' code='1003'/>", "000",
         "'VIDEO' is dropped: the name is taken already\n"},
        {"ActionClasses", "<actionclass name='c' code='1003'/>", "000"},
        {"actions",
         "<action name='0123456789012345678901234567890123456789012345678901234567890123456789012345678901234567890123"
         "456789x' code='9999' class='1'/>",
         "000", "456789' is skipped: its code is 9999,"},
        {"actions", "<action name='a' code='-10000' class='1'/>", "000"},
        {"actions", "<action name='a' class='1'><code>10000</code></action>", "000", "code is 0,"},
        {"actions", "<action name='a' code='10000'/>", "000"},
        {"actions", "<action name='a' code='10000'><class/></action>", "010"},
        {"actions", "<action name='PanLEFT' code='10001' class='1'/>", "000"},
        {"enums", "<enum name='a' code='999'><values><value name='v' value='1'/></values></enum>", "000"},
        {"enums", "<enum name='a'><code>1000</code><values/></enum>", "000", "code is 0,"},
        {"enums", "<enum name='a' code='1000'><value name='v' value='1'/></enum>", "000"},
        {"enums", "<enum name='a' code='1000'><values><value name='v'><value>1</value></value></values></enum>", "000"},
        {"enums",
         "<enum name='a' code='1000'><values><value name='' value='1'/><value name='v' value='x'/>"
         "</values></enum>",
         "001"},
        {"enums",
         "<enum name='b' code='1000'><values><value name='w' value='0'/><value name='w' value='1'/>"
         "</values></enum>",
         "001"},
    };
    std::size_t added[] = {classes, actions, values};
    for (const Case& item : cases) {
        Read(std::string("<PLC><") + item.section + ">" + item.rows + "</" + item.section + "></PLC>");
        const std::size_t now[] = {catalogue_.ClassesByName().size(), catalogue_.ActionsByName().size(),
                                   catalogue_.EnumValues().size()};
        std::string difference;
        for (int i = 0; i < 3; ++i) difference += std::to_string(now[i] - std::exchange(added[i], now[i]));
        EXPECT_EQ(difference, item.added) << item.rows;
        EXPECT_FALSE(remarks_.empty() && item.added == std::string("000")) << "in silence: " << item.rows;
        EXPECT_NE(remarks_.find(item.remark), std::string::npos) << remarks_;
    }
    EXPECT_EQ(catalogue_.FindEnumTypeId(u"B"), 5096U);
    EXPECT_EQ(catalogue_.FindEnumValue(5096, 0)->NameW.view(), u"v");
    for (const char* ignored :
         {"<plcs><actions><action name='z' code='12345' class='1'/></actions></plcs>", "<!-- nothing -->"}) {
        Read(ignored);
        EXPECT_EQ(remarks_, "E0 the root is not <PLC>: the file is ignored\n");
    }
    EXPECT_EQ(catalogue_.FindActionByCode(12345), nullptr);
}

TEST_F(ExtensionReading, ClassesOfActions)
{
    const auto codeOf = [this](const std::string& attributes, const std::string& inside = {}) {
        const auto actionClass = Action(attributes, inside).Class;
        return actionClass ? static_cast<int>(actionClass->Code) : -1;
    };
    EXPECT_EQ(codeOf("class='Video'"), 1);
    EXPECT_EQ(remarks_, "");
    EXPECT_EQ(codeOf("class='1'"), 1);
    EXPECT_EQ(remarks_, "");
    EXPECT_EQ(codeOf("class='vIdeo '"), 0);
    EXPECT_EQ(codeOf("class='Nobody'"), 0);
    EXPECT_NE(remarks_.find("System"), std::string::npos);
    EXPECT_EQ(codeOf("", "<class>video</class>"), 1);
    EXPECT_EQ(codeOf("", "<class>1</class>"), 0);
    EXPECT_EQ(codeOf("class='4711'"), -1);
    EXPECT_EQ(codeOf("class='1Video'"), 1);
    EXPECT_NE(remarks_.find("only the digits at the start of the class"), std::string::npos);
}

TEST_F(ExtensionReading, Parameters)
{
    struct Case {
        const char* attributes;
        std::uint32_t type, enumType, view, columns;
        const char* remark;
    };
    const Case cases[] = {
        {"name='p' type='DigitalInputState' view='VideoInput'", 2, 4096, 4, 0, ""},
        {"name='p' type='BOOL' dbfield='Int32_A|String_A'", 1, 0, 0, 0x101, ""},
        {"name='p' type='Integer'", 2, 0, 0, 0, "plain 32-bit number: 'Integer' is no type, and no enum so far\n"},
        {"name='p' type=''", 2, 0, 0, 0, "plain 32-bit number, since its type is empty\n"},
        {"name='p' type='String' view='Monitor' dbfield='None'", 5, 0, 0, 0, "no view 'Monitor'"},
        {"name='p' type='Int64' dbfield='Int64_A|'", 3, 0, 0, 0,
         "no column ''\nW100 the parameter 'p' gets no column at all: beside a bar at least two must be good\n"},
        {"name='p' type='Guid' dbfield='Int64_A|Nothing|Int64_B'", 7, 0, 0, 0x30, "no column 'Nothing'\n"},
        {"name='p' type='Guid' dbfield='X|Int64_A||Y|Int64_B'", 7, 0, 0, 0x30, "no column 'X', nor are 2 other"},
        {"name='p' type='Rect' flags='1'", 11, 0, 0, 0, "'flags' has no effect"},
    };
    for (const Case& item : cases) {
        const TOrvParameterInternalInfo& parameter = Parameter(item.attributes);
        EXPECT_EQ(parameter.Type, item.type) << item.attributes;
        EXPECT_EQ(parameter.EnumType, item.enumType) << item.attributes;
        EXPECT_EQ(parameter.View, item.view) << item.attributes;
        EXPECT_EQ(parameter.DbField, item.columns) << item.attributes;
        EXPECT_EQ(parameter.Priority, 5U);
        EXPECT_EQ(remarks_.empty(), *item.remark == 0) << remarks_;
        EXPECT_NE(remarks_.find(item.remark), std::string::npos) << remarks_;
    }
    for (const std::size_t length : {100U, 101U}) {
        Parameter("name='p' type='" + std::string(length, 'x') + "'");
        EXPECT_NE(remarks_.find(length > 100 ? "xx...' is no type" : "xx' is no type"), std::string::npos) << remarks_;
    }
    EXPECT_EQ(Show(Parameter("name='p' type='Int32' priority='8'", "<plain>P</plain>")), "P|p");
    EXPECT_EQ(Parameter("name='p'", "<type>String</type>").Type, 2U);
    EXPECT_NE(remarks_.find("plain 32-bit number, since its type is no attribute\n"), std::string::npos) << remarks_;
    EXPECT_EQ(Action("class='1'", "<params><parameter name='a' type='Bool'/></params><parameters/>").Parameters.size(),
              0U);
    EXPECT_NE(remarks_.find("E59 <params> is not read"), std::string::npos) << remarks_;
    const TOrvActionInternalInfo& repeated =
        Action("class='1'",
               "<parameters><parameter name='b' type='Bool'/><parameter name='' type='Bool'/><parameter name='a'/>"
               "<parameter name='B' type='String'/></parameters>");
    EXPECT_EQ(repeated.Parameters.size(), 2U);
    EXPECT_EQ(repeated.FindParameter(u"B"), 0U);
    EXPECT_TRUE(std::ranges::equal(repeated.KeyOrder(), std::vector<std::uint32_t>{0, 1}));
    EXPECT_NE(remarks_.find("more than once"), std::string::npos);
}

TEST_F(ExtensionReading, CollidingExtensions)
{
    Read(
        "<PLC><enums><enum name='A' code='1000'><values><value name='a' value='1'/></values></enum>"
        "<enum name='B' code='1000'><values><value name='b' value='1' code='9'/><value name='c' "
        "value='2'/></values></enum>"
        "<enum name='A' code='1001'><values><value name='d' value='7'/></values></enum></enums>"
        "<actions><action name='One' code='10000' class='1'/><action name='Two' code='10000' class='1' value='1'/>"
        "<action name='ONE' code='10001' class='1'/></actions></PLC>");
    EXPECT_EQ(catalogue_.FindEnumTypeId(u"a"), 5096U);
    EXPECT_EQ(catalogue_.FindEnumTypeId(u"b"), 5096U);
    EXPECT_EQ(catalogue_.FindEnumValue(5096, 1)->NameW.view(), u"a");
    EXPECT_EQ(catalogue_.FindEnumValue(5096, 2)->NameW.view(), u"c");
    EXPECT_EQ(catalogue_.FindEnumValue(5097, 7)->NameW.view(), u"d");
    EXPECT_EQ(catalogue_.FindActionByCode(10000)->NameW.view(), u"Two");
    EXPECT_EQ(catalogue_.FindActionByName(u"one")->Code, 10000U);
    EXPECT_EQ(catalogue_.FindActionByCode(10001), nullptr);
    EXPECT_EQ(remarks_,
              "W105 the enum 'B' adds its values to the enum 'A', which has its code\n"
              "W151 the attribute 'code' has no effect\n"
              "E141 the value 'b' is dropped: its number is that of 'a'\n"
              "E210 the enum 'A' gets no name: it is that of an enum with another code; its values are read\n"
              "W384 the attribute 'value' has no effect\n"
              "W361 the action 'Two' takes its code over from 'One', which is then found by its name alone\n"
              "E403 the action 'ONE' is dropped: the name is taken already\n");
}

TEST_F(ExtensionReading, RemarksPointAtTheirPlace)
{
    Read("<PLC>\n<actions><action Name='a' code='12a' class='1'/></actions><Enums/><enums/><enums/></PLC>");
    EXPECT_EQ(remarks_,
              "E64 <Enums> is not read: it is written <enums>\n"
              "E80 <enums> is not read: only the first of that name counts\n"
              "E15 the action is skipped: it has no 'name'\n"
              "W23 the attribute 'Name' has no effect: it is written 'name'\n");
    Read(
        "<PLC><actions><action name='a' code='99999999999' class='1'><plain><![CDATA[x]]></plain>"
        "<code>1</code><note/></action></actions></PLC>");
    EXPECT_EQ(remarks_,
              "W88 <code> is not read: only the attribute counts\n"
              "W102 <note> has no effect\n"
              "W31 '99999999999' is out of range: it is read as 2147483647\n"
              "W60 <plain> has no text that counts (CDATA does not): the name is used\n");
}

// Far more parameters than slots, some of them twice: all of it in sensible time.
TEST_F(ExtensionReading, HugeActions)
{
    std::string list = "<params>";
    for (int i = 0; i < 70'000; ++i) {
        list += "<parameter name='p" + std::to_string(i % 69'999) + "' type='Int32'/>";
    }
    const TOrvActionInternalInfo& action = Action("class='1'", list + "</params>");
    EXPECT_EQ(action.Parameters.size(), 70'000U);
    EXPECT_TRUE(action.HasRepeatedNames());
    EXPECT_EQ(action.FindParameter(u"P0"), 0U);
    EXPECT_EQ(action.FindParameter(u"p69998"), 69'998U);
    EXPECT_EQ(action.FindParameter(u"p69999"), TOrvActionInternalInfo::kNotFound);
}

}  // namespace
}  // namespace OrvPLC
