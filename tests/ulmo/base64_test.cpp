#include "ulmo/base64.h"

#include <gtest/gtest.h>

namespace {

std::string Encode(std::string_view text)
{
    return Ulmo::EncodeBase64(reinterpret_cast<const std::byte*>(text.data()), text.size());
}

TEST(Base64, Encodes)
{
    const std::pair<std::string, std::string> cases[] = {
        {"", ""}, {"f", "Zg=="}, {"fo", "Zm8="}, {"foo", "Zm9v"}, {"foob", "Zm9vYg=="}, {"\xFB\xEF\xFF", "++//"}};
    for (const auto& [bytes, text] : cases) EXPECT_EQ(Encode(bytes), text);
}

TEST(Base64, Decodes)
{
    const struct {
        std::string_view text;
        bool whole;
        std::string_view bytes;
    } cases[] = {
        {"", true, ""},
        {"Zm9vYg==", true, "foob"},
        {"Zm9v\r\nYmFy", true, "foobar"},
        {"Zm8", true, "fo"},        // padding is not asked for
        {"Zg=!?", true, "f"},       // what follows is not looked at
        {"Zm9vZ", true, "foo"},     // half a byte
        {"Zm9vYm!", false, "foo"},  // the group that is not complete is lost
        {"Zm9v Zm9v", false, "foo"},
        {"-_==", false, ""},
    };
    for (const auto& [text, whole, bytes] : cases) {
        std::vector<std::byte> decoded(3);
        EXPECT_EQ(Ulmo::DecodeBase64(text, decoded), whole) << text;
        EXPECT_EQ(std::string_view(reinterpret_cast<const char*>(decoded.data()), decoded.size()), bytes) << text;
    }
}

}  // namespace
