// Seeds for the event restore: a record of every built-in action, with all columns and no image and with its image and
// no columns, and one with every column of an unknown code.
#include "events/columns.h"
#include "seeds.h"

using namespace OrvPLC;

namespace {

template <class Value>
void Put(std::string& seed, Value value)
{
    seed.append(reinterpret_cast<const char*>(&value), sizeof value);
}

std::string Record(std::uint32_t code, Columns columns, const std::string& image)
{
    const std::u16string text = u"text";
    std::string seed(1, '\1');
    Put(seed, code);
    Put(seed, columns);
    Put(seed, std::int32_t{5});
    Put(seed, std::int64_t{7});
    Put(seed, static_cast<std::uint8_t>(text.size()));
    return seed.append(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)).append(image);
}

// A value of every sort of fields for each declared parameter, and one under the name of a column.
std::string ImageOf(const TOrvActionInternalInfo& entry)
{
    const auto setFields = [](TOrvParameter& value, const TOrvParameterInternalInfo& info) {
        value.SetMediaChannel(7, 5, u"name");
        value.SetKindAndEnum(info.Type, info.EnumType);
    };
    const ObjectPtr<TOrvAction> action = SeedAction(entry, setFields);
    action->SetString(Boundary(u"StringFieldD"), Boundary(u"generic"));
    return BinaryOf(*action);
}

void Make(const SeedFolder& folder)
{
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const std::string file = entry->NameA.c_str();
        folder.Write(file + ".columns", Record(entry->Code, kAllColumns, {}));
        folder.Write(file + ".image", Record(entry->Code, 0, ImageOf(*entry)));
    }
    folder.Write("unknown", Record(123456, kAllColumns, {}));
}

}  // namespace

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
