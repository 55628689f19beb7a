// A host with extension files beside it. Takes action texts and shows each of them in every form, as the library that
// it has loaded sees them.
//
//     extension_host TEXT...     exit code 0 when the forms of each text tell the same
#include <OrvActions.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

int failures = 0;

void Check(bool right, const char* what)
{
    if (right) return;
    ++failures;
    std::fprintf(stderr, "wrong: %s\n", what);
}

std::string TextOf(TOrvHandle action, bool plain)
{
    std::vector<char> text(100'000);
    Check(OrvAct_StoreToTextBufferA(action, text.data(), static_cast<std::uint32_t>(text.size()), plain, 1, nullptr),
          "text");
    return text.data();
}

void ShowJson(TOrvHandle action)
{
    std::vector<OrvWChar> wide(100'000);
    const std::uint32_t limit = 5;  // parameters of a higher priority are hidden
    Check(OrvAct_StoreToJson(action, wide.data(), static_cast<std::uint32_t>(wide.size()), nullptr, 1, &limit), "JSON");
    std::string json;
    for (const OrvWChar* unit = wide.data(); *unit != 0; ++unit) {
        if (*unit >= ' ') json += *unit < 0x7F ? static_cast<char>(*unit) : '?';
    }
    std::printf("json: %s\n", json.c_str());
}

void CheckSame(TOrvHandle action, TOrvHandle again, const char* what)
{
    OrvBool same = 0;
    Check(again && OrvAct_Equal(action, again, &same) && same, what);
    if (again) OrvAct_CloseHandle(again);
}

void CheckBinary(TOrvHandle action)
{
    std::vector<char> bytes(100'000);
    std::uint32_t size = 0;
    const auto room = static_cast<std::uint32_t>(bytes.size());
    Check(OrvAct_StoreToBinBuffer(action, bytes.data(), room, &size), "binary");
    CheckSame(action, OrvAct_CreateFromBinBuffer(bytes.data(), size, ORV_EXPECT_ANY, nullptr), "back from binary");
}

// The columns as the record has them; then the action that comes out of them.
void ShowEvent(TOrvHandle action)
{
    TOrvHandle copy = nullptr;  // filling a record converts values
    Check(OrvAct_CloneHandle(action, &copy), "clone");
    TOrvEventData record{};
    record.size = sizeof record;
    Check(OrvAct_GetActionEventData(copy, &record, nullptr), "event record");
    std::string columns;
    for (int i = 0; i < 4; ++i) {
        if (record.int32Field[i]) columns += " " + std::to_string(*record.int32Field[i]);
    }
    TOrvHandle restored = OrvAct_RestoreActionFromEventData(&record);
    Check(restored != nullptr, "back from an event record");
    std::printf("event: %u%s | %s\n", record.code, columns.c_str(), restored ? TextOf(restored, false).c_str() : "");
    if (restored) OrvAct_CloseHandle(restored);
    OrvAct_CloseHandle(copy);
}

void CheckMatch(TOrvHandle action)
{
    TOrvHandle match = nullptr;
    OrvBool matches = 0;
    Check(OrvAct_CreateMatchActionFromTemplate(action, &match), "match action");
    Check(OrvMatchAct_Matches(match, action, &matches) && matches, "matching");
    if (match) OrvAct_CloseHandle(match);
}

void ShowParameters(std::uint32_t code)
{
    std::vector<TOrvParameterPlainInfo> records(OrvAct_GetNumberOfActionParameters(code));
    OrvAct_EnumerateActionParameters(records.data(), static_cast<std::uint32_t>(records.size()), code);
    std::printf("parameters:");
    for (const TOrvParameterPlainInfo& record : records) std::printf(" %s:%u", record.NameA, record.Type);
    std::printf("\n");
}

void Show(const char* text)
{
    TOrvHandle action = OrvAct_CreateFromTextBufferA(text, ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 1, nullptr);
    Check(action != nullptr, text);
    if (!action) return;
    const std::string technical = TextOf(action, false);
    const std::uint32_t code = OrvInterfaceOf(action)->GetActionCode();
    const std::string name = technical.substr(0, technical.find(" ("));
    Check(OrvAct_GetActionCodeByNameA(name.c_str()) == code, "code by name");
    std::printf("text: %s\nplain: %s\n", technical.c_str(), TextOf(action, true).c_str());
    ShowParameters(code);
    ShowJson(action);
    CheckSame(action,
              OrvAct_CreateFromTextBufferA(technical.c_str(), ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 1, nullptr),
              "back from text");
    CheckBinary(action);
    CheckMatch(action);
    ShowEvent(action);
    OrvAct_CloseHandle(action);
}

}  // namespace

int main(int count, char** arguments)
{
    std::printf("actions: %u, classes: %u\n", OrvAct_GetNumberOfActions(), OrvAct_GetNumberOfActionClasses());
    for (int i = 1; i < count; ++i) Show(arguments[i]);
    Check(OrvAct_GetNumberOfOpenHandles() == 0, "open objects");
    return failures != 0;
}
