#include "ulmo/byte_stream.h"

#include "platform/system_error.h"
#include "ulmo/exceptions.h"

namespace Ulmo {

void ReadExactly(IByteStream& stream, void* buffer, std::size_t count)
{
    if (stream.Read(buffer, count) != count) ThrowSystemError(Platform::kResultEndOfFile, u"Ulmo::ReadExactly");
}

}  // namespace Ulmo
