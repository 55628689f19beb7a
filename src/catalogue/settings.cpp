#include "catalogue/settings.h"

namespace OrvPLC::Settings {

Switch<OrvBool> NativeTranslation{1};
Switch<std::uint32_t> PriorityLevel{5};

}  // namespace OrvPLC::Settings
