// Mutations of action text that keep it action text more often than not: whole parameters move, brackets and quotes
// come in pairs, and what libFuzzer knows to do is done as well. For the targets whose input is UTF-16, some after a
// byte of options.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <random>
#include <string>
#include <vector>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t mostSize);

namespace {

constexpr const char16_t* kPieces[] = {u"PanLeft (",
                                       u"@ ",
                                       u"Camera: 7",
                                       u", Speed: 3",
                                       u"{ 5, 7, \"x\" }",
                                       u"{ 4, \"x\" }",
                                       u"{{1,2,3,4,5,\"a\"},}",
                                       u"\"<a b=\"1\"/>\"",
                                       u"\"2026/11/15 03:10:43,123 GMT+01:00\"",
                                       u"\"714596eb-24d2-43bb-a3e2-1fa78b5bec09\"",
                                       u"{ 1, 2, 3, 4 }",
                                       u"true",
                                       u"1.5e300",
                                       u"-2147483648",
                                       u"99999999999",
                                       u"\\\"",
                                       u"<![CDATA[",
                                       u"]]>",
                                       u"<!--",
                                       u"-->",
                                       u"ForeignKey: ",
                                       u"\u2028"};

using Random = std::minstd_rand;

std::size_t Below(Random& random, std::size_t limit)
{
    return limit == 0 ? 0 : random() % limit;
}

// The part between two separators around a place.
std::pair<std::size_t, std::size_t> ItemAt(const std::u16string& text, std::size_t place)
{
    const std::size_t before = text.find_last_of(u",(", place);
    const std::size_t behind = text.find_first_of(u",)", place);
    const std::size_t start = before == std::u16string::npos ? 0 : before + 1;
    return {start, behind == std::u16string::npos ? text.size() : std::max(start, behind)};
}

void Change(std::u16string& text, Random& random)
{
    const std::size_t place = Below(random, text.size() + 1);
    const auto [start, end] = ItemAt(text, place);
    const std::u16string item = text.substr(start, end - start);
    switch (random() % 6) {
    case 0: text.insert(place, kPieces[Below(random, std::size(kPieces))]); break;
    case 1: text.erase(start, end - start); break;
    case 2: text.insert(end, u"," + item); break;
    case 3: {
        const auto [otherStart, otherEnd] = ItemAt(text, Below(random, text.size() + 1));
        const std::u16string other = text.substr(otherStart, otherEnd - otherStart);
        text.replace(start, end - start, other);
        break;
    }
    case 4: {
        constexpr const char16_t* kPairs[] = {u"\"\"", u"{}", u"()", u"<>"};
        const char16_t* pair = kPairs[random() % std::size(kPairs)];
        text.insert(end, 1, pair[1]);
        text.insert(start, 1, pair[0]);
        break;
    }
    default:  // what repeats is where a reader grows slow
        for (unsigned times = random() % 6; times != 0 && text.size() < 4096; --times) text.insert(end, item);
        break;
    }
}

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t mostSize,
                                               unsigned seed)
{
    Random random(seed);
    if (random() % 2 == 0) return LLVMFuzzerMutate(data, size, mostSize);
    const std::size_t front = size % sizeof(char16_t);  // the byte of options
    std::u16string text((size - front) / sizeof(char16_t), u'\0');
    if (!text.empty()) std::memcpy(text.data(), data + front, text.size() * sizeof(char16_t));
    Change(text, random);
    const std::size_t room = mostSize < front ? 0 : (mostSize - front) / sizeof(char16_t);
    text.resize(std::min(text.size(), room));
    if (!text.empty()) std::memcpy(data + front, text.data(), text.size() * sizeof(char16_t));
    return front + text.size() * sizeof(char16_t);
}
