// The frame from inside: what each kind of exception leaves in the last error.
#include "exports/frame.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>
#include <thread>

#include "OrvActions.h"
#include "objects/orv_plc_exception.h"

namespace OrvPLC {
namespace {

struct Stored {
    std::uint32_t code, subCode;
    std::string className, message, details;
    std::u16string messageW;
    bool operator==(const Stored&) const = default;
};

void PrintTo(const Stored& stored, std::ostream* stream)
{
    *stream << stored.code << "/" << stored.subCode << " " << stored.className << " '" << stored.message << "' '"
            << stored.details << "'";
}

Stored LastFailure()
{
    TOrvLastErrorInfo info{};
    if (!LastError::Read(info)) return {};
    return {info.code,    info.subCode, info.className,
            info.message, info.details, std::u16string(TerminatedView(info.messageW))};
}

struct Speechless : std::exception {
    const char* what() const noexcept override { return nullptr; }
};

TEST(Frame, EveryKindOfExceptionIsStored)
{
    const struct {
        std::function<void()> raise;
        Stored stored;
    } rows[] = {
        {[] { throw OrvPLCException(u"no \u00e4", 3); },
         {1008, 3, "OrvPLC::OrvPLCException", "no \xc3\xa4", "", u"no \u00e4"}},
        {[] { throw Ulmo::UlmoException("text", 11, 12, "more"); },
         {11, 12, "Ulmo::UlmoException", "text", "more", u"text"}},
        {[] { throw std::runtime_error("standard"); }, {0, 0, "Ulmo::GenericException", "standard", "", u"standard"}},
        {[] { throw "narrow"; }, {0, 0, "Ulmo::GenericException", "narrow", "", u"narrow"}},
        {[] { throw u"wide"; }, {0, 0, "Ulmo::GenericException", "wide", "", u"wide"}},
        {[] { throw L"the system's"; }, {0, 0, "Ulmo::GenericException", "the system's", "", u"the system's"}},
        {[] { throw const_cast<wchar_t*>(L""); }, {0, 0, "Ulmo::GenericException", "", "", u""}},
        {[] { throw nullptr; }, {0, 0, "Ulmo::GenericException", "", "", u""}},
        {[] { throw static_cast<const char*>(nullptr); }, {0, 0, "Ulmo::GenericException", "", "", u""}},
        {[] { throw static_cast<const char16_t*>(nullptr); }, {0, 0, "Ulmo::GenericException", "", "", u""}},
        {[] { throw static_cast<const wchar_t*>(nullptr); }, {0, 0, "Ulmo::GenericException", "", "", u""}},
        {[] { throw Speechless(); }, {0, 0, "Ulmo::GenericException", "", "", u""}},
        {[] { throw 42; },
         {0xFFFFFFFF, 0, "Ulmo::UnknownException", "Ulmo::UnknownException", "", u"Ulmo::UnknownException"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.stored.message);
        const int result = Framed(-1, [&] {
            row.raise();
            return 1;
        });
        EXPECT_EQ(result, -1);
        Stored expected = row.stored;
#if defined(_WIN32)
        if (expected.subCode == 3) expected.message = LastFailure().message;  // depends on the ANSI code page
#endif
        EXPECT_EQ(LastFailure(), expected);
    }
}

TEST(Frame, SuccessClearsTheFailureAndFailuresStayOnTheirThread)
{
    const auto fail = [] { return Framed(0, []() -> int { throw OrvPLCException(u"x", 2); }); };
    fail();
    EXPECT_EQ(LastFailure().code, 1008u);
    std::thread([&] {
        EXPECT_EQ(LastFailure(), Stored{});
        Framed(0, [] { return 1; });
    }).join();
    EXPECT_EQ(LastFailure().code, 1008u);
    EXPECT_EQ(Framed(0, [] { return 1; }), 1);
    EXPECT_EQ(LastFailure(), Stored{});
}

TEST(Frame, OverlongTextsAreCut)
{
    const std::u16string wide(2000, u'w');
    const std::string details(9000, 'd');
    Framed(0, [&]() -> int { throw Ulmo::UlmoException(wide, 1, 2, details); });
    const Stored stored = LastFailure();
    EXPECT_EQ(stored.messageW, std::u16string(1023, u'w'));
    EXPECT_EQ(stored.message, std::string(1023, 'w'));
    EXPECT_EQ(stored.details, std::string(5631, 'd'));
    // The system's wide units are cut as UTF-16, a pair in the middle as well.
    const std::wstring system = L"\U0010FFFF" + std::wstring(1020, L'w') + L"\U00010000" + std::wstring(2000, L'w');
    Framed(0, [&]() -> int { throw system.c_str(); });
    EXPECT_EQ(LastFailure().messageW, u"\U0010FFFF" + std::u16string(1020, u'w') + u'\xD800');
    LastError::Store({1, 2, details.c_str(), "m", nullptr, nullptr});
    EXPECT_EQ(LastFailure().className, std::string(499, 'd'));
}

TEST(Frame, OneBufferProtocolForAllStores)
{
    const auto make = [] { return std::u16string(u"four"); };
    char16_t buffer[8] = u"-------";
    std::uint32_t required = 0;
    EXPECT_FALSE(StoreText<char16_t>(nullptr, 100, &required, make));
    EXPECT_EQ(required, 5u);
    EXPECT_EQ(LastFailure(), (Stored{1008, 7, "Ulmo::GenericException", "buffer too small", "", u"buffer too small"}));
    EXPECT_FALSE(StoreText(buffer, 4, nullptr, make));
    EXPECT_EQ(std::u16string(buffer), u"-------");
    EXPECT_TRUE(StoreText(buffer, 5, nullptr, make));
    EXPECT_EQ(std::u16string(buffer), u"four");
    EXPECT_EQ(LastFailure(), Stored{});
    EXPECT_FALSE(StoreText(buffer, 8, &required, []() -> std::u16string { throw std::bad_alloc(); }));
    EXPECT_EQ(LastFailure().className, "Ulmo::GenericException");
}

#if !defined(NDEBUG) && defined(GTEST_HAS_DEATH_TEST)
TEST(FrameDeathTest, ANullHandleNamesItsFunction)
{
    EXPECT_DEATH(OrvAct_CloneHandle(nullptr, nullptr), "null handle in OrvAct_CloneHandle");
    EXPECT_DEATH(OrvAct_DecodePanStop(nullptr, nullptr), "null handle in OrvAct_DecodePanStop");
    EXPECT_DEATH(OrvAct_StoreToTextBufferW(nullptr, nullptr, 0, 0, 0, nullptr), "null handle in OrvAct_StoreToTextBufferW");
    EXPECT_DEATH(OrvAct_SetProperty(nullptr, nullptr, nullptr), "null handle in OrvAct_SetProperty");
}
#endif

}  // namespace
}  // namespace OrvPLC
