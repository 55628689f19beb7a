// Seeds for the text reader, after its byte of options: the text of every built-in action with every parameter set.
#include "forms/technical_text_writer.h"
#include "seeds.h"

using namespace OrvPLC;

namespace {

void Make(const SeedFolder& folder)
{
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const ObjectPtr<TOrvAction> action = SeedAction(*entry, SetSeedValue);
        folder.Write(entry->NameA.c_str(), TechnicalText(*action), std::string_view("\0", 1));
    }
    folder.Write("match", TechnicalText(*SeedMatchAction()), "\x08");
}

}  // namespace

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
