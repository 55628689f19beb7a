#include "ulmo/checked_string.h"

#include <cstdint>

#include "platform/system_error.h"
#include "ulmo/exceptions.h"

namespace Ulmo {

void ThrowCheckedString(std::size_t room, std::u16string_view function)
{
    const bool badSize = room == 0 || room > 0x7FFFFFFF;
    ThrowSystemError(badSize ? Platform::kResultInvalidParameter : Platform::kResultInsufficientBuffer, function);
}

}  // namespace Ulmo
