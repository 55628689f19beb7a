#include "forms/sibling.h"

#include <atomic>

namespace OrvPLC {

namespace {

class NoConverter final : public SiblingConverter {
public:
    bool ConvertText(std::u16string_view, std::u16string&) override { return false; }
    bool ConvertNarrowText(std::string_view, std::u16string&) override { return false; }
    bool ConvertBinary(std::span<const std::byte>, std::uint32_t, std::u16string&) override { return false; }
    bool ConvertEvent(const TOrvEventData&, std::u16string&) override { return false; }
};

NoConverter noConverter;
std::atomic<SiblingConverter*> current{nullptr};

}  // namespace

SiblingConverter& Sibling()
{
    SiblingConverter* converter = current.load(std::memory_order_acquire);
    return converter ? *converter : noConverter;
}

SiblingConverter* SetSibling(SiblingConverter* converter)
{
    return current.exchange(converter, std::memory_order_acq_rel);
}

}  // namespace OrvPLC
