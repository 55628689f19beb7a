#include <gtest/gtest.h>

#include "catalogue/catalogue.h"
#include "forms/describe.h"
#include "forms/sample_action.h"
#include "forms/technical_text_writer.h"
#include "forms/text_reader.h"

namespace OrvPLC {
namespace {

// Every action of the catalogue with every parameter set.
TEST(TextRoundTrip, EveryBuiltInAction)
{
    std::size_t count = 0;
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const ObjectPtr<TOrvAction> action(MakeSampleAction(*entry));
        const std::u16string text = TechnicalText(*action);
        const TextReadResult read = ReadActionText(text, ORV_EXPECT_ANY, false);
        const ObjectPtr<TOrvAction> again(read.object);
        ASSERT_TRUE(again) << Ulmo::Utf8FromWide(text);
        EXPECT_EQ(read.consumed, text.size());
        EXPECT_TRUE(again->Equals(*action)) << Ulmo::Utf8FromWide(text);
        EXPECT_EQ(Describe(*again), Describe(*action));
        EXPECT_EQ(again->Parameters().Size(), entry->Parameters.size());
        ++count;
    }
    EXPECT_GT(count, 400u);
}

}  // namespace
}  // namespace OrvPLC
