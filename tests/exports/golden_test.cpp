// One action in every form, as files in tests/golden: what is written must be them, what is read must be the action.
#include <gtest/gtest.h>
#include <OrvActions.hpp>

#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

#include "exports/boundary.h"

namespace {

using namespace OrvTest;

std::string Golden(const std::string& form)
{
    std::ifstream file(std::string(ORV_GOLDEN_DIR "/sensor_alarm.") + form, std::ios::binary);
    EXPECT_TRUE(file) << form;
    std::string content((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    EXPECT_TRUE(content.ends_with('\n')) << form;
    return content.substr(0, content.size() - 1);
}

orv::Action GoldenAction()
{
    return orv::Action::Parse(Golden("technical"));
}

std::string Binary(const orv::Action& action)
{
    std::uint32_t size = 0;
    OrvAct_StoreToBinBuffer(action.Handle(), nullptr, 0, &size);
    std::string bytes(size, '\0');
    EXPECT_TRUE(OrvAct_StoreToBinBuffer(action.Handle(), bytes.data(), size, nullptr));
    return bytes;
}

std::string Digits(const std::string& bytes)
{
    std::string digits;
    for (const char byte : bytes) {
        constexpr char kDigits[] = "0123456789abcdef";
        digits += kDigits[static_cast<unsigned char>(byte) >> 4];
        digits += kDigits[byte & 15];
    }
    return digits;
}

std::string Bytes(const std::string& digits)
{
    std::string bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
    }
    return bytes;
}

std::string Json(const orv::Action& action)
{
    constexpr std::uint32_t kNoLimit = 0xFFFFFFFF;
    std::uint32_t size = 0;
    OrvAct_StoreToJson(action.Handle(), nullptr, 0, &size, 1, &kNoLimit);
    std::u16string text(size, u'\0');
    EXPECT_TRUE(
        OrvAct_StoreToJson(action.Handle(), reinterpret_cast<OrvWChar*>(text.data()), size, nullptr, 1, &kNoLimit));
    return orv::ToUtf8(text.substr(0, size - 1));
}

std::string Taken(OrvBool (*store)(TOrvHandle, OrvBStr*), const orv::Action& action)
{
    OrvBStr text = nullptr;
    EXPECT_TRUE(store(action.Handle(), &text));
    const std::string narrow = orv::ToUtf8(Text(text));
    SysFreeString(text);
    return narrow;
}

// The columns that are filled, a line each, in the order of the record.
std::string Columns(const orv::Action& action)
{
    TOrvEventData record{};
    record.size = sizeof record;
    std::uint8_t unused = 9;
    EXPECT_TRUE(OrvAct_GetActionEventData(action.Handle(), &record, &unused));
    std::string lines = "Code " + std::to_string(record.code);
    const auto line = [&](const std::string& name, const std::string& value) { lines += "\n" + name + " " + value; };
    for (std::size_t i = 0; i < 4; ++i) {
        if (record.int32Field[i]) line(std::string("Int32Field") + "ABCD"[i], std::to_string(*record.int32Field[i]));
    }
    for (std::size_t i = 0; i < 4; ++i) {
        if (record.int64Field[i]) line(std::string("Int64Field") + "ABCD"[i], std::to_string(*record.int64Field[i]));
    }
    const auto text = [&](const std::string& name, const TOrvEventText& column) {
        const auto* units = reinterpret_cast<const char16_t*>(column.text);
        if (units) line(name, orv::ToUtf8(std::u16string_view(units, column.length)));
    };
    for (std::size_t i = 0; i < 4; ++i) text(std::string("StringField") + "ABCD"[i], record.stringField[i]);
    const char* const users[] = {"FirstUser", "SecondUser", "WindowsHost", "WindowsUser"};
    for (std::size_t i = 0; i < 4; ++i) text(std::string("StringField") + users[i], record.userField[i]);
    EXPECT_FALSE(record.doubleField[0] || record.doubleField[1] || record.dateField[0] || record.dateField[1]);
    return lines;
}

TEST(Golden, EveryFormIsWritten)
{
    const std::pair<const char*, std::function<std::string(const orv::Action&)>> forms[] = {
        {"technical", [](const orv::Action& action) { return action.TextUtf8(); }},
        {"plain", [](const orv::Action& action) { return action.PlainTextUtf8(); }},
        {"hex", [](const orv::Action& action) { return Digits(Binary(action)); }},
        {"json", Json},
        {"properties", [](const orv::Action& action) { return Taken(OrvAct_GetProperties, action); }},
        {"xml", [](const orv::Action& action) { return Taken(OrvAct_GetXML, action); }},
        {"record", Columns},  // last: it converts values in place
    };
    const orv::Action action = GoldenAction();
    for (const auto& [form, write] : forms) EXPECT_EQ(write(action), Golden(form)) << form;
}

TEST(Golden, TheEventRecordReadsBack)
{
    TOrvEventData record{};
    record.code = 1080;
    const std::string image = Bytes(Golden("hex"));
    record.image = image.data();
    record.imageSize = image.size();
    EXPECT_TRUE(orv::Action(OrvAct_RestoreActionFromEventData(&record)) == GoldenAction());

    // Without the image the columns give what they hold: all but the parameter that the catalogue does not know.
    const std::int32_t small[] = {7, 1, 0, -3};
    const std::int64_t large[] = {4711, 61924967324057610};
    const std::u16string channel = u"S\u00FCd & <Nord>";
    record.image = nullptr;
    for (const std::size_t i : {0, 1, 3}) record.int32Field[i] = &small[i];
    for (const std::size_t i : {0, 1}) record.int64Field[i] = &large[i];
    record.stringField[0] = {channel.size(), W(channel.c_str())};
    record.userField[ORV_EVENT_FIRST_USER] = {5, W(u"weber")};
    orv::Action expected = GoldenAction();
    expected.Remove("Level");
    EXPECT_EQ(orv::Action(OrvAct_RestoreActionFromEventData(&record)).TextUtf8(), expected.TextUtf8());
}

}  // namespace
