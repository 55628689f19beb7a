#include "forms/pruning.h"

namespace OrvPLC {

void PruneParameters(TOrvAction& action, std::uint32_t limit)
{
    if (!action.Entry()) return;
    for (const TOrvParameterInternalInfo& info : action.Entry()->Parameters) {
        if (info.Priority > limit) action.Parameters().Remove(info.NameW.view());
    }
}

}  // namespace OrvPLC
