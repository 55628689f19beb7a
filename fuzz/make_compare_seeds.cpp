// Writes seeds for compare_readers_fuzz into a directory: texts of all kinds that the comparison knows to make.
#include "judge/text_maker.h"
#include "seeds.h"

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, [](const SeedFolder& folder) {
        OrvPLC::Judge::TextMaker maker(1);
        for (int seed = 0; seed < 300; ++seed) folder.Write(std::to_string(seed), maker.Make());
    });
}
