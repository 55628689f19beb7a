#include "ulmo/binary_data.h"

#include <algorithm>
#include <locale>
#include <sstream>
#include <vector>

#include "ulmo/base64.h"
#include "ulmo/exceptions.h"
#include "ulmo/number_text.h"

namespace Ulmo {

namespace {

constexpr std::string_view kWord = "binarydata";

// What a text may declare beyond the bytes that it brings: a short one must not become megabytes in every later copy.
constexpr std::size_t kMostMissing = 1 << 20;

}  // namespace

BinaryData::BinaryData(const BinaryData& other)
{
    if (other.Size() != 0) Assign(other.Data(), other.Size());
}

void BinaryData::Assign(const void* bytes, std::size_t count)
{
    if (!buffer_ && count != 0) buffer_ = BufferPool::Take();
    if (buffer_) buffer_->Assign(bytes, count);
}

std::string BinaryData::ToText() const
{
    std::string text(kWord);
    AppendUnsigned(text += ' ', Size());
    text += ' ';
    return text += EncodeBase64(Data(), Size());
}

void BinaryData::FromText(std::string_view text)
{
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    std::string word;
    stream >> word;
    if (word != kWord) {
        throw VariantExceptions::VariantStringToValueConversionException(
            std::string("Tried to convert string to BinaryData: std::string = ").append(text));
    }
    std::size_t size = 0;
    std::string base64;
    stream >> size >> base64;
    std::vector<std::byte> bytes;
    // The result does not matter: what was decoded before a fault counts, and the size says how much it should be.
    DecodeBase64(base64, bytes);
    if (size > bytes.size() && size - bytes.size() > kMostMissing) throw OutOfMemoryException(size);

    if (!buffer_ && size == 0) return;
    if (!buffer_) buffer_ = BufferPool::Take();
    buffer_->Reserve(std::max(size, bytes.size()));
    buffer_->Resize(size);
    std::copy(bytes.begin(), bytes.end(), buffer_->Data());
}

}  // namespace Ulmo
