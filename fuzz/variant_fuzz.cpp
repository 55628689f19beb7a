// Fills a value of each kind from arbitrary text, bytes of a buffer or bytes of a stream, and takes it out again in
// every form.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <string>
#include <string_view>
#include <vector>

#include "ulmo/string_conversion.h"
#include "ulmo/variant.h"

using namespace Ulmo;

namespace {

class ByteStream : public IByteStream {
public:
    explicit ByteStream(std::string_view bytes) : left_(bytes) {}

    void Write(const void*, std::size_t count) override { written_ += count; }
    std::size_t Read(void* buffer, std::size_t count) override
    {
        const std::size_t got = std::min(count, left_.size());
        std::memcpy(buffer, left_.data(), got);
        left_.remove_prefix(got);
        return got;
    }
    std::size_t Written() const { return written_; }

private:
    std::string_view left_;
    std::size_t written_ = 0;
};

enum class Source { Text, Buffer, Stream };

struct Kind {
    Variant value;
    bool stable;     // what came out as text goes in and comes out alike
    bool addresses;  // what comes in are addresses, which nobody may follow
};

const std::vector<Kind>& Kinds()
{
    static const std::vector<Kind> kinds = {
        {true, true, false},
        {'c', true, false},
        {static_cast<unsigned char>(1), true, false},
        {static_cast<signed char>(1), false, false},
        {short{1}, true, false},
        {static_cast<unsigned short>(1), true, false},
        {1U, true, false},
        {1, true, false},
        {std::int64_t{1}, true, false},
        {std::uint64_t{1}, false, false},
        {1.0F, false, false},
        {1.0, false, false},
        {"text", true, false},
        {std::u16string(u"text"), true, false},
        {BinaryData("bytes", 5), true, false},
        {BlobPtr(), false, true},
        {TFileTime{1}, false, false},
        {TUlmoDateTime{1}, false, false},
        {VariantReferencePointer(), false, true},
        {TOrvGuid{}, true, false},
        {TLong{1}, true, false},
    };
    return kinds;
}

void Fill(Variant& value, Source source, std::string_view bytes)
{
    ByteStream stream(bytes);
    switch (source) {
    case Source::Text: value.FromString(bytes); break;
    case Source::Buffer: value.LoadFromBuffer(bytes.data(), bytes.size()); break;
    case Source::Stream: value.ReadFromStream(stream); break;
    }
}

void Check(bool holds)
{
    if (!holds) std::abort();
}

void TakeOut(const Variant& value, const Kind& kind)
{
    const Variant copy = value;
    if (!kind.addresses) {
        std::string room(copy.GetSize(), '\0');
        copy.StoreToBuffer(room.data(), room.size());
        ByteStream stream({});
        copy.WriteToStream(stream);
        Check(stream.Written() >= copy.GetSize());
    }
    const std::string text = value.ToString();
    // A large number without a sign has another wide text, and a wide text may hold what UTF-8 cannot.
    const bool wideIsOther =
        value.GetTypeInfo() == typeid(std::uint64_t) || value.GetTypeInfo() == typeid(std::u16string);
    Check(wideIsOther || value.ToWideString() == WideFromUtf8(text));
    if (!kind.stable) return;
    Variant again = kind.value;
    again.FromString(text);
    Check(again.ToString() == text);
}

}  // namespace

// The first byte selects the kind and where its value comes from; the rest is the text or the bytes.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) return 0;
    const Kind& kind = Kinds()[data[0] % Kinds().size()];
    const auto source = static_cast<Source>(data[0] / Kinds().size() % 3);
    if (kind.addresses && source != Source::Text && kind.value.GetFixedSize() != -1) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    try {
        Variant value = kind.value;
        Fill(value, source, bytes);
        TakeOut(value, kind);
    } catch (const std::exception&) {
        // A failure is an answer.
    }
    return 0;
}
