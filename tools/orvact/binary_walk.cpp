#include "binary_walk.h"

#include <OrvActions.hpp>

#include <algorithm>
#include <bit>
#include <iterator>

#include "action_view.h"
#include "bytes.h"
#include "catalogue_view.h"
#include "text.h"
#include "value_kind.h"

namespace {

std::string Counted(std::uint64_t count, const std::string& what)
{
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

// A part of the form, for a message about it. Put together only then, since millions of parts are sound.
struct Part {
    Part(const char* text) : name(text) {}
    Part(const char* start, const Part& of) : before(start), name(of.name) {}

    std::string Text() const { return std::string(before) + std::string(name); }

    std::string_view before;
    std::string_view name;
};

class Walker {
public:
    Walker(std::string_view bytes, bool withFields) : bytes_(bytes), withFields_(withFields) {}

    BinaryWalk Walk()
    {
        Header();
        return std::move(walk_);
    }

private:
    void Header()
    {
        std::uint32_t kind = 0;
        if (!Number("the kind of the message", kind, [&] { return KindOfMessage(kind); })) return;
        walk_.sibling = kind == ORV_MESSAGE_SIBLING_ACTION || kind == ORV_MESSAGE_SIBLING_MATCH_ACTION;
        // Where it ends, only the sibling's library knows.
        if (walk_.sibling) {
            walk_.end = bytes_.size();
            return;
        }
        if (!Text("the name")) return;
        if (kind != ORV_MESSAGE_ACTION && kind != ORV_MESSAGE_MATCH_ACTION) {
            walk_.problem = "a message of kind " + std::to_string(kind) + " is neither action nor match action";
            return;
        }
        std::uint32_t count = 0;
        if (!Number("the number of records", count, [&] { return Counted(count, "record"); })) return;
        // A count that is not true ends at the end of the bytes: each record takes some.
        for (std::uint32_t i = 1; i <= count && Record(i, count); ++i) {
        }
    }

    bool Record(std::uint32_t position, std::uint32_t count)
    {
        record_ = position;
        count_ = count;
        opensRecord_ = true;
        std::uint32_t kind = 0;
        std::uint32_t enumType = 0;
        return Text("the name") && Number("the kind", kind, [&] { return KindOfValue(kind); }) &&
               Number("the enum", enumType, [&] { return EnumOf(enumType); }) && Payload(kind, enumType);
    }

    bool Payload(std::uint32_t kind, std::uint32_t enumType)
    {
        switch (ValueKind{kind}) {
        case ValueKind::Boolean:
        case ValueKind::Numeric32Bit: return Small(kind, enumType);
        case ValueKind::Numeric64Bit: return Large("the value", [](std::uint64_t n) { return Signed(n); });
        case ValueKind::NumericDouble:
            return Large("the value", [](std::uint64_t n) { return RealText(std::bit_cast<double>(n)); });
        case ValueKind::DateTime: return Large("the value", [](std::uint64_t n) { return DateText({n}); });
        case ValueKind::Rect: return Large("the rectangle", RectText);
        case ValueKind::String: return Text("the value");
        case ValueKind::ResultDataSet: return Text("the items");
        case ValueKind::Guid: return Guid();
        case ValueKind::EventType: return Text("the name") && Id();
        case ValueKind::MediaChannel: {
            std::uint32_t number = 0;
            return Text("the name") && Id() &&
                   Number("the number", number, [&] { return "number " + std::to_string(number); });
        }
        case ValueKind::Resource: return Text("the name") && Guid();
        case ValueKind::None: break;
        }
        return true;
    }

    bool Small(std::uint32_t kind, std::uint32_t enumType)
    {
        std::uint32_t number = 0;
        return Number("the value", number, [&] {
            const std::uint32_t used = kind == ORV_KIND_Boolean ? 1 : enumType;
            const std::string word = used ? ValueName(used, number) : "";
            return std::to_string(static_cast<std::int32_t>(number)) + (word.empty() ? "" : " " + Visible(word));
        });
    }

    bool Id()
    {
        return Large("the id", [](std::uint64_t n) { return "id " + std::to_string(n); });
    }

    bool Guid()
    {
        return Take(16, "the guid", [&](std::size_t at) { return "guid " + orv::ToText(GuidAt(at)); });
    }

    TOrvGuid GuidAt(std::size_t at) const
    {
        TOrvGuid guid{};
        guid.Data1 = Word32At(bytes_, at);
        guid.Data2 = static_cast<std::uint16_t>(NumberAt(bytes_, at + 4, 2));
        guid.Data3 = static_cast<std::uint16_t>(NumberAt(bytes_, at + 6, 2));
        for (std::size_t i = 0; i < 8; ++i) guid.Data4[i] = static_cast<unsigned char>(bytes_[at + 8 + i]);
        return guid;
    }

    // A count and the units after it; the last unit is the terminator, which the reader skips without a look.
    bool Text(const Part& what)
    {
        std::uint32_t count = 0;
        if (!Number(Part("the length of ", what), count, [&] {
                return count == 0 ? "empty, without a terminator" : Counted(count, "unit") + " with the end";
            })) {
            return false;
        }
        return count == 0 || Take(std::uint64_t{2} * count, what, [&](std::size_t at) {
                   std::u16string text;
                   for (std::size_t i = 0; i < count; ++i) {
                       text += static_cast<char16_t>(NumberAt(bytes_, at + 2 * i, 2));
                   }
                   const char16_t last = text.back();
                   text.pop_back();
                   return (what.name == "the value" ? "" : std::string(what.name.substr(4)) + " ") + "\"" +
                          Visible(orv::ToUtf8(text)) + "\"" +
                          (last == 0 ? "" : ", and a last unit " + Hex(last, 4) + " that is taken for the end");
               });
    }

    template <class Meaning>
    bool Number(const Part& what, std::uint32_t& number, Meaning meaning)
    {
        return Take(4, what, [&](std::size_t at) {
            number = Word32At(bytes_, at);
            return withFields_ ? std::string(meaning()) : std::string();
        });
    }

    template <class Meaning>
    bool Large(const Part& what, Meaning meaning)
    {
        return Take(8, what, [&](std::size_t at) { return meaning(NumberAt(bytes_, at, 8)); });
    }

    template <class Meaning>
    bool Take(std::uint64_t size, const Part& what, Meaning meaning)
    {
        const std::size_t at = walk_.end;
        const std::size_t left = bytes_.size() - at;
        if (size > left) {
            walk_.problem = what.Text() + Place() + " takes " + Counted(size, "byte") + ", and " +
                            (left == 0   ? "none is"
                             : left == 1 ? "1 is"
                                         : std::to_string(left) + " are") +
                            " left";
            return false;
        }
        // Numbers are wanted in any case, other meanings only to be shown.
        if (withFields_) {
            walk_.fields.push_back({at, static_cast<std::size_t>(size), meaning(at), opensRecord_});
        } else if (size == 4) {
            meaning(at);
        }
        opensRecord_ = false;
        walk_.end += static_cast<std::size_t>(size);
        return true;
    }

    std::string Place() const
    {
        return record_ == 0 ? "" : " of record " + std::to_string(record_) + " of " + std::to_string(count_);
    }

    static std::string KindOfMessage(std::uint32_t kind)
    {
        const char* const names[] = {"no message kind", "the sibling platform's action",
                                     "the sibling platform's match action", "an action", "a match action"};
        return "kind " + std::to_string(kind) + ": " + names[kind <= ORV_MESSAGE_MATCH_ACTION ? kind : 0];
    }

    static std::string KindOfValue(std::uint32_t kind)
    {
        const std::string name = KindName(kind);
        const bool known = std::ranges::find(kKinds, kind) != std::end(kKinds);
        return "kind " + std::to_string(kind) + (known ? ", " + name : ", unknown: no value follows");
    }

    static std::string EnumOf(std::uint32_t id)
    {
        if (id == 0) return "no enum";
        const std::string name = EnumName(id);
        return "enum 0x" + Hex(id, 4) + (name.empty() ? ", unknown" : ", " + Visible(name));
    }

    static std::string Signed(std::uint64_t number) { return std::to_string(static_cast<std::int64_t>(number)); }

    static std::string RectText(std::uint64_t bits)
    {
        const char* const names[] = {"top ", ", left ", ", bottom ", ", right "};
        std::string text;
        for (int i = 0; i < 4; ++i)
            text += names[i] + std::to_string(static_cast<std::int16_t>(bits >> 16 * i & 0xFFFF));
        return text;
    }

    std::string_view bytes_;
    bool withFields_;
    bool opensRecord_ = false;
    std::uint32_t record_ = 0;  // counted from 1; 0 in front of the records
    std::uint32_t count_ = 0;
    BinaryWalk walk_;
};

}  // namespace

BinaryWalk WalkBinary(std::string_view bytes, bool withFields)
{
    return Walker(bytes, withFields).Walk();
}
