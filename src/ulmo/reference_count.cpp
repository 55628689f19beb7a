#include "ulmo/reference_count.h"

namespace Ulmo {

std::uint32_t VirtualReferenceCountBaseClass::AddRef() noexcept
{
    return count_.fetch_add(1, std::memory_order_relaxed) + 1;
}

std::uint32_t VirtualReferenceCountBaseClass::Release() noexcept
{
    const std::uint32_t left = count_.fetch_sub(1, std::memory_order_acq_rel) - 1;
    if (left == 0) {
        OnFinalRelease();
        Delete();
    }
    return left;
}

void VirtualReferenceCountBaseClass::Delete() noexcept
{
    delete this;
}

std::string VirtualReferenceCountBaseClass::ToString() const
{
    return "<refptr/>";
}

}  // namespace Ulmo
