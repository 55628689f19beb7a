// What the reader of extensions tells its listener. Nothing here decides what is read.
#include <algorithm>
#include <set>

#include "catalogue/extension_reader.h"
#include "catalogue/name_tables.h"
#include "ulmo/number_text.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

// Names may be of any length, and one may be quoted for each of many rows.
constexpr std::size_t kLongestQuote = 100;

std::string Quoted(std::u16string_view name)
{
    const bool whole = name.size() <= kLongestQuote;
    return Ulmo::Utf8FromWide(name.substr(0, kLongestQuote)) + (whole ? "" : "...");
}

// Whether a word stands in the list exactly.
template <std::size_t Size>
bool Holds(const std::string_view (&words)[Size], std::string_view word)
{
    return std::find(std::begin(words), std::end(words), word) != std::end(words);
}

// The word of the list that differs only in case; empty if there is none.
template <std::size_t Size>
std::string_view OtherCase(const std::string_view (&words)[Size], std::string_view word)
{
    const std::u16string lower = Ulmo::LowerCase(Ulmo::WideFromUtf8(word));
    for (const std::string_view candidate : words) {
        if (!candidate.empty() && Ulmo::WideFromUtf8(candidate) == lower) return candidate;
    }
    return {};
}

// The attribute's position, or the row's if the item is no attribute.
std::size_t PlaceOf(const Ulmo::XMLNode& node, std::string_view item)
{
    const Ulmo::XMLNode::Attribute* attribute = node.FindAttribute(item);
    return attribute ? attribute->position : node.Position();
}

// How a remark names a row.
std::string TitleOf(const Ulmo::XMLNode& row)
{
    const Ulmo::XMLNode::Attribute* attribute = row.FindAttribute("name");
    const Ulmo::XMLNode* child = row.FindChild("name");
    const std::string name = attribute ? attribute->value : child ? child->Text() : std::string();
    return "the " + row.GetName() + " '" + Quoted(Ulmo::WideFromUtf8(name)) + "'";
}

bool IsNumber(std::string_view text)
{
    if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
    return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

void ExtensionReader::Tell(Severity severity, std::size_t position, Words pieces) const
{
    if (!listener_) return;
    std::string text;
    for (const std::string_view piece : pieces) text += piece;
    listener_->OnRemark(severity, position, text);
}

void ExtensionReader::TellWithoutEffect(const Node& node, const ElementRule& rule) const
{
    if (!listener_) return;
    for (const Attribute& attribute : node.Attributes()) {
        if (Holds(rule.attributes, attribute.name) || rule.attributes[0].empty()) continue;
        const std::string_view meant = OtherCase(rule.attributes, attribute.name);
        Tell(Severity::Warning, attribute.position,
             {"the attribute '", attribute.name, "' has no effect", meant.empty() ? "" : ": it is written '", meant,
              meant.empty() ? "" : "'"});
    }
    for (const Node* child = node.FirstChild(); child; child = child->NextSibling()) {
        TellChildWithoutEffect(node, *child, rule);
    }
}

void ExtensionReader::TellChildWithoutEffect(const Node& node, const Node& child, const ElementRule& rule) const
{
    const std::string& name = child.GetName();
    const bool known = Holds(rule.children, name);
    const std::string_view meant = known ? std::string_view() : OtherCase(rule.children, name);
    if (known && node.FindChild(name) != &child) {
        Tell(Severity::Error, child.Position(), {"<", name, "> is not read: only the first of that name counts"});
    } else if (known && node.HasAttribute(name)) {
        Tell(Severity::Warning, child.Position(), {"<", name, "> is not read: the attribute comes first"});
    } else if (name == "params" && known && node.FindChild("parameters")) {
        Tell(Severity::Error, child.Position(), {"<params> is not read: <parameters> comes first"});
    } else if (!meant.empty()) {
        Tell(Severity::Error, child.Position(), {"<", name, "> is not read: it is written <", meant, ">"});
    } else if (!known && Holds(rule.attributes, name)) {
        Tell(Severity::Warning, child.Position(), {"<", name, "> is not read: only the attribute counts"});
    } else if (!known) {
        Tell(Severity::Warning, child.Position(), {"<", name, "> has no effect"});
    }
}

void ExtensionReader::TellNumber(const Attribute& attribute, std::int32_t number) const
{
    if (!listener_) return;
    std::u16string digits;
    Ulmo::AppendDecimal(digits, number);
    const std::string read = Quoted(digits);
    const bool whole = IsNumber(attribute.value);
    const bool inRange = Ulmo::ScanInt64(Ulmo::WideFromUtf8(attribute.value)) == number;
    if (whole && inRange) return;
    Tell(Severity::Warning, attribute.position,
         {"'", attribute.value, "' is ", whole ? "out of range" : "no decimal number", ": it is read as ", read});
}

void ExtensionReader::TellClass(const Node& row, std::u16string_view name, bool byNumber, bool known) const
{
    if (!listener_) return;
    const std::string text = Quoted(name);
    const std::size_t place = PlaceOf(row, "class");
    const bool number = IsNumber(Ulmo::Utf8FromWide(name));
    if (byNumber && !number) {
        Tell(Severity::Warning, place, {"only the digits at the start of the class '", text, "' count"});
    }
    if (byNumber && !known) {
        Tell(Severity::Warning, place, {TitleOf(row), " has no class: no class has the number ", text});
    } else if (!byNumber && !known && !(number && row.HasAttribute("class"))) {
        Tell(Severity::Warning, place,
             {TitleOf(row), " goes to the class System: there is no class '", text, "' so far"});
    }
}

void ExtensionReader::TellCollision(const Node& row, const TOrvBaseNameInfo* ofName,
                                    const TOrvBaseNameInfo* ofCode) const
{
    if (!listener_) return;
    if (ofName) {
        Tell(Severity::Error, PlaceOf(row, "name"), {TitleOf(row), " is dropped: the name is taken already"});
    } else if (ofCode) {
        Tell(Severity::Warning, PlaceOf(row, "code"),
             {TitleOf(row), " takes its code over from '", Quoted(ofCode->NameW.view()),
              "', which is then found by its name alone"});
    }
}

void ExtensionReader::TellTakenNumber(const Node& row, const TOrvBaseNameInfo* by) const
{
    if (!listener_ || !by) return;
    Tell(Severity::Error, PlaceOf(row, "value"),
         {TitleOf(row), " is dropped: its number is that of '", Quoted(by->NameW.view()), "'"});
}

void ExtensionReader::TellEnum(const Node& row, std::u16string_view name, std::uint32_t id)
{
    if (!listener_) return;
    const std::uint32_t taken = catalogue_.FindEnumTypeId(name);
    const auto [place, isNew] = enumNames_.try_emplace(id, name);
    if (taken != 0 && taken != id) {
        Tell(Severity::Error, PlaceOf(row, "name"),
             {TitleOf(row), " gets no name: it is that of an enum with another code; its values are read"});
    } else if (!isNew) {
        Tell(Severity::Warning, PlaceOf(row, "code"),
             {TitleOf(row), " adds its values to the enum '", Quoted(place->second), "', which has its code"});
    }
    if (FindParameterType(name)) {
        Tell(Severity::Warning, PlaceOf(row, "name"),
             {TitleOf(row), " has the name of a type: a parameter of that type keeps the type's kind"});
    }
}

void ExtensionReader::TellType(const Node& row, std::u16string_view type, std::uint32_t enumType) const
{
    if (enumType != 0 || FindParameterType(type)) return;
    const std::string why = !row.HasAttribute("type") ? std::string(", since its type is no attribute")
                            : type.empty()            ? std::string(", since its type is empty")
                                                      : ": '" + Quoted(type) + "' is no type, and no enum so far";
    Tell(Severity::Warning, PlaceOf(row, "type"), {TitleOf(row), " becomes a plain 32-bit number", why});
}

void ExtensionReader::TellView(const Node& row, std::u16string_view view) const
{
    if (view.empty() || FindView(view)) return;
    Tell(Severity::Warning, PlaceOf(row, "view"),
         {TitleOf(row), " gets no view: there is no view '", Quoted(view), "'"});
}

void ExtensionReader::TellColumns(const Node& row, std::u16string_view columns, std::uint32_t mask) const
{
    if (columns.empty() || FindColumn(columns)) return;
    const std::size_t place = PlaceOf(row, "dbfield");
    std::u16string_view first;
    std::size_t unknown = 0;
    for (std::size_t begin = 0; begin <= columns.size();) {
        const std::size_t end = std::min(columns.find(u'|', begin), columns.size());
        const std::u16string_view piece = columns.substr(begin, end - begin);
        if (!FindColumn(piece) && unknown++ == 0) first = piece;
        begin = end + 1;
    }
    if (unknown != 0) {
        Tell(Severity::Warning, place,
             {TitleOf(row), ": there is no column '", Quoted(first), "'",
              unknown > 1 ? ", nor are " + std::to_string(unknown - 1) + " other pieces columns" : std::string()});
    }
    if (mask != 0) return;
    Tell(Severity::Warning, place,
         {TitleOf(row), " gets no column at all",
          columns.find(u'|') == std::u16string_view::npos ? "" : ": beside a bar at least two must be good"});
}

// The list of rows and that of entries need not go side by side: rows may have been skipped.
void ExtensionReader::TellRepeated(const Node& list, const TOrvActionInternalInfo& action) const
{
    if (!listener_ || !action.HasRepeatedNames()) return;
    std::set<std::u16string> names;
    for (const Node* row = list.FirstChild(); row; row = row->NextSibling()) {
        const std::u16string name = ReadName(*row, "name");
        if (name.empty() || names.insert(Ulmo::LowerCase(name)).second) continue;
        Tell(Severity::Warning, PlaceOf(*row, "name"),
             {TitleOf(*row), " stands in the list more than once: all of them show the same value"});
    }
}

}  // namespace OrvPLC
