// Hostile input for every reader, under AddressSanitizer: the bodies of the fuzz targets, fed with every truncation and
// every change of a single byte of their seeds, each in a buffer of exactly its size.
//
//   reliability_hostile MOST        at most MOST executions a target and kind of change, evenly spread; 0: all
//   reliability_hostile MOST NAME   that target alone
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <unistd.h>

#define TARGET(name, maker)                                                 \
    extern "C" int Fuzz_##name(const std::uint8_t* data, std::size_t size); \
    int Make_##maker(int count, char** arguments);
#include "hostile_targets.inc"
#undef TARGET

int Make_kinds(int count, char** arguments);

namespace {

using Target = int (*)(const std::uint8_t* data, std::size_t size);

std::uint64_t executions = 0;

void Feed(Target target, const std::string& input)
{
    const std::unique_ptr<std::uint8_t[]> exact(new std::uint8_t[input.size()]);
    std::memcpy(exact.get(), input.data(), input.size());
    target(exact.get(), input.size());
    ++executions;
}

std::vector<std::string> Seeds(int (*maker)(int, char**), const char* name)
{
    const std::filesystem::path folder =
        std::filesystem::temp_directory_path() / ("orv-hostile-" + std::to_string(getpid()) + "-" + name);
    std::string path = folder.string(), program = name;
    char* arguments[] = {program.data(), path.data(), nullptr};
    if (maker(2, arguments) != 0) std::exit(2);
    std::vector<std::string> seeds;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        std::ifstream file(entry.path(), std::ios::binary);
        seeds.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }
    std::filesystem::remove_all(folder);
    return seeds;
}

// How many steps to take at a time, so that about `most` of `all` are left.
std::uint64_t Stride(std::uint64_t all, std::uint64_t most)
{
    return most == 0 || all <= most ? 1 : (all + most - 1) / most | 1;  // odd, so that no column of bits is left out
}

void EveryTruncation(Target target, const std::vector<std::string>& seeds, std::uint64_t all, std::uint64_t most)
{
    const std::uint64_t stride = Stride(all, most);
    std::uint64_t at = 0;
    for (const std::string& seed : seeds) {
        for (std::size_t size = 0; size < seed.size(); ++size) {
            if (at++ % stride == 0) Feed(target, seed.substr(0, size));
        }
    }
}

void EveryChange(Target target, const std::vector<std::string>& seeds, std::uint64_t all, std::uint64_t most)
{
    const std::uint64_t stride = Stride(all * 255, most);
    std::uint64_t at = 0;
    for (const std::string& seed : seeds) {
        std::string changed = seed;
        for (std::size_t place = 0; place < seed.size(); ++place) {
            for (unsigned change = 1; change < 256; ++change) {
                if (at++ % stride != 0) continue;
                changed[place] = static_cast<char>(static_cast<unsigned char>(seed[place]) ^ change);
                Feed(target, changed);
            }
            changed[place] = seed[place];
        }
    }
}

void RunTarget(const char* name, Target target, int (*maker)(int, char**), std::uint64_t most)
{
    const std::vector<std::string> seeds = Seeds(maker, name);
    std::uint64_t bytes = 0;
    for (const std::string& seed : seeds) bytes += seed.size();
    const std::uint64_t before = executions;
    for (const std::string& seed : seeds) Feed(target, seed);
    EveryTruncation(target, seeds, bytes, most);
    EveryChange(target, seeds, bytes, most);
    std::printf("%s %llu\n", name, static_cast<unsigned long long>(executions - before));
    std::fflush(stdout);
}

}  // namespace

int main(int count, char** arguments)
{
    const std::uint64_t most = count > 1 ? std::strtoull(arguments[1], nullptr, 10) : 0;
    const std::string only = count > 2 ? arguments[2] : "";
    // Images of the twelve kinds: small enough for every change.
    if (only.empty() || only == "kinds") RunTarget("kinds", Fuzz_binary_reader, Make_kinds, 0);
#define TARGET(name, maker) \
    if (only.empty() || only == #name) RunTarget(#name, Fuzz_##name, Make_##maker, most);
#include "hostile_targets.inc"
#undef TARGET
    std::printf("executions %llu\nfindings 0\n", static_cast<unsigned long long>(executions));
    return 0;
}
