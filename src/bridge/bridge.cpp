#include "bridge/bridge.h"

#include "bridge/hesk_actions_wrapper.h"
#include "forms/sibling.h"

namespace HeskPLC {

namespace {

class Bridge final : public OrvPLC::SiblingConverter {
public:
    bool ConvertText(std::u16string_view text, std::u16string& converted) override
    {
        return GetHeskActionsWrapper().ConvertTextBuffer(text, ORV_MESSAGE_SIBLING_ACTION, false, converted);
    }
    bool ConvertNarrowText(std::string_view utf8, std::u16string& converted) override
    {
        return GetHeskActionsWrapper().ConvertTextBufferA(utf8, ORV_MESSAGE_SIBLING_ACTION, false, converted);
    }
    bool ConvertBinary(std::span<const std::byte> buffer, std::uint32_t kind, std::u16string& converted) override
    {
        return GetHeskActionsWrapper().ConvertBinBuffer(buffer, kind, false, converted);
    }
    bool ConvertEvent(const TOrvEventData& record, std::u16string& converted) override
    {
        return GetHeskActionsWrapper().ConvertEventData(record, converted);
    }
};

// Without state and without a destructor that does anything, so it serves until the process ends.
Bridge bridge;

}  // namespace

void StartBridge()
{
    OrvPLC::SetSibling(&bridge);
}

void EndBridge()
{
    // First no reader finds the bridge any more, then the sibling's library goes.
    OrvPLC::SetSibling(nullptr);
    EndHeskActionsWrapper();
}

}  // namespace HeskPLC
