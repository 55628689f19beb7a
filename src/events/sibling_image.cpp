#include "events/sibling_image.h"

#include <atomic>

namespace OrvPLC {

namespace {

class NoConverter final : public SiblingImageConverter {
public:
    bool Convert(const TOrvEventData&, std::u16string&) override { return false; }
};

NoConverter noConverter;
std::atomic<SiblingImageConverter*> current{nullptr};

}  // namespace

SiblingImageConverter& SiblingImage()
{
    SiblingImageConverter* converter = current.load(std::memory_order_acquire);
    return converter ? *converter : noConverter;
}

void SetSiblingImage(SiblingImageConverter* converter)
{
    current.store(converter, std::memory_order_release);
}

}  // namespace OrvPLC
