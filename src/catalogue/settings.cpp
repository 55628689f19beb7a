#include "catalogue/settings.h"

namespace OrvPLC::Settings {

OrvBool NativeTranslation = 1;
std::uint32_t PriorityLevel = 5;

}  // namespace OrvPLC::Settings
