// What a reader makes of the kind and the name that it has read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "objects/match_action.h"

namespace OrvPLC {

// A match action for that kind, an action for any other. With room for that many bytes of texts, as TextRoom counts
// them; without a number the usual room.
inline ObjectPtr<TOrvAction> MakeObjectOfKind(std::uint32_t kind, std::u16string_view name,
                                              std::optional<std::size_t> textBytes = std::nullopt)
{
    using Object = ObjectPtr<TOrvAction>;
    const bool match = kind == ORV_MESSAGE_MATCH_ACTION;
    if (!textBytes) return Object(match ? TOrvMatchAction::Create(name) : TOrvAction::Create(name));
    return Object(match ? TOrvMatchAction::CreateWithRoom(name, *textBytes)
                        : TOrvAction::CreateWithRoom(name, *textBytes));
}

}  // namespace OrvPLC
