#include "platform/configuration.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "platform/debug_output.h"
#include "platform/file.h"
#include "platform/posix/registry_text.h"
#include "platform/text.h"

namespace Platform::Configuration {

namespace {

constexpr const char* kUsualFile = "/etc/tessarine/orv.reg";
// A configuration is a few lines. The limit keeps a wrong file from filling memory while a host loads the library.
constexpr std::size_t kLargestFile = 1 << 20;

// Reads up to one byte more than the largest file has.
bool ReadStart(File& file, std::string& bytes)
{
    std::size_t got = 0;
    bytes.resize(kLargestFile + 1);
    const bool done = file.Read(bytes.data(), bytes.size(), got);
    bytes.resize(got);
    return done;
}

void Complain(std::string_view fileName, std::string_view what)
{
    std::u16string wide;
    if (ToWide(CodePage::Utf8, std::string(fileName).append(": ").append(what), wide)) WriteDebug(wide);
}

// UTF-16 in the order of little-endian bytes with its mark, as the registry exports, or UTF-8.
std::u16string Decode(std::string_view bytes)
{
    std::u16string text;
    if (bytes.starts_with("\xFF\xFE")) {
        bytes.remove_prefix(2);
        for (; bytes.size() >= 2; bytes.remove_prefix(2)) {
            text +=
                static_cast<char16_t>(static_cast<unsigned char>(bytes[0]) | static_cast<unsigned char>(bytes[1]) << 8);
        }
        return text;
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
    if (!ToWide(CodePage::Utf8, bytes, text)) text.clear();
    return text;
}

// Empty for a key that is not there and for a file that cannot be read, which is reported unless it is the usual one
// and absent.
std::vector<RegistryEntry> ValuesOf(std::u16string_view key)
{
    const char* named = std::getenv("ORV_REGISTRY");
    const char* fileName = named ? named : kUsualFile;
    File file;
    std::string bytes;
    if (!file.Open(fileName, File::Use::Read) || !ReadStart(file, bytes)) {
        const bool usual = !named && errno == ENOENT;  // having no configuration
        if (!usual) Complain(fileName, std::strerror(errno));
        return {};
    }
    if (bytes.size() > kLargestFile) {
        Complain(fileName, "larger than a megabyte");
        return {};
    }
    return RegistryReader(fileName, key).Run(Decode(bytes));
}

// The first value of that name; nothing if it is of another type.
template <class Type>
std::optional<Type> Read(std::u16string_view key, std::u16string_view value)
{
    for (RegistryEntry& entry : ValuesOf(key)) {
        if (!EqualIgnoringCase(entry.name, value)) continue;
        Type* wanted = std::get_if<Type>(&entry.value);
        return wanted ? std::optional<Type>(std::move(*wanted)) : std::nullopt;
    }
    return std::nullopt;
}

}  // namespace

std::optional<std::uint32_t> ReadNumber(std::u16string_view key, std::u16string_view value)
{
    return Read<std::uint32_t>(key, value);
}

std::optional<std::u16string> ReadText(std::u16string_view key, std::u16string_view value)
{
    return Read<std::u16string>(key, value);
}

std::vector<std::pair<std::u16string, std::uint32_t>> ReadNumbers(std::u16string_view key)
{
    std::vector<std::pair<std::u16string, std::uint32_t>> numbers;
    for (RegistryEntry& entry : ValuesOf(key)) {
        if (const auto* number = std::get_if<std::uint32_t>(&entry.value)) {
            numbers.emplace_back(std::move(entry.name), *number);
        }
    }
    return numbers;
}

}  // namespace Platform::Configuration
