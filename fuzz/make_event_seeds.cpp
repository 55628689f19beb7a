// Writes seeds for event_restore_fuzz into a directory: a record of every built-in action, with all columns and no
// image and with its image and no columns, and one with every column of an unknown code.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "catalogue/catalogue.h"
#include "events/columns.h"
#include "forms/binary_writer.h"
#include "objects/match_action.h"

using namespace OrvPLC;

namespace {

std::string BinaryOf(const TOrvAction& action)
{
    TOrvBinaryCursor measure(nullptr, 0);
    action.WriteBinary(measure);
    std::string bytes(static_cast<std::size_t>(measure.Required()), '\0');
    TOrvBinaryCursor cursor(bytes.data(), measure.Required());
    action.WriteBinary(cursor);
    return bytes;
}

template <class Value>
void Put(std::string& seed, Value value)
{
    seed.append(reinterpret_cast<const char*>(&value), sizeof value);
}

bool WriteSeed(const std::filesystem::path& file, std::uint32_t code, Columns columns, const std::string& image)
{
    const std::u16string text = u"text";
    std::string seed(1, '\1');
    Put(seed, code);
    Put(seed, columns);
    Put(seed, std::int32_t{5});
    Put(seed, std::int64_t{7});
    Put(seed, static_cast<std::uint8_t>(text.size()));
    seed.append(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(char16_t)).append(image);
    std::ofstream stream(file, std::ios::binary);
    stream.write(seed.data(), static_cast<std::streamsize>(seed.size()));
    return stream.good();
}

// A value of every sort of fields for each declared parameter, and one under the name of a column.
std::string ImageOf(const TOrvActionInternalInfo& entry)
{
    const ObjectPtr<TOrvAction> action(TOrvAction::Create(entry));
    for (std::size_t position = 0; position < entry.Parameters.size(); ++position) {
        action->Parameters().StoreDeclared(position, [&](TOrvParameter& value) {
            value.SetMediaChannel(7, 5, u"name");
            value.SetKindAndEnum(entry.Parameters[position].Type, entry.Parameters[position].EnumType);
        });
    }
    action->SetString(Boundary(u"StringFieldD"), Boundary(u"generic"));
    return BinaryOf(*action);
}

}  // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: make_event_seeds <directory>\n", stderr);
        return 2;
    }
    const std::filesystem::path directory = arguments[1];
    std::filesystem::create_directories(directory);
    for (const auto& [name, entry] : Catalogue().ActionsByName()) {
        const std::string file = entry->NameA.c_str();
        if (!WriteSeed(directory / (file + ".columns"), entry->Code, kAllColumns, {})) return 1;
        if (!WriteSeed(directory / (file + ".image"), entry->Code, 0, ImageOf(*entry))) return 1;
    }
    return WriteSeed(directory / "unknown", 123456, kAllColumns, {}) ? 0 : 1;
}
