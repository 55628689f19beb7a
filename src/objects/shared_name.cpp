#include "objects/shared_name.h"

#include <cstring>

namespace OrvPLC {

SharedName SharedName::Copy(std::u16string_view name)
{
    SharedName result;
    if (name.empty()) return result;
    auto* copy = new char16_t[name.size() + 1];
    std::memcpy(copy, name.data(), name.size() * sizeof(char16_t));
    copy[name.size()] = 0;
    result.text_ = copy;
    result.length_ = static_cast<std::uint32_t>(name.size());
    result.owned_ = true;
    return result;
}

SharedName::SharedName(const SharedName& other) : SharedName()
{
    *this = other.owned_ ? Copy(other.view()) : Shared(other.view());
}

}  // namespace OrvPLC
