// Seeds for the variants: for each kind and source a few texts that some kind takes.
#include "seeds.h"

namespace {

using namespace std::string_view_literals;

constexpr std::string_view kTexts[] = {
    "1",
    "-12.5e3",
    "18446744073709551615",
    "text \xC3\xA4\xF0\x9F\x98\x80",
    "2026/11/15 03:10:43,123 GMT+01:00",
    "2026-11-15T03:10:43.123",
    "{01020304-0506-0708-090a-0b0c0d0e0f10}",
    "binarydata 5 AQIDBAU=",
    "binarydata 70000 AQID",
    "blobptr 7 4096",
    "\4\0\0\0abc\0\0\0"sv,
};

void Make(const SeedFolder& folder)
{
    for (int selector = 0; selector != 3 * 21; ++selector) {
        int number = 0;
        for (const std::string_view text : kTexts) {
            folder.Write(std::to_string(selector) + '_' + std::to_string(number++), text,
                         std::string(1, static_cast<char>(selector)));
        }
    }
}

}  // namespace

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
