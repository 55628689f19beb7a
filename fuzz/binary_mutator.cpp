// Mutations of the binary form that know where its lengths are: a length gets a hostile value, a text with its
// length is removed or doubled, a kind becomes another. libFuzzer's own mutations are used as well.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <utility>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t mostSize);

namespace {

using Bytes = std::vector<std::uint8_t>;
using Random = std::minstd_rand;

constexpr std::size_t kFront = 1;  // the byte of options
constexpr std::uint32_t kHurting[] = {0, 1, 2, 0x7FFFFFFF, 0x80000000, 0x80000001, 0xFFFFFFFE, 0xFFFFFFFF};
constexpr std::uint32_t kKinds = 14;

std::uint32_t WordAt(const Bytes& bytes, std::size_t place)
{
    std::uint32_t word = 0;
    std::memcpy(&word, bytes.data() + place, sizeof word);
    return word;
}

void Put(Bytes& bytes, std::size_t place, std::uint32_t word)
{
    std::memcpy(bytes.data() + place, &word, sizeof word);
}

// The places where a count of units is followed by a text of that length, which ends in a zero unit.
std::vector<std::size_t> Texts(const Bytes& bytes)
{
    std::vector<std::size_t> places;
    for (std::size_t place = kFront; place + 4 <= bytes.size(); ++place) {
        const std::size_t units = WordAt(bytes, place);
        if (units == 0 || units > (bytes.size() - place - 4) / 2) continue;
        const std::size_t end = place + 4 + 2 * units;
        if (bytes[end - 1] == 0 && bytes[end - 2] == 0) places.push_back(place);
    }
    return places;
}

void Change(Bytes& bytes, Random& random)
{
    const std::vector<std::size_t> texts = Texts(bytes);
    if (texts.empty()) return;
    const std::size_t place = texts[random() % texts.size()];
    const std::uint32_t units = WordAt(bytes, place);
    const std::size_t end = place + 4 + std::size_t{2} * units;
    const auto at = [&](std::size_t offset) { return bytes.begin() + static_cast<std::ptrdiff_t>(offset); };
    switch (random() % 5) {
    case 0: Put(bytes, place, kHurting[random() % std::size(kHurting)]); break;
    case 1: Put(bytes, place, units + (random() % 3) - 1); break;
    case 2: bytes.erase(at(place), at(end)); break;
    case 3: {
        const Bytes text(at(place), at(end));
        bytes.insert(at(end), text.begin(), text.end());
        break;
    }
    default:  // after a name stand kind and enum
        if (end + 4 <= bytes.size()) Put(bytes, end, random() % kKinds);
        break;
    }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t mostSize,
                                               unsigned seed)
{
    Random random(seed);
    if (size <= kFront || random() % 2 == 0) return LLVMFuzzerMutate(data, size, mostSize);
    Bytes bytes(data, data + size);
    Change(bytes, random);
    bytes.resize(std::min(bytes.size(), mostSize));
    std::copy(bytes.begin(), bytes.end(), data);
    return bytes.size();
}
