// Seeds for the interface table: each built-in action with every parameter set, dates before the first one among them,
// as a binary form; and every sort of object with one write of every kind.
#include "seeds.h"

using namespace OrvPLC;

namespace {

constexpr std::uint64_t kBeforeTheFirstDate = std::uint64_t{60} << 48;

void SetHostileValue(TOrvParameter& value, const TOrvParameterInternalInfo& info)
{
    SetSeedValue(value, info);
    if (info.Type == ORV_KIND_DateTime) value.SetDateTime({kBeforeTheFirstDate});
}

template <class Value>
void Put(std::string& seed, Value value)
{
    seed.append(reinterpret_cast<const char*>(&value), sizeof value);
}

// The writes that the target chooses by a byte, each to the parameter at the place of the same number.
std::string Writes(std::uint8_t options)
{
    std::string seed;
    Put(seed, options);
    Put(seed, std::uint16_t{7});
    for (std::uint8_t choice = 0; choice < 12; ++choice) {
        Put(seed, choice);
        Put(seed, choice);
        Put(seed, kBeforeTheFirstDate);
        Put(seed, std::uint8_t{1});
        Put(seed, u'x');
    }
    return seed;
}

void Make(const SeedFolder& folder)
{
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        folder.Write(entry->NameA.c_str(), BinaryOf(*SeedAction(*entry, SetHostileValue)), "\1");
    }
    folder.Write("match", BinaryOf(*SeedMatchAction()), "\1");
    constexpr std::uint8_t kSorts[] = {0, 2, 6, 8};
    for (const std::uint8_t options : kSorts) folder.Write("writes" + std::to_string(options), Writes(options));
}

}  // namespace

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
