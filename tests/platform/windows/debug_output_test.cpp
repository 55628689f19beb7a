#include "platform/debug_output.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <windows.h>

namespace {

// What the system raises for a debugger: the length with its terminator, then the text. Wine knows the narrow one only.
constexpr DWORD kNarrowText = 0x40010006;
constexpr DWORD kWideText = 0x4001000A;
std::vector<std::u16string> heard;

LONG CALLBACK Hear(EXCEPTION_POINTERS* raised)
{
    const EXCEPTION_RECORD& record = *raised->ExceptionRecord;
    const std::size_t length = record.ExceptionInformation[0] - 1;
    if (record.ExceptionCode == kWideText) {
        heard.emplace_back(reinterpret_cast<const char16_t*>(record.ExceptionInformation[1]), length);
    } else if (record.ExceptionCode == kNarrowText) {
        const auto* text = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
        heard.emplace_back(text, text + length);
    } else {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    return EXCEPTION_CONTINUE_EXECUTION;
}

TEST(WindowsDebugOutput, TellsTheSystemEachTextAtOnce)
{
    void* const handler = AddVectoredExceptionHandler(1, Hear);
    const std::vector<std::u16string> texts = {u"", u"short", std::u16string(1023, u'a'), std::u16string(1024, u'b'),
                                               std::u16string(20000, u'c')};
    for (const std::u16string& text : texts) {
        Platform::WriteDebug(std::u16string_view(text + u"x").substr(0, text.size()));  // without a terminator
    }
    RemoveVectoredExceptionHandler(handler);
    EXPECT_EQ(heard, texts);
}

}  // namespace
