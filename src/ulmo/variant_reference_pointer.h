// A counted reference to an object as a value.
#pragma once

#include <string>

#include "ulmo/reference_count.h"

namespace Ulmo {

class VariantReferencePointer {
public:
    explicit VariantReferencePointer(VirtualReferenceCountBaseClass* object = nullptr) noexcept : object_(object) {}

    VirtualReferenceCountBaseClass* Get() const noexcept { return object_.get(); }
    // Refers to the new object before the old one is released.
    void Assign(VirtualReferenceCountBaseClass* object) noexcept
    {
        if (object != Get()) object_ = CountedPtr<VirtualReferenceCountBaseClass>(object);
    }
    void Clear() noexcept { Assign(nullptr); }

    std::string ToText() const { return object_ ? object_->ToString() : "<nullref/>"; }

private:
    CountedPtr<VirtualReferenceCountBaseClass> object_;
};

}  // namespace Ulmo
