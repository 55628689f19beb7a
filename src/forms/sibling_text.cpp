#include "forms/sibling_text.h"

#include <atomic>

namespace OrvPLC {

namespace {

class NoConverter final : public SiblingTextConverter {
public:
    SiblingAnswer Convert(std::u16string_view, std::u16string&) override { return SiblingAnswer::NotAvailable; }
};

NoConverter noConverter;
std::atomic<SiblingTextConverter*> current{nullptr};

}  // namespace

SiblingTextConverter& SiblingText()
{
    SiblingTextConverter* converter = current.load(std::memory_order_acquire);
    return converter ? *converter : noConverter;
}

void SetSiblingText(SiblingTextConverter* converter)
{
    current.store(converter, std::memory_order_release);
}

}  // namespace OrvPLC
