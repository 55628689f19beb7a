// Writes seeds for variant_fuzz into a directory: for each of its kinds and sources a few texts that some kind takes.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

int main(int count, char** arguments)
{
    using namespace std::string_view_literals;
    if (count != 2) {
        std::fputs("usage: make_variant_seeds <directory>\n", stderr);
        return 2;
    }
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
    const std::filesystem::path directory = arguments[1];
    std::filesystem::create_directories(directory);
    for (int selector = 0; selector != 3 * 21; ++selector) {
        for (std::size_t i = 0; i != std::size(kTexts); ++i) {
            std::ofstream seed(directory / (std::to_string(selector) + '_' + std::to_string(i)), std::ios::binary);
            seed.put(static_cast<char>(selector)) << kTexts[i];
            if (!seed.good()) return 1;
        }
    }
    return 0;
}
