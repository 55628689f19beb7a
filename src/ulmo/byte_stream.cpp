#include "ulmo/byte_stream.h"

#include <algorithm>

#include "platform/system_error.h"
#include "ulmo/exceptions.h"

namespace Ulmo {

void ReadExactly(IByteStream& stream, void* buffer, std::size_t count)
{
    if (stream.Read(buffer, count) != count) ThrowSystemError(Platform::kResultEndOfFile, u"Ulmo::ReadExactly");
}

std::string ReadBytes(IByteStream& stream, std::size_t count)
{
    constexpr std::size_t kPiece = 65536;
    std::string bytes;
    while (bytes.size() != count) {
        const std::size_t before = bytes.size();
        const std::size_t piece = std::min(count - before, kPiece);
        bytes.resize(before + piece);
        ReadExactly(stream, &bytes[before], piece);
    }
    return bytes;
}

}  // namespace Ulmo
