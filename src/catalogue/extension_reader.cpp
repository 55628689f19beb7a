#include "catalogue/extension_reader.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "catalogue/name_tables.h"
#include "ulmo/ascii_words.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// Below these stand the codes of the built-in content.
constexpr std::int32_t kLeastEnumCode = 1000;
constexpr std::int32_t kLeastClassCode = 1000;
constexpr std::int32_t kLeastActionCode = kFirstExtensionActionCode;

// In any case of ASCII letters. The names of attributes compare exactly.
bool SameElement(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return Ulmo::LowerAscii(x) == Ulmo::LowerAscii(y); });
}

// What is no number gives 0, as everywhere in these files.
std::int32_t Scan(std::string_view text)
{
    return Ulmo::ScanInt32(Ulmo::WideFromUtf8(text));
}

std::uint32_t Unsigned(std::int32_t number)
{
    return static_cast<std::uint32_t>(number);
}

}  // namespace

void ExtensionReader::CheckSize(std::uint64_t size)
{
    if (size <= kLargestDocument) return;
    throw Ulmo::XMLNodeParsingException(u"XML parsing failed: The document is larger than 16 MiB\n",
                                        static_cast<std::uint32_t>(kLargestDocument));
}

void ExtensionReader::Read(const char* document)
{
    static constexpr ElementRule kRoot{"PLC", {}, {}, {"enums", "actionclasses", "actions"}};
    static constexpr ElementRule kEnum{"enum", {"name", "code"}, {"name", "code"}, {"name", "values"}};
    static constexpr ElementRule kClass{
        "actionclass", {"name", "code"}, {"name", "code", "priority", "flags"}, {"name", "plain", "description"}};
    static constexpr ElementRule kAction{"action",
                                         {"name", "code", "class"},
                                         {"name", "code", "class", "priority", "flags"},
                                         {"name", "class", "plain", "description", "parameters", "params"}};
    CheckSize(std::strlen(document));
    Ulmo::XMLTree tree;
    tree.Parse(document, kDeepestElement);
    const Node* root = tree.GetRoot().get();
    if (!root || !SameElement(root->GetName(), kRoot.element)) {
        Tell(Severity::Error, root ? root->Position() : 0, {"the root is not <PLC>: the file is ignored"});
        return;
    }
    TellWithoutEffect(*root, kRoot);
    // In this order whatever theirs is in the file, so that actions know the enums and classes of their own file.
    ReadSection(*root, "enums", kEnum, &ExtensionReader::ReadEnum);
    ReadSection(*root, "actionclasses", kClass, &ExtensionReader::ReadClass);
    ReadSection(*root, "actions", kAction, &ExtensionReader::ReadAction);
}

void ExtensionReader::ReadSection(const Node& root, std::string_view name, const ElementRule& rule,
                                  void (ExtensionReader::*read)(const Node& row))
{
    const Node* section = root.FindChild(name);
    if (section) ForEachRow(*section, rule, [this, read](const Node& row) { (this->*read)(row); });
}

template <class ReadRow>
void ExtensionReader::ForEachRow(const Node& list, const ElementRule& rule, ReadRow&& readRow) const
{
    for (const Node* node = list.FirstChild(); node; node = node->NextSibling()) {
        if (!IsRow(*node, rule)) continue;
        TellWithoutEffect(*node, rule);
        readRow(*node);
    }
}

bool ExtensionReader::IsRow(const Node& node, const ElementRule& rule) const
{
    if (!SameElement(node.GetName(), rule.element)) {
        Tell(Severity::Error, node.Position(),
             {"<", node.GetName(), "> is not read: only <", rule.element, "> counts here"});
        return false;
    }
    for (const std::string_view item : rule.required) {
        const bool present = node.HasAttribute(item) || (!rule.onlyAttributes && node.FindChild(item));
        // Unused places of a rule are empty.
        if (present || item.empty()) continue;
        Tell(Severity::Error, node.Position(), {"the ", rule.element, " is skipped: it has no '", item, "'"});
        TellWithoutEffect(node, rule);
        return false;
    }
    return true;
}

std::u16string ExtensionReader::ReadName(const Node& row, std::string_view item) const
{
    if (const Attribute* attribute = row.FindAttribute(item)) return Ulmo::WideFromUtf8(attribute->value);
    const Node* child = row.FindChild(item);
    return child ? Ulmo::WideFromUtf8(child->Text()) : std::u16string();
}

std::string_view ExtensionReader::ReadAttribute(const Node& row, std::string_view item) const
{
    const Attribute* attribute = row.FindAttribute(item);
    return attribute ? std::string_view(attribute->value) : std::string_view();
}

std::int32_t ExtensionReader::ReadNumber(const Node& row, std::string_view item, std::int32_t otherwise) const
{
    const Attribute* attribute = row.FindAttribute(item);
    if (!attribute) return otherwise;
    const std::int32_t number = Scan(attribute->value);
    TellNumber(*attribute, number);
    return number;
}

std::u16string ExtensionReader::ReadChild(const Node& row, std::string_view item, std::u16string_view otherwise) const
{
    const Node* child = row.FindChild(item);
    if (child && !child->Text().empty()) return Ulmo::WideFromUtf8(child->Text());
    if (child) {
        Tell(Severity::Warning, child->Position(),
             {"<", item, "> has no text that counts (CDATA does not): the name is used"});
    }
    return std::u16string(otherwise);
}

void ExtensionReader::ReadTexts(const Node& row, TOrvBaseNameInfo& entry) const
{
    const std::u16string_view name = entry.NameW.view();
    std::u16string plain = ReadChild(row, "plain", name);
    std::u16string description = ReadChild(row, "description", name);
    // A new entry shows its name already. Written again, a name outside ASCII becomes UTF-8 where that is asked for.
    if (plain == name && Ulmo::IsAscii(plain)) plain.clear();
    if (description == name && Ulmo::IsAscii(description)) description.clear();
    entry.WriteTextsOfBothSets(plain, description);
}

bool ExtensionReader::IsAcceptable(const Node& row, std::u16string_view name, std::int32_t code,
                                   std::int32_t least) const
{
    if (name.empty()) {
        Tell(Severity::Error, row.Position(), {"the ", row.GetName(), " is skipped: its name is empty"});
        return false;
    }
    if (code >= least) return true;
    if (listener_) {
        const Attribute* attribute = row.FindAttribute("code");
        Tell(Severity::Error, attribute ? attribute->position : row.Position(),
             {"the ", row.GetName(), " '", Ulmo::Utf8FromWide(name.substr(0, 100)), "' is skipped: its code is ",
              std::to_string(code), ", codes begin at ", std::to_string(least)});
    }
    return false;
}

void ExtensionReader::ReadEnum(const Node& row)
{
    static constexpr ElementRule kValue{"value", {"name", "value"}, {"name", "value", "text"}, {}, true};
    const std::u16string name = ReadName(row, "name");
    const std::int32_t code = ReadNumber(row, "code", 0);
    if (!IsAcceptable(row, name, code, kLeastEnumCode)) return;
    const Node* values = row.FindChild("values");
    if (!values) {
        Tell(Severity::Error, row.Position(), {"the enum is skipped: it has no <values>"});
        return;
    }
    const std::uint32_t id = Unsigned(code) | kEnumIdBit;
    TellEnum(row, name, id);
    ForEachRow(*values, kValue, [this, id](const Node& value) { ReadValue(value, id); });
    catalogue_.RegisterEnumType(Ulmo::LowerCase(name), id);
}

void ExtensionReader::ReadValue(const Node& row, std::uint32_t enumId)
{
    const std::u16string name = Ulmo::WideFromUtf8(ReadAttribute(row, "name"));
    if (name.empty()) {
        Tell(Severity::Error, row.Position(), {"the value is skipped: its name is empty"});
        return;
    }
    const std::uint32_t number = Unsigned(ReadNumber(row, "value", 0));
    const EnumValuePtr entry = Ulmo::MakeCounted<TOrvEnumInternalInfo>(name, enumId, number);
    const Attribute* text = row.FindAttribute("text");
    entry->WriteTextsOfBothSets(text ? Ulmo::WideFromUtf8(text->value) : name, {});
    TellTakenNumber(row, catalogue_.FindEnumValue(enumId, number));
    catalogue_.RegisterEnumValue(entry);
}

void ExtensionReader::ReadClass(const Node& row)
{
    const std::u16string name = ReadName(row, "name");
    const std::int32_t code = ReadNumber(row, "code", 0);
    if (!IsAcceptable(row, name, code, kLeastClassCode)) return;
    const ActionClassPtr entry = Ulmo::MakeCounted<TOrvActionClassInternalInfo>(
        name, Unsigned(code), Unsigned(ReadNumber(row, "priority", kDefaultPriority)),
        Unsigned(ReadNumber(row, "flags", 0)));
    ReadTexts(row, *entry);
    TellCollision(row, catalogue_.FindActionClassByName(name), catalogue_.FindActionClassByCode(entry->Code));
    catalogue_.RegisterActionClass(entry);
}

void ExtensionReader::ReadAction(const Node& row)
{
    const std::u16string name = ReadName(row, "name");
    const std::int32_t code = ReadNumber(row, "code", 0);
    if (!IsAcceptable(row, name, code, kLeastActionCode)) return;
    const ActionPtr entry = Ulmo::MakeCounted<TOrvActionInternalInfo>(
        name, Unsigned(code), Unsigned(ReadNumber(row, "priority", kDefaultPriority)),
        Unsigned(ReadNumber(row, "flags", 0)));
    ReadTexts(row, *entry);
    entry->Class = ClassReference(ReadClassOfAction(row));
    ReadParameters(row, *entry);
    TellCollision(row, catalogue_.FindActionByName(name), catalogue_.FindActionByCode(entry->Code));
    catalogue_.RegisterAction(entry);
}

// By number, or by name where the number is 0. Deliberate: a word that names no class leads to the class with code 0,
// a number that names none to no class.
const TOrvActionClassInternalInfo* ExtensionReader::ReadClassOfAction(const Node& row) const
{
    auto code = Unsigned(Scan(ReadAttribute(row, "class")));
    const std::u16string name = ReadName(row, "class");
    const bool byNumber = code != 0;
    const TOrvActionClassInternalInfo* named = byNumber ? nullptr : catalogue_.FindActionClassByName(name);
    if (named) code = named->Code;
    const TOrvActionClassInternalInfo* found = catalogue_.FindActionClassByCode(code);
    TellClass(row, name, byNumber, byNumber ? found != nullptr : named != nullptr);
    return found;
}

void ExtensionReader::ReadParameters(const Node& row, TOrvActionInternalInfo& action) const
{
    // "flags" counts for nothing here: a parameter has none.
    static constexpr ElementRule kParameter{"parameter",
                                            {"name", "type"},
                                            {"name", "type", "view", "priority", "dbfield"},
                                            {"name", "plain", "description"}};
    const Node* list = row.FindChild("parameters");
    if (!list) list = row.FindChild("params");
    if (!list) return;
    std::vector<TOrvParameterInternalInfo> parameters;
    ForEachRow(*list, kParameter, [&](const Node& parameter) {
        const std::u16string name = ReadName(parameter, "name");
        if (name.empty()) {
            Tell(Severity::Error, parameter.Position(), {"the parameter is skipped: its name is empty"});
            return;
        }
        parameters.push_back(ReadParameter(parameter, name));
    });
    action.SetParameters(std::move(parameters));
    TellRepeated(*list, action);
}

TOrvParameterInternalInfo ExtensionReader::ReadParameter(const Node& row, const std::u16string& name) const
{
    const std::u16string type = Ulmo::WideFromUtf8(ReadAttribute(row, "type"));
    const std::u16string view = Ulmo::WideFromUtf8(ReadAttribute(row, "view"));
    const std::u16string columns = Ulmo::WideFromUtf8(ReadAttribute(row, "dbfield"));
    // The name of an enum is no type, so its parameter becomes a 32-bit number of that enum.
    const std::uint32_t enumType = catalogue_.FindEnumTypeId(type);
    const std::uint32_t mask = ColumnsFromText(columns);
    TOrvParameterInternalInfo entry(name, ParameterTypeFromName(type), ViewFromName(view),
                                    Unsigned(ReadNumber(row, "priority", kDefaultPriority)), enumType, mask);
    ReadTexts(row, entry);
    if (listener_) {
        TellType(row, type, enumType);
        TellView(row, view);
        TellColumns(row, columns, mask);
    }
    return entry;
}

}  // namespace OrvPLC
