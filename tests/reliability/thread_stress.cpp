// Sixteen threads do everything that the library promises to bear at once; ThreadSanitizer looks on. The library's
// objects stand in the program, since the sanitizer has to see all of them.
//
//   reliability_threads ROUNDS REFERENCES THREAD_ENDS
#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <source_location>
#include <thread>

#include "sample.h"

namespace {

constexpr int kThreads = 16;
std::atomic<std::uint64_t> wrong{0};

void Expect(bool right, std::source_location where = std::source_location::current())
{
    if (right) return;
    if (++wrong <= 10) std::printf("finding at line %u\n", static_cast<unsigned>(where.line()));
}

const OrvWChar* W(const char16_t* text)
{
    return reinterpret_cast<const OrvWChar*>(text);
}

// Objects of one's own, through every form.
void OwnObjects(int thread, std::uint64_t round)
{
    const Sample::Case test{"", static_cast<unsigned>(thread + round)};
    TOrvHandle object = Sample::MakeSubject(test);
    OrvWChar text[8192];
    for (const OrvBool plain : {OrvBool{0}, OrvBool{1}})
        OrvAct_StoreToTextBufferW(object, text, std::size(text), plain, 0, nullptr);
    OrvAct_StoreToTextBufferW(object, text, std::size(text), 0, 0, nullptr);
    TOrvHandle back = OrvAct_CreateFromTextBufferW(text, ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 0, nullptr);
    Expect((back != nullptr) == (test.variant % Sample::kSubjects != 2));  // a generic action has no text
    if (back) OrvAct_CloseHandle(back);
    std::uint32_t required = 0;
    OrvAct_StoreToJson(object, text, std::size(text), &required, 1, nullptr);
    Sample::StateOf(object);
    Sample::CloseAll(object);
}

// The texts of the catalogue change while others show them.
void DisplayTexts(int, std::uint64_t round)
{
    static const std::u16string texts[] = {u"Kamera ein", std::u16string(70, u'k'), u"ein anderer Name"};
    TTalvecActionPlainInfo record{};
    const std::uint32_t code = OrvAct_GetActionCodeByNameA("CameraOn");
    Expect(Talvec_Action_GetActionInfo(&record, code));
    record.PlainNameW = W(texts[round % std::size(texts)].c_str());
    record.DescriptionW = W(u"eine Beschreibung");  // the one that came is the catalogue's, which others write
    Expect(Talvec_Action_SetActionPlainInfo(&record));
    TOrvHandle object = Talvec_Action_CreateActionByCode(code);
    OrvWChar text[500];
    Expect(OrvAct_StoreToTextBufferW(object, text, std::size(text), 1, 0, nullptr));
    // As it was before a write or as it is after it, whole: never parts of two.
    const std::u16string shown(reinterpret_cast<const char16_t*>(text));
    bool known = shown.starts_with(u"Camera");  // before the first write, in either set
    for (const std::u16string& one : texts) known = known || shown.starts_with(one);
    Expect(known);
    OrvAct_CloseHandle(object);
}

void Catalogue(int, std::uint64_t)
{
    std::vector<TTalvecActionPlainInfo> records(500);
    Expect(Talvec_Action_EnumerateActions(records.data(), 500) == OrvAct_GetNumberOfActions());
    TTalvecEnumValuePlainInfo value{};
    Talvec_Action_GetEnumValueInfo(&value, 2, 0x1001, 0);
    Expect(OrvAct_GetActionCodeByNameA("PanLeft") != 0);
}

void Switches(int, std::uint64_t round)
{
    OrvAct_SetNativeTranslation(round % 2);
    Talvec_Action_SetPriorityLevel(5 + round % 2);
    std::uint32_t level = 0;
    OrvBool native = 0;
    Expect(Talvec_Action_GetPriorityLevel(&level) && (level == 5 || level == 6));
    Expect(OrvAct_GetNativeTranslation(&native));
}

// A failure writes the thread's last error, the history and the diagnostics.
void Failures(int thread, std::uint64_t)
{
    TOrvHandle object = Talvec_Action_CreateActionByName(W(u"Nobody"));
    Expect(!(thread % 2 ? OrvAct_SetVideoInput(object, nullptr) : OrvAct_SetOutputContact(object, nullptr)));
    TOrvLastErrorInfo info{};
    const std::string expected = thread % 2 ? "SetVideoInput failed" : "SetOutputContact failed";
    Expect(OrvAct_GetLastError(&info) && info.message == expected);
    OrvAct_CloseHandle(object);
}

void SiblingTexts(int, std::uint64_t)
{
    OrvBStr text = nullptr;
    Talvec_Action_ConvertHeskActionTextToOrvActionText(W(u"PanLeft (7, 3)"), &text);
    SysFreeString(text);
    TOrvHandle object = OrvAct_CreateFromTextBufferW(W(u"PanLeft (7, 3)"), ORV_LENGTH_TERMINATED, 0, 0, nullptr);
    if (object) OrvAct_CloseHandle(object);
}

void InThreads(const std::function<void(int)>& work)
{
    std::vector<std::thread> threads;
    for (int thread = 0; thread < kThreads; ++thread) threads.emplace_back(work, thread);
    for (std::thread& thread : threads) thread.join();
}

}  // namespace

int main(int count, char** arguments)
{
    const auto number = [&](int place, std::uint64_t usual) {
        return count > place ? std::strtoull(arguments[place], nullptr, 10) : usual;
    };
    const std::uint64_t rounds = number(1, 200), references = number(2, 1'000'000), ends = number(3, 10'000);
    Sample::Image();
    void (*const works[])(int, std::uint64_t) = {OwnObjects, DisplayTexts, Catalogue, Switches, Failures, SiblingTexts};
    InThreads([&](int thread) {
        for (std::uint64_t round = 0; round < rounds; ++round)
            works[(thread + round) % std::size(works)](thread, round);
    });
    TOrvHandle shared = Talvec_Action_CreateActionByName(W(u"PanLeft"));
    InThreads([&](int) {
        for (std::uint64_t i = 0; i < references; ++i) OrvAct_DuplicateHandle(shared);
        for (std::uint64_t i = 0; i < references; ++i) OrvAct_CloseHandle(shared);
    });
    std::uint32_t counter = 0;
    OrvAct_GetReferenceCounter(shared, &counter);
    Expect(counter == 1);
    OrvAct_CloseHandle(shared);
    // Threads that end with a last error of their own.
    for (std::uint64_t ended = 0; ended < ends; ended += kThreads) InThreads([](int thread) { Failures(thread, 0); });
    Expect(OrvAct_GetNumberOfOpenHandles() == 0);
    std::printf("threads %d\nrounds %llu\nreference_changes %llu\nthread_ends %llu\nwrong %llu\n", kThreads,
                static_cast<unsigned long long>(rounds), static_cast<unsigned long long>(2 * references * kThreads),
                static_cast<unsigned long long>((ends + kThreads - 1) / kThreads * kThreads),
                static_cast<unsigned long long>(wrong.load()));
    return wrong != 0;
}
