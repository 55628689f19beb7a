// A value of one of twenty-one kinds, which can say what it holds, become text and be filled from text, measure itself,
// copy itself and go through a stream.
//
// The value lives in place; a table of operations belongs to each kind (variant_operations.h). There is no way from one
// kind to another but by text: the source's ToString and the target's FromString, with all their peculiarities:
//
//     kind             ToString                           FromString
//     bool             1 or 0                             0 or 1, more text may follow; else StringConversionException
//     char, short,...  decimal                            decimal scan that never fails; the low bits are kept
//     signed char      the character itself               as char: "A" is 0, "65" is 65
//     float, double    6 or 15 digits: 0.5, 5., 5.e-02    a float must be one; a double of no number is 0
//     FILETIME         2026/11/15 03:10:43,123            a date, as Ulmo::StrToSystemTime
//     TUlmoDateTime    ... GMT+01:00                      a date with its bias, as Ulmo::FromText
//     GUID             36 characters, lower case          else GuidConversionException
//     BinaryData       binarydata, size, Base64           the same
//     BlobPtr          blobptr, size and address          as given; see blob_ptr.h
//     reference        the object's text, or <nullref/>   VariantStringToValueConversionException always
//
// For one thread at a time. Copies may live on different threads.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ulmo/variant_operations.h"

namespace Ulmo {

class Variant {
public:
    Variant() : Variant(std::string()) {}
    template <VariantValue T>
    Variant(const T& value) : operations_(&OperationsOf<T>())
    {
        static_assert(sizeof(T) <= kAreaSize && alignof(T) <= kAreaAlignment);
        operations_->CopyConstruct(area_, &value);
    }
    Variant(std::string_view text) : Variant(std::string(text)) {}
    Variant(const char* text) : Variant(std::string(text ? text : "")) {}
    Variant(const Variant& other) : operations_(other.operations_) { operations_->CopyConstruct(area_, other.area_); }
    // When there is no memory for the copy this stays as it was or holds an empty text.
    Variant& operator=(const Variant& other);
    ~Variant() { operations_->Destroy(area_); }

    int GetKind() const { return operations_->GetKind(); }
    const std::type_info& GetTypeInfo() const { return operations_->GetTypeInfo(); }

    std::string ToString() const { return operations_->ToString(area_); }
    std::u16string ToWideString() const;
    void FromString(std::string_view text) { operations_->FromString(area_, text); }  // keeps the kind

    // The value as another kind.
    template <VariantValue T>
    T As() const
    {
        T value{};
        OperationsOf<T>().FromString(&value, ToString());
        return value;
    }

    // The forms for memory and streams; they keep the kind.
    std::size_t GetSize() const { return operations_->GetSize(area_); }
    int GetFixedSize() const { return operations_->GetFixedSize(); }
    void StoreToBuffer(void* destination, std::size_t size) const
    {
        operations_->StoreToBuffer(destination, area_, size);
    }
    void LoadFromBuffer(const void* source, std::size_t size) { operations_->LoadFromBuffer(area_, source, size); }
    void ReadFromStream(IByteStream& stream) { operations_->ReadFromStream(stream, area_); }
    void WriteToStream(IByteStream& stream) const { operations_->WriteToStream(stream, area_); }

private:
    static constexpr std::size_t kAreaSize = sizeof(std::string);
    static constexpr std::size_t kAreaAlignment = alignof(std::string);

    alignas(kAreaAlignment) std::byte area_[kAreaSize];
    const VariantOperations* operations_;
};

}  // namespace Ulmo
