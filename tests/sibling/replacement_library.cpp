// Stands in for the sibling product's library. What it is given tells it what to do:
//
//   a text that begins with Refuse    is not understood
//   Throw, ThrowStore, ThrowClose     raises there and then, while the text is stored, while the handle is closed
//   NoMemory                          finds no memory while the text is stored
//   Foreign                           raises what another compiler's code would
//   Silent                            has a text of length 0
//   Huge                              claims to need more than there is memory
//
// A buffer is a 32-bit word and the UTF-16 text of the action after it.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <new>
#include <string>
#include <string_view>

[[noreturn]] void RaiseForeign();  // in a file of the platform

namespace {

struct Action {
    std::u16string text;
};

std::string calls;

// Without std::to_string, whose table keeps a library in the process for good.
void Note(const char* name, unsigned long long first, unsigned long long second)
{
    char note[64];
    std::snprintf(note, sizeof note, "%s %llu %llu; ", name, first, second);
    calls += note;
}

void* Create(std::u16string_view text)
{
    if (text.starts_with(u"Refuse")) return nullptr;
    if (text.starts_with(u"Throw (")) throw 1;
    if (text.starts_with(u"Foreign")) RaiseForeign();
    return new Action{std::u16string(text)};
}

void* CreateFromBuffer(const void* buffer, std::size_t size)
{
    std::u16string text((size - sizeof(std::uint32_t)) / sizeof(char16_t), u'\0');
    std::memcpy(text.data(), static_cast<const char*>(buffer) + sizeof(std::uint32_t), text.size() * sizeof(char16_t));
    return Create(text);
}

template <class Value>
Value At(const void* record, std::size_t offset)
{
    Value value;
    std::memcpy(&value, static_cast<const char*>(record) + offset, sizeof value);
    return value;
}

}  // namespace

extern "C" {

void* HeskAct_CreateFromBinBuffer(const void* buffer, std::uint32_t size, std::uint32_t version, std::uint32_t zero)
{
    Note("buffer", version, zero);
    return CreateFromBuffer(buffer, size);
}

int HeskAct_StoreToTextBufferW(void* action, char16_t* buffer, std::uint32_t capacity, std::uint32_t, std::uint32_t,
                               std::uint32_t* length)
{
    const std::u16string& text = static_cast<Action*>(action)->text;
    Note(buffer ? "store" : "measure", capacity, *length);
    if (text.starts_with(u"ThrowStore")) throw "store";
    if (text.starts_with(u"NoMemory")) throw std::bad_alloc();
    *length = static_cast<std::uint32_t>(text.size());
    if (text.starts_with(u"Silent")) *length = 0;
    if (text.starts_with(u"Huge")) *length = 0xFFFFFFFF;
    const bool fits = buffer && (*length <= capacity || capacity == 0);
    if (fits) std::memcpy(buffer, text.data(), *length * sizeof(char16_t));
    return fits;
}

void* HeskAct_CreateFromTextBufferW(const char16_t* text, std::uint32_t length, std::uint32_t version,
                                    std::uint32_t zero, std::uint8_t flag)
{
    Note("text", version, flag + zero);
    return Create({text, length});
}

void HeskAct_CloseHandle(void* action)
{
    const bool raises = static_cast<Action*>(action)->text.starts_with(u"ThrowClose");
    Note("close", 0, 0);
    delete static_cast<Action*>(action);
    if (raises) throw std::string("close");
}

#if !defined(LACKS_EVENTS)
void* HeskAct_RestoreActionFromEventData(const void* record)
{
    if (At<std::uint32_t>(record, 0) != 176 || At<std::uint64_t>(record, 24) != 0) return nullptr;
    Note("event", At<std::uint32_t>(record, 4), At<std::uint64_t>(record, 160));
    return CreateFromBuffer(At<const void*>(record, 168), At<std::uint64_t>(record, 160));
}
#endif

// For the tests: what was called since the last time.
const char* HeskTest_TakeCalls()
{
    static std::string taken;
    taken = std::move(calls);
    calls.clear();
    return taken.c_str();
}

}  // extern "C"
