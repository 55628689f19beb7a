#include "forms/result_data.h"

#include <gtest/gtest.h>

#include "objects/parameter.h"
#include "platform/system_string.h"
#include "ulmo/number_text.h"

namespace OrvPLC {
namespace {

std::u16string Shown(std::u16string_view internalForm)
{
    std::u16string shown;
    AppendLiteralList(shown, internalForm);
    return shown.substr(2, shown.size() - 4);
}

TEST(ResultData, ReadsTheInternalForm)
{
    const struct {
        const char16_t* text;
        const char16_t* items;
    } rows[] = {
        {u"1 2 3 4 5 'a', 6 7 8 9 0 'b c'", u"{ 1, 2, 3, 4, 5, \"a\" }, { 6, 7, 8, 9, 0, \"b c\" }"},
        {u"\t\n 1\v2\f3\r4 5''", u"{ 1, 2, 3, 4, 5, \"\" }"},
        {u"1 2 3 4 5 anything 'a'   ,,, 6 7 8 9 0 'b'", u"{ 1, 2, 3, 4, 5, \"a\" }, { 6, 7, 8, 9, 0, \"b\" }"},
        {u"1 2 3 4 5 'it's' 6 7 8 9 0 'b'", u"{ 1, 2, 3, 4, 5, \"it\" }"},
        {u"1 -2 +3 65535 -2147483648 'a'", u"{ 1, 65534, 3, 65535, 2147483648, \"a\" }"},
        {u"007 8 9 10 2147483647 'a'", u"{ 7, 8, 9, 10, 2147483647, \"a\" }"},
        {u"1 2 3 4 5 'a', 65536 1 1 1 1 'b'", u"{ 1, 2, 3, 4, 5, \"a\" }"},
        {u"1 2 3 4 5 'a', 1 1 1 1 2147483648 'b'", u"{ 1, 2, 3, 4, 5, \"a\" }"},
        {u"1 2 3 4 5 'a', 1 1 1 99999999999999999999999999 1 'b'", u"{ 1, 2, 3, 4, 5, \"a\" }"},
        {u"1 2 3 4 5 'a', 1 1 1 1 1 'b", u"{ 1, 2, 3, 4, 5, \"a\" }"},
        {u"1 2 3 4 'a'", u""},
        {u"1, 2 3 4 5 'a'", u""},
        {u"- 1 2 3 4 5 'a'", u""},
        {u"", u""},
    };
    for (const auto& row : rows) EXPECT_EQ(Shown(row.text), row.items);
}

TEST(ResultData, KeepsItsItemsUntilTheNextGoodRead)
{
    char16_t* name = Platform::NewSystemString(u"n");
    const TOrvResultDataItem items[] = {{1, 65535, -3, 4, 5, reinterpret_cast<OrvBStr>(name)},
                                        {6, 7, 8, 9, 10, nullptr}};
    TOrvParameter value;
    value.SetResultDataSet(items, 2);
    Platform::FreeSystemString(name);
    EXPECT_EQ(value.Wide(), u"1 65535 65533 4 5 'n', 6 7 8 9 10 ''");

    TOrvResultDataList list{};
    ASSERT_TRUE(value.ReadResultDataSet(list));
    ASSERT_EQ(list.count, 2u);
    EXPECT_EQ(list.items[0].field1, 65535);
    EXPECT_EQ(list.items[0].field2, -3);
    EXPECT_EQ(list.items[0].field4, 5);
    EXPECT_EQ(*reinterpret_cast<const char16_t*>(list.items[0].name), u'n');
    EXPECT_NE(list.items[1].name, nullptr);

    TOrvParameter copy = value;
    ASSERT_TRUE(copy.ReadResultDataSet(list));
    EXPECT_EQ(list.count, 2u);
    value.SetResultDataText(u"rubbish");
    ASSERT_TRUE(value.ReadResultDataSet(list));
    EXPECT_EQ(list.count, 2u);
    value.SetResultDataText(u"");
    ASSERT_TRUE(value.ReadResultDataSet(list));
    EXPECT_EQ(list.count, 0u);
    value.SetString(u"1 2 3 4 5 'a'");
    EXPECT_FALSE(value.ReadResultDataSet(list));
}

}  // namespace
}  // namespace OrvPLC
