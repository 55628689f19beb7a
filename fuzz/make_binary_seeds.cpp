// Seeds for the binary targets: each built-in action with every parameter set, as a binary form for the reader, after
// its byte of options, and as text for the round trip.
#include "forms/technical_text_writer.h"
#include "seeds.h"

using namespace OrvPLC;

namespace {

void WriteBoth(const SeedFolder& folder, const std::string& name, const TOrvAction& action)
{
    folder.Write(name + ".bin", BinaryOf(action), std::string_view("\0", 1));
    folder.Write(name + ".txt", TechnicalText(action));
}

void Make(const SeedFolder& folder)
{
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        WriteBoth(folder, entry->NameA.c_str(), *SeedAction(*entry, SetSeedValue));
    }
    WriteBoth(folder, "match", *SeedMatchAction());
}

}  // namespace

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
