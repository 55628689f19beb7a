// Runs the conformance table through the C++ wrapper. bindings/conformance/cases.txt tells the form.
//
//     conformance_wrapper TABLE...
#include <OrvActions.hpp>

#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using Columns = std::vector<std::string>;

struct Case {
    std::string name;
    std::map<std::string, std::string> forms;
    std::vector<Columns> fields;
    std::vector<Columns> failures;
    std::vector<std::string> problems;

    void Expect(const std::string& what, const std::string& expected, const std::string& actual)
    {
        if (expected != actual) problems.push_back(what + "\n  expected " + expected + "\n  and got  " + actual);
    }
};

// Lines without a tab at their end lack empty last columns, so every line gets as many as the longest.
Columns Split(const std::string& line)
{
    constexpr std::size_t kMost = 10;
    Columns columns;
    std::istringstream rest(line);
    for (std::string column; std::getline(rest, column, '\t');) columns.push_back(column);
    columns.resize(std::max(kMost, columns.size()));
    return columns;
}

std::vector<Case> Cases(const char* path)
{
    std::vector<Case> cases;
    std::ifstream table(path, std::ios::binary);
    for (std::string line; std::getline(table, line);) {
        if (line.empty() || line[0] == '#') continue;
        const Columns columns = Split(line);
        if (columns[0] == "case") {
            cases.push_back({columns[1], {}, {}, {}, {}});
        } else if (columns[0] == "field") {
            cases.back().fields.push_back(columns);
        } else if (columns[0] == "fail") {
            cases.back().failures.push_back(columns);
        } else {
            cases.back().forms[columns[0]] = columns[1];
        }
    }
    return cases;
}

std::string Bytes(const std::string& digits)
{
    std::string bytes;
    for (std::size_t at = 0; at + 1 < digits.size(); at += 2) {
        bytes += static_cast<char>(std::stoi(digits.substr(at, 2), nullptr, 16));
    }
    return bytes;
}

std::string Digits(const std::string& bytes)
{
    std::ostringstream digits;
    for (const char byte : bytes) digits << std::hex << std::setw(2) << std::setfill('0') << (byte & 0xFF);
    return digits.str();
}

std::string Binary(const orv::Action& action)
{
    std::uint32_t size = 0;
    OrvAct_StoreToBinBuffer(action.Handle(), nullptr, 0, &size);
    std::string bytes(size, '\0');
    OrvAct_StoreToBinBuffer(action.Handle(), bytes.data(), size, nullptr);
    return bytes;
}

std::string Json(const orv::Action& action)
{
    constexpr std::uint32_t kNoLimit = 0xFFFFFFFF;
    std::uint32_t size = 0;
    OrvAct_StoreToJson(action.Handle(), nullptr, 0, &size, 1, &kNoLimit);
    std::vector<OrvWChar> text(size);
    OrvAct_StoreToJson(action.Handle(), text.data(), size, nullptr, 1, &kNoLimit);
    return orv::ToUtf8(orv::View(text.data()));
}

std::string Shown(const orv::Guid& guid)
{
    std::ostringstream text;
    text << std::hex << std::setfill('0') << std::setw(8) << guid.Data1 << '-' << std::setw(4) << guid.Data2 << '-'
         << std::setw(4) << guid.Data3;
    for (int at = 0; at < 8; ++at) text << (at == 0 || at == 2 ? "-" : "") << std::setw(2) << +guid.Data4[at];
    return text.str();
}

std::string Bits(double real)
{
    std::uint64_t bits = 0;
    std::memcpy(&bits, &real, sizeof bits);
    std::ostringstream text;
    text << std::hex << std::setfill('0') << std::setw(16) << bits;
    return text.str();
}

// The value that a read of its own kind gives, as the table has it.
std::string Shown(const orv::Action& action, const std::string& name, std::uint32_t kind)
{
    using std::to_string;
    switch (kind) {
    case ORV_KIND_Boolean: return action.Get<bool>(name).value() ? "1" : "0";
    case ORV_KIND_Numeric32Bit: return to_string(action.Get<std::int32_t>(name).value());
    case ORV_KIND_Numeric64Bit: return to_string(action.Get<std::int64_t>(name).value());
    case ORV_KIND_NumericDouble: return Bits(action.Get<double>(name).value());
    case ORV_KIND_DateTime: return to_string(action.Get<orv::DateTime>(name).value().value);
    case ORV_KIND_Guid: return Shown(action.Get<orv::Guid>(name).value());
    case ORV_KIND_EventType: {
        const auto value = action.Get<orv::EventType>(name).value();
        return to_string(value.id) + "|" + orv::ToUtf8(value.name);
    }
    case ORV_KIND_MediaChannel: {
        const auto value = action.Get<orv::Channel>(name).value();
        return to_string(value.id) + "|" + to_string(value.number) + "|" + orv::ToUtf8(value.name);
    }
    case ORV_KIND_Resource: {
        const auto value = action.Get<orv::Resource>(name).value();
        return Shown(value.guid) + "|" + orv::ToUtf8(value.name);
    }
    case ORV_KIND_Rect: {
        const auto value = action.Get<orv::Rect>(name).value();
        return to_string(value.top) + "," + to_string(value.left) + "," + to_string(value.bottom) + "," +
               to_string(value.right);
    }
    default: return "";
    }
}

std::string KindName(std::uint32_t kind)
{
#define ORV_NAME(name, number) \
    if (kind == number) return #name;
    ORV_FOR_EACH_KIND(ORV_NAME)
#undef ORV_NAME
    return "(none)";
}

// The wrapper reads a data set, whose fields no member of it shows, as its text does.
std::string TextOf(const orv::Action& action, const std::string& name)
{
    const OrvWChar* text = nullptr;
    OrvAct_GetProperty(action.Handle(), orv::TextArg(name).c_str(), &text);
    return text ? orv::ToUtf8(orv::View(text)) : "(absent)";
}

void CheckFields(Case& row, const orv::Action& action)
{
    std::map<std::string, orv::CarriedParameter> carried;
    for (orv::CarriedParameter& it : action.Parameters()) carried.emplace(orv::ToUtf8(it.name), it);
    row.Expect("number of parameters", std::to_string(row.fields.size()), std::to_string(carried.size()));
    for (const Columns& field : row.fields) {
        const auto found = carried.find(field[1]);
        if (found == carried.end()) {
            row.Expect(field[1], field[4], "(absent)");
            continue;
        }
        const auto& [name, kind, enumType] = found->second;
        const bool text = kind == ORV_KIND_String || kind == ORV_KIND_ResultDataSet;
        row.Expect(field[1] + " kind", field[2] + " " + field[3], KindName(kind) + " " + std::to_string(enumType));
        row.Expect(field[1], field[4], text ? TextOf(action, field[1]) : Shown(action, field[1], kind));
    }
}

void CheckForms(Case& row)
{
    auto& forms = row.forms;
    if (!forms.count("text")) return;
    const std::string technical = forms.count("technical") ? forms["technical"] : forms["text"];
    const orv::Action action = orv::Action::Parse(forms["text"]);
    CheckFields(row, action);
    row.Expect("technical", technical, action.TextUtf8());
    row.Expect("hex", forms["hex"], Digits(Binary(action)));
    if (forms.count("plain")) row.Expect("plain", forms["plain"], action.PlainTextUtf8());
    if (forms.count("json")) row.Expect("json", forms["json"], Json(action));

    const std::string bytes = Bytes(forms["hex"]);
    const orv::Action again(OrvAct_CreateFromBinBuffer(bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                                                       ORV_EXPECT_ANY, nullptr));
    row.Expect("read from bytes", technical, again ? again.TextUtf8() : "(null)");
    if (again) row.Expect("equal", "true", action == again ? "true" : "false");
}

std::string LastError()
{
    TOrvLastErrorInfo info;
    if (!OrvAct_GetLastError(&info)) return "-\t-\t-";
    return std::to_string(info.code) + "\t" + std::to_string(info.subCode) + "\t" +
           orv::ToUtf8(orv::View(info.messageW));
}

// What the wrapper throws is what the last error tells.
template <class Call>
std::string Thrown(Call call)
{
    try {
        return call() ? "true\t-\t-\t-\t-" : "false\t-\t" + LastError();
    } catch (const orv::Error& error) {
        return "false\t-\t" + std::to_string(error.Code()) + "\t" + std::to_string(error.SubCode()) + "\t" +
               error.what();
    }
}

std::string Failure(const Columns& columns)
{
    const std::string &call = columns[1], &argument = columns[2];
    const auto number = static_cast<std::uint32_t>(std::stoul(columns[3]));
    std::uint32_t second = 0;
    const auto told = [&](bool done) {
        return std::string(done ? "true\t" : "false\t") + std::to_string(second) + "\t" + LastError();
    };
    if (call == "parse") return Thrown([&] { return static_cast<bool>(orv::Action::TryParse(argument)); });
    if (call == "bytes") {
        const std::string bytes = Bytes(argument);
        const TOrvHandle handle = OrvAct_CreateFromBinBuffer(bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                                                             number, &second);
        const std::string answer = told(handle != nullptr);
        OrvAct_CloseHandle(handle);
        return answer;
    }
    const orv::TextArg text(argument);
    if (call == "from-sibling") {
        return Thrown([&] { return Talvec_Action_ConvertHeskActionTextToOrvActionText(text.c_str(), nullptr) != 0; });
    }
    if (call == "to-sibling") {
        return Thrown([&] { return Talvec_Action_ConvertOrvActionTextToHeskActionText(text.c_str(), nullptr) != 0; });
    }
    orv::Action action = orv::Action::Parse(argument);
    if (call == "role") return Thrown([&] { return action.SetVideoOutput({}), true; });
    if (call == "decode") return Thrown([&] { return OrvAct_DecodeABCDisconnect(action.Handle()) != 0; });
    if (call == "record") {
        TOrvEventData record{};
        record.size = number;
        return Thrown([&] { return OrvAct_GetActionEventData(action.Handle(), &record, nullptr) != 0; });
    }
    OrvWChar buffer[256];
    return told(OrvAct_StoreToTextBufferW(action.Handle(), buffer, number, 0, 0, &second) != 0);
}

void CheckFailures(Case& row)
{
    for (const Columns& failure : row.failures) {
        std::string expected = failure[4];
        for (std::size_t at = 5; at < 9; ++at) expected += "\t" + failure[at];
        row.Expect(failure[1], expected, Failure(failure));
    }
}

}  // namespace

int main(int count, char** arguments)
{
    int passed = 0, failed = 0;
    for (int at = 1; at < count; ++at) {
        for (Case& row : Cases(arguments[at])) {
            try {
                CheckForms(row);
                CheckFailures(row);
            } catch (const std::exception& problem) {
                row.problems.emplace_back(problem.what());
            }
            for (const std::string& problem : row.problems) std::cout << row.name << ": " << problem << '\n';
            ++(row.problems.empty() ? passed : failed);
        }
    }
    std::cout << passed << " passed, " << failed << " failed\n";
    return failed != 0 || passed == 0 || OrvAct_GetNumberOfOpenHandles() != 0;
}
