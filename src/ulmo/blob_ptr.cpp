#include "ulmo/blob_ptr.h"

#include <atomic>
#include <locale>
#include <new>
#include <sstream>

#include "ulmo/exceptions.h"
#include "ulmo/number_text.h"

namespace Ulmo {

namespace {

using Count = std::atomic<std::uint32_t>;
static_assert(sizeof(Count) == 4);

// The count stands right before the bytes, so the pointer to the bytes is all that has to be passed on.
Count& CountOf(std::byte* data)
{
    return *std::launder(reinterpret_cast<Count*>(data - sizeof(Count)));
}

}  // namespace

BlobPtr::BlobPtr(const BlobPtr& other) noexcept : data_(other.data_), size_(other.size_), owned_(other.owned_)
{
    if (owned_ && data_) CountOf(data_).fetch_add(1, std::memory_order_relaxed);
}

BlobPtr BlobPtr::Allocate(std::uint32_t size)
{
    void* allocation = ::operator new (std::size_t{size} + sizeof(Count));
    new (allocation) Count(1);
    BlobPtr blob(static_cast<std::byte*>(allocation) + sizeof(Count), size);
    blob.owned_ = true;
    return blob;
}

void BlobPtr::Release() noexcept
{
    std::byte* data = std::exchange(data_, nullptr);
    if (!owned_ || !data) return;
    if (CountOf(data).fetch_sub(1, std::memory_order_acq_rel) == 1) ::operator delete(data - sizeof(Count));
}

std::string BlobPtr::ToText() const
{
    std::string text = "blobptr ";
    AppendUnsigned(text, size_);
    AppendUnsigned(text, reinterpret_cast<std::uintptr_t>(data_));
    return text;
}

void BlobPtr::FromText(std::string_view text)
{
    std::istringstream stream{std::string(text)};
    stream.imbue(std::locale::classic());
    std::string word;
    stream >> word;
    if (word != "blobptr") {
        throw VariantExceptions::VariantStringToValueConversionException(
            std::string("Tried to convert string to BlobPtr: string = ").append(text));
    }
    std::uint32_t size = 0;
    std::uintptr_t address = 0;
    stream >> size >> address;
    *this = BlobPtr(reinterpret_cast<const void*>(address), size);
}

}  // namespace Ulmo
