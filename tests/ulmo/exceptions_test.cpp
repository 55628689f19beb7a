#include "ulmo/exceptions.h"

#include <gtest/gtest.h>

#include "platform/system_error.h"
#include "ulmo/exception_history.h"
#include "ulmo/reference_count.h"

namespace {

using namespace Ulmo;

TEST(Exceptions, FillBothMessages)
{
    const UlmoException wide(u"Stra\u00DFe", 1, 2, "more");
    EXPECT_EQ(wide.WideMessage(), u"Stra\u00DFe");
    EXPECT_EQ(wide.ErrorCode(), 1U);
    EXPECT_EQ(wide.ErrorClass(), 2U);
    EXPECT_EQ(wide.Details(), "more");
    const UlmoException narrow(wide.NarrowMessage());
    EXPECT_EQ(narrow.WideMessage(), wide.WideMessage());
    EXPECT_STREQ(narrow.what(), wide.what());
    const char* none = nullptr;
    EXPECT_STREQ(UlmoException(none).what(), "");
}

TEST(Exceptions, NameTheMostDerivedType)
{
    const UlmoException& system = SystemException(5);
    EXPECT_EQ(system.GetClassName(), "Ulmo::SystemException");
    const UlmoException& variant = VariantExceptions::VariantStringConversionException();
    EXPECT_EQ(variant.GetClassName(), "Ulmo::VariantExceptions::VariantStringConversionException");
    EXPECT_STREQ(variant.what(), "VariantException");
}

TEST(Exceptions, ComposeTheirMessages)
{
    EXPECT_EQ(OutOfMemoryException(4096).WideMessage(), u"Out of memory during allocation of 4096 bytes in FlatMemory");
    EXPECT_EQ(OutOfMemoryException(1, u"Heap").WideMessage(), u"Out of memory during allocation of 1 bytes in Heap");
    EXPECT_EQ(GuidConversionException(u"xyz").WideMessage(), u"Conversion of guid 'xyz' failed.");
    EXPECT_STREQ(GuidConversionException("xyz").what(), "Conversion of guid 'xyz' failed.");
    EXPECT_EQ(EUlmoDateTime(u"x", 13).ErrorClass(), 5U);
}

TEST(Exceptions, SystemErrorsCarryTextCodeAndFunction)
{
    const std::u16string text = Platform::SystemErrorText(5);
    EXPECT_EQ(SystemException(5, u"GetModuleFileNameW").WideMessage(), text + u" [ErrorCode #5] in GetModuleFileNameW");
    EXPECT_EQ(SystemException(5).WideMessage(), text + u" [ErrorCode #5]");
    EXPECT_EQ(SystemException(0xDEADBEEF).WideMessage(), u"Unknown system error [ErrorCode #3735928559]");
    Platform::SetLastError(5);
    try {
        ThrowLastError(u"Call");
    } catch (const SystemException& failure) {
        EXPECT_EQ(failure.ErrorCode(), 5U);
        EXPECT_EQ(failure.WideMessage(), text + u" [ErrorCode #5] in Call");
        return;
    }
    ADD_FAILURE() << "nothing was raised";
}

struct Ending : VirtualReferenceCountBaseClass {
    explicit Ending(std::string& calls) : calls_(calls) {}
    ~Ending() override { calls_ += "gone"; }
    void OnFinalRelease() noexcept override { calls_ += "final "; }
    void Delete() noexcept override
    {
        calls_ += "delete ";
        VirtualReferenceCountBaseClass::Delete();
    }
    std::string& calls_;
};

TEST(ReferenceCount, TheLastReleaseIsToldBeforeTheEnd)
{
    std::string calls;
    const CountedPtr<Ending> first = MakeCounted<Ending>(calls);
    {
        const CountedPtr<Ending> second = MakeCounted<Ending>(calls);
        const CountedPtr<Ending> again = second;
    }
    EXPECT_EQ(calls, "final delete gone");
}

TEST(ExceptionHistory, KeepsTheLatest512)
{
    ExceptionHistory::Start();
    for (std::uint32_t i = 0; i != 600; ++i) SystemException(i + 100000);
    const auto history = ExceptionHistory::Snapshot();
    ASSERT_EQ(history.size(), ExceptionHistory::kLimit);
    EXPECT_EQ(history.front().second.ErrorCode(), 100088U);
    EXPECT_EQ(history.back().second.ErrorCode(), 100599U);
    EXPECT_EQ(history.back().first, "Ulmo::UlmoException");  // the base is all there is while it remembers
}

TEST(ExceptionHistory, RemembersConstructionsOnlyWhileAlive)
{
    ExceptionHistory::End();
    const UlmoException lost("lost");
    EXPECT_TRUE(ExceptionHistory::Snapshot().empty());
    ExceptionHistory::Start();
    const UlmoException kept("kept");
    const UlmoException copy(kept);
    ExceptionHistory::Start();
    ASSERT_EQ(ExceptionHistory::Snapshot().size(), 1U);
    EXPECT_EQ(ExceptionHistory::Snapshot()[0].second.NarrowMessage(), copy.NarrowMessage());
}

}  // namespace
