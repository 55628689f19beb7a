#include "platform/living_count.h"

namespace Platform::LivingCount {

constinit Share shares[kShares];

}  // namespace Platform::LivingCount
