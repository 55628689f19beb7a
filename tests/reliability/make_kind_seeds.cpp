// A binary form for each of the twelve kinds, after the byte of options that the reader's target wants.
#include "../../fuzz/seeds.h"

using namespace OrvPLC;

namespace {

void Make(const SeedFolder& folder)
{
    for (std::uint32_t kind = ORV_KIND_Boolean; kind <= ORV_KIND_ResultDataSet; ++kind) {
        const ObjectPtr<TOrvAction> action(TOrvAction::Create(u"A"));
        const TOrvParameterInternalInfo info(u"p", kind, 0, 0, 0, 0);
        action->Parameters().Store(u"p", [&](TOrvParameter& value) { SetSeedValue(value, info); });
        folder.Write("kind" + std::to_string(kind), BinaryOf(*action), std::string_view("\0", 1));
    }
}

}  // namespace

int Make_kinds(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
