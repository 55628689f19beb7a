#include "events/event_settings.h"

#include "platform/configuration.h"

namespace OrvPLC::EventSettings {

bool StoreGenericParameters = false;

void Read()
{
    const auto flag =
        Platform::Configuration::ReadNumber(u"SOFTWARE\\Tessarine\\Orv\\Server\\PLC", u"StoreGenericParamsToDBFields");
    StoreGenericParameters = flag.value_or(0) != 0;
}

}  // namespace OrvPLC::EventSettings
