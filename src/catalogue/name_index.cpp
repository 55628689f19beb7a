#include "catalogue/name_index.h"

#include <cstring>

#include "ulmo/ascii_words.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// The generator fills the table of the built-in names with the same hash (tools/generate/orvgen/emit_rows.py), so a
// change here is a change there.
constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15;

// The multiplication spreads bits upwards only, so the high ones are folded back.
std::uint64_t Mix(std::uint64_t hash, std::uint64_t units)
{
    hash = (hash ^ units) * kMultiplier;
    return hash ^ (hash >> 29);
}

constexpr std::size_t kWordUnits = 4;

std::uint64_t LoadWord(const char16_t* units)
{
    std::uint64_t word = 0;
    std::memcpy(&word, units, sizeof word);
    return word;
}

// Of a name with fewer than four units; missing ones are 0.
std::uint64_t LoadShort(std::u16string_view name)
{
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < name.size(); ++i) word |= std::uint64_t{name[i]} << (16 * i);
    return word;
}

// Calls visit(word, offset) for four units after four; the last four may overlap those before. A shorter name is one
// word, filled up with zeros.
template <class Visit>
[[gnu::always_inline]] inline void ForEachWord(std::u16string_view name, Visit&& visit)
{
    if (name.size() < kWordUnits) return visit(LoadShort(name), std::size_t{0});
    const std::size_t last = name.size() - kWordUnits;
    for (std::size_t at = 0; at < last; at += kWordUnits) visit(LoadWord(name.data() + at), at);
    visit(LoadWord(name.data() + last), last);
}

// Equal for names that differ in the case of ASCII letters only. `seen` gets all bits that occur in the name.
[[gnu::always_inline]] inline std::uint32_t HashFolded(std::u16string_view name, std::uint64_t& seen)
{
    // Folds more than letters, which costs nothing but a rare comparison in vain.
    constexpr std::uint64_t kCaseBits = Ulmo::kEachUnit * 0x20;
    std::uint64_t mixed = name.size();
    ForEachWord(name, [&](std::uint64_t units, std::size_t) {
        seen |= units;
        mixed = Mix(mixed, units | kCaseBits);
    });
    return static_cast<std::uint32_t>(mixed >> 32);
}

std::uint32_t HashFolded(std::u16string_view name)
{
    std::uint64_t seen = 0;
    return HashFolded(name, seen);
}

// Names of the same length.
[[gnu::always_inline]] inline bool SameFolded(std::u16string_view name, std::u16string_view lower)
{
    if (name.size() < kWordUnits) return Ulmo::LowerAsciiWord(LoadShort(name)) == LoadShort(lower);
    std::uint64_t differing = 0;
    ForEachWord(name, [&](std::uint64_t units, std::size_t at) {
        differing |= Ulmo::LowerAsciiWord(units) ^ LoadWord(lower.data() + at);
    });
    return differing == 0;
}

}  // namespace

// `same` compares with a lower-cased name of the same length.
template <class Same>
std::uint32_t NameIndex::Search(std::uint32_t hash, std::size_t length, Same&& same) const
{
    // Ends at a free slot, since at most half of them are taken.
    for (std::size_t i = hash; !builtIn_.empty(); ++i) {
        const Builtin::NameSlot& slot = builtIn_[i & (builtIn_.size() - 1)];
        if (slot.length == 0) break;
        if (slot.hash != hash || slot.length != length) continue;
        if (same(std::u16string_view(Builtin::kWideTexts + slot.lower, slot.length))) return slot.place;
    }
    for (std::size_t i = hash; !slots_.empty(); ++i) {
        const Slot& slot = slots_[i & (slots_.size() - 1)];
        if (slot.place == kNotFound) break;
        if (slot.hash == hash && slot.lower.size() == length && same(slot.lower)) return slot.place;
    }
    return kNotFound;
}

void NameIndex::Add(std::u16string_view lower, std::uint32_t place)
{
    Reserve();
    Insert({lower, HashFolded(lower), place});
    ++count_;
}

std::uint32_t NameIndex::Find(std::u16string_view name) const
{
    std::uint64_t seen = 0;
    const std::uint32_t hash = HashFolded(name, seen);
    if (!Ulmo::AllAscii(seen)) return FindBeyondAscii(name);
    return Search(hash, name.size(), [name](std::u16string_view lower) { return SameFolded(name, lower); });
}

// Rare: no name of the built-in content needs it. A function of its own, since the copy of the name would cost the
// usual case registers.
[[gnu::noinline]] std::uint32_t NameIndex::FindBeyondAscii(std::u16string_view name) const
{
    return FindLower(Ulmo::LowerCase(name));
}

std::uint32_t NameIndex::FindLower(std::u16string_view lower) const
{
    return Search(HashFolded(lower), lower.size(),
                  [lower](std::u16string_view other) { return Ulmo::SameText(lower, other); });
}

void NameIndex::Reserve()
{
    if (2 * (count_ + 1) <= slots_.size()) return;
    std::vector<Slot> old(slots_.empty() ? 64 : 2 * slots_.size());
    old.swap(slots_);
    for (const Slot& slot : old) {
        if (slot.place != kNotFound) Insert(slot);
    }
}

void NameIndex::Insert(const Slot& slot)
{
    const std::size_t mask = slots_.size() - 1;
    std::size_t i = slot.hash;
    while (slots_[i & mask].place != kNotFound) ++i;
    slots_[i & mask] = slot;
}

}  // namespace OrvPLC
