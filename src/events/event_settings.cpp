#include "events/event_settings.h"

#include "platform/configuration.h"

namespace OrvPLC::EventSettings {

bool StoreGenericParameters = false;

void Read() noexcept
try {
    const auto flag =
        Platform::Configuration::ReadNumber(u"SOFTWARE\\Tessarine\\Orv\\Server\\PLC", u"StoreGenericParamsToDBFields");
    StoreGenericParameters = flag.value_or(0) != 0;
} catch (...) {  // no memory: as if nothing were set
}

}  // namespace OrvPLC::EventSettings
