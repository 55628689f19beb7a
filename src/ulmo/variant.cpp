#include "ulmo/variant.h"

#include <array>
#include <new>

#include "ulmo/string_conversion.h"

namespace Ulmo {

namespace {

using WideConverter = std::u16string (*)(const void* value);

// Through the narrow text of the kind that the entry is for, whatever table the value has.
template <class T>
std::u16string WideBy(const void* value)
{
    return WideFromUtf8(OperationsOf<T>().ToString(value));
}

std::u16string WideOfNarrowText(const void* value)
{
    return WideFromUtf8(*std::launder(static_cast<const std::string*>(value)));
}

std::u16string WideOfWideText(const void* value)
{
    return *std::launder(static_cast<const std::u16string*>(value));
}

// Found by the code of the kind. The last one is deliberately never reached: a std::uint64_t has the code of
// std::int64_t, so from 2^63 on it is negative in wide text, and callers know it so.
constexpr std::array<WideConverter, 21> kWideConverters = {
    WideBy<bool>,         WideBy<char>,          WideBy<unsigned char>,
    WideBy<signed char>,  WideBy<short>,         WideBy<unsigned short>,
    WideBy<unsigned int>, WideBy<int>,           WideBy<std::int64_t>,
    WideBy<float>,        WideBy<double>,        WideOfNarrowText,
    WideOfWideText,       WideBy<BinaryData>,    WideBy<BlobPtr>,
    WideBy<TFileTime>,    WideBy<TUlmoDateTime>, WideBy<VariantReferencePointer>,
    WideBy<TOrvGuid>,     WideBy<TLong>,         WideBy<std::uint64_t>,
};

}  // namespace

Variant& Variant::operator=(const Variant& other)
{
    const Variant copy(other);  // the other may live in an object that only this value holds
    operations_->Destroy(area_);
    try {
        copy.operations_->CopyConstruct(area_, copy.area_);
        operations_ = copy.operations_;
    } catch (...) {
        new (area_) std::string;  // the failed one may have left its traces
        operations_ = &OperationsOf<std::string>();
        throw;
    }
    return *this;
}

std::u16string Variant::ToWideString() const
{
    return kWideConverters[static_cast<std::size_t>(GetKind())](area_);
}

}  // namespace Ulmo
