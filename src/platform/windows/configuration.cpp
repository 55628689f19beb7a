#include "platform/configuration.h"

#include "platform/windows/windows_api.h"

namespace Platform::Configuration {

namespace {

class Key {
public:
    explicit Key(std::u16string_view path)
    {
        const std::u16string name(path);
        // The view of 64 bits, whatever the host is, so that all read the same values.
        const REGSAM access = KEY_READ | KEY_WOW64_64KEY;
        if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, AsWide(name.c_str()), 0, access, &key_) != ERROR_SUCCESS) key_ = nullptr;
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key()
    {
        if (key_) RegCloseKey(key_);
    }

    // Reads into the block, whose size in bytes becomes that of the value.
    LSTATUS Read(std::u16string_view value, DWORD types, void* block, DWORD& size) const
    {
        const std::u16string name(value);
        return key_ ? RegGetValueW(key_, nullptr, AsWide(name.c_str()), types, nullptr, block, &size)
                    : ERROR_FILE_NOT_FOUND;
    }

    // The name and data of the value at an index. If one of them is too large the answer is ERROR_MORE_DATA.
    LSTATUS ReadAt(DWORD index, wchar_t* name, DWORD& length, DWORD& type, void* block, DWORD& size) const
    {
        return key_ ? RegEnumValueW(key_, index, name, &length, nullptr, &type, static_cast<BYTE*>(block), &size)
                    : ERROR_NO_MORE_ITEMS;
    }

private:
    HKEY key_ = nullptr;
};

}  // namespace

std::optional<std::uint32_t> ReadNumber(std::u16string_view key, std::u16string_view value)
{
    DWORD number = 0;
    DWORD size = sizeof number;
    if (Key(key).Read(value, RRF_RT_REG_DWORD, &number, size) != ERROR_SUCCESS) return std::nullopt;
    return number;
}

std::optional<std::u16string> ReadText(std::u16string_view key, std::u16string_view value)
{
    const Key opened(key);
    std::u16string text(64, u'\0');
    // Somebody may write a longer text between two reads, but not for ever.
    for (int attempt = 0; attempt < 4; ++attempt) {
        auto size = static_cast<DWORD>(text.size() * sizeof(char16_t));
        const LSTATUS status = opened.Read(value, RRF_RT_REG_SZ, text.data(), size);
        if (status != ERROR_SUCCESS && status != ERROR_MORE_DATA) return std::nullopt;
        text.resize(size / sizeof(char16_t));
        if (status == ERROR_MORE_DATA) continue;
        text.resize(text.find_last_not_of(u'\0') + 1);  // the size counts the terminating zero
        return text;
    }
    return std::nullopt;
}

std::vector<std::pair<std::u16string, std::uint32_t>> ReadNumbers(std::u16string_view key)
{
    constexpr DWORD kLongestName = 16383;
    const Key opened(key);
    std::u16string name(kLongestName + 1, u'\0');
    std::vector<std::pair<std::u16string, std::uint32_t>> numbers;
    for (DWORD index = 0;; ++index) {
        DWORD length = kLongestName + 1;
        DWORD type = REG_NONE;
        DWORD number = 0;
        DWORD size = sizeof number;
        const LSTATUS status = opened.ReadAt(index, AsWide(name.data()), length, type, &number, size);
        if (status == ERROR_MORE_DATA) continue;  // too large for a number
        if (status != ERROR_SUCCESS) return numbers;
        if (type == REG_DWORD && size == sizeof number) numbers.emplace_back(name.substr(0, length), number);
    }
}

}  // namespace Platform::Configuration
