#include "platform/configuration.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <cerrno>
#include <cstdlib>
#include <cstring>

#include "platform/debug_output.h"
#include "platform/posix/registry_text.h"
#include "platform/text.h"

namespace Platform::Configuration {

namespace {

constexpr const char* kUsualFile = "/etc/tessarine/orv.reg";
constexpr std::size_t kLargestFile = 1 << 20;

class File {
public:
    // Does not wait for a pipe that nobody writes.
    explicit File(const char* name) : descriptor_(open(name, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File()
    {
        if (descriptor_ != -1) close(descriptor_);
    }

    bool IsOpen() const { return descriptor_ != -1; }
    bool IsRegular() const
    {
        struct stat status;
        return fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode);
    }
    // Up to one byte more than the largest file has.
    std::string Read() const
    {
        std::string bytes(kLargestFile + 1, '\0');
        std::size_t size = 0;
        ssize_t got = 0;
        while (size < bytes.size() && (got = read(descriptor_, &bytes[size], bytes.size() - size)) > 0) {
            size += static_cast<std::size_t>(got);
        }
        bytes.resize(size);
        return bytes;
    }

private:
    int descriptor_;
};

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

RegistryValue Search(std::u16string_view key, std::u16string_view value)
{
    const char* named = std::getenv("ORV_REGISTRY");
    const char* fileName = named ? named : kUsualFile;
    const File file(fileName);
    if (!file.IsOpen()) {
        if (named) Complain(fileName, std::strerror(errno));  // having no configuration is usual
        return {};
    }
    if (!file.IsRegular()) {
        Complain(fileName, "not a file");
        return {};
    }
    const std::string bytes = file.Read();
    if (bytes.size() > kLargestFile) {
        Complain(fileName, "larger than a megabyte");
        return {};
    }
    return RegistrySearch(fileName, key, value).Run(Decode(bytes));
}

template <class Type>
std::optional<Type> Read(std::u16string_view key, std::u16string_view value)
{
    RegistryValue found = Search(key, value);
    Type* wanted = std::get_if<Type>(&found);
    return wanted ? std::optional<Type>(std::move(*wanted)) : std::nullopt;
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

}  // namespace Platform::Configuration
