#include "ulmo/xml_tree.h"

#include <algorithm>
#include <vector>

#include "ulmo/string_conversion.h"
#include "ulmo/xml_parser.h"
#include "ulmo/xml_text.h"

namespace Ulmo {

namespace {

using Nodes = std::vector<const XMLNode*>;

CountedPtr<XMLNode> NoVersion()
{
    return MakeCounted<XMLNode>("noversion", "no version information found");
}

// A sequence that the end would cut is left out whole.
std::string_view PieceAt(std::string_view document, std::size_t position)
{
    constexpr std::size_t kLongest = 32;
    std::string_view piece = document.substr(std::min(position, document.size()), kLongest);
    const std::size_t behind = position + piece.size();
    if (behind < document.size() && (document[behind] & 0xC0) == 0x80) {
        std::size_t length = piece.size();
        while (length > 0 && (piece[length - 1] & 0xC0) == 0x80) --length;
        piece = piece.substr(0, length > 0 ? length - 1 : 0);
    }
    return piece;
}

std::u16string FaultMessage(const XMLParser::XMLParserException& fault, std::string_view document)
{
    std::string message = "XML parsing failed: " + fault.NarrowMessage() + "\n";
    return WideFromUtf8(message.append(PieceAt(document, fault.Position())));
}

// A name without wildcards finds the first child of it alone, by the parent's index.
void AddMatching(const XMLNode& parent, std::string_view name, Nodes& found)
{
    if (!name.empty() && name.find_first_of("*?") == std::string_view::npos) {
        if (const XMLNode* child = parent.FindChild(name)) found.push_back(child);
        return;
    }
    for (const XMLNode* child = parent.FirstChild(); child; child = child->NextSibling()) {
        if (MatchesWildcards(name, child->GetName())) found.push_back(child);
    }
}

}  // namespace

XMLTree::XMLTree() : version_(NoVersion())
{}

void XMLTree::Parse(const char* text, std::size_t deepest)
{
    const std::string_view document = text ? text : "";
    root_ = {};
    version_ = NoVersion();
    XMLParser parser(document, deepest);
    try {
        parser.Run();
    } catch (const XMLParser::XMLParserException& fault) {
        throw XMLNodeParsingException(FaultMessage(fault, document), static_cast<std::uint32_t>(fault.Position()));
    }
    root_ = parser.Root();
    if (parser.Version()) version_ = parser.Version();
}

// All nodes of one level before those of the next, so that no depth of the document shows on the stack.
void XMLTree::FindNodes(std::string_view path, XMLNodeFilter* filter, XMLNode& result) const
{
    Nodes found;
    if (root_) found.push_back(root_.get());
    for (std::size_t begin = 0; begin <= path.size() && !found.empty();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        Nodes next;
        for (const XMLNode* node : found) AddMatching(*node, path.substr(begin, end - begin), next);
        found = std::move(next);
        begin = end + 1;
    }
    // Copied first: the result may be a node of this very tree.
    std::vector<CountedPtr<XMLNode>> copies;
    for (const XMLNode* node : found) {
        if (!filter || filter->Accepts(*node)) copies.push_back(node->Copy());
    }
    for (CountedPtr<XMLNode>& copy : copies) result.Append(std::move(copy));
}

namespace {

constexpr std::string_view kDeclaration = "<?xml version='1.0' encoding='utf-8' ?>";
constexpr std::string_view kSectionWord = "[CDATA[";

void AppendByte(std::string& document, char c)
{
    document.append("&#").append(std::to_string(static_cast<unsigned char>(c))).append(";");
}

// Beyond the usual escapes: the bytes of a set, and the words that the reader would take for a section.
void AppendText(std::string& document, std::string_view text, std::string_view alsoEscaped)
{
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = at;
        while (end < text.size() && alsoEscaped.find(text[end]) == std::string_view::npos &&
               !text.substr(end).starts_with(kSectionWord)) {
            ++end;
        }
        document += EscapeXml(text.substr(at, end - at));
        if (end < text.size()) AppendByte(document, text[end]);
        at = end + 1;
    }
}

// Leading and trailing blanks of a text would be lost.
void AppendValue(std::string& document, std::string_view value)
{
    constexpr std::string_view kZero("\0", 1);
    const bool blankFirst = !value.empty() && IsXmlBlank(value.front());
    if (blankFirst) {
        AppendByte(document, value.front());
        value.remove_prefix(1);
    }
    const bool blankLast = value.ends_with(' ');
    if (blankLast) value.remove_suffix(1);
    AppendText(document, value, kZero);
    if (blankLast) AppendByte(document, ' ');
}

// An attribute's name has no escapes, so all of it must be sound; of a node's only the first unit decides.
void CheckName(std::string_view name, bool ofAttribute)
{
    const std::size_t checked = ofAttribute ? name.size() : std::min<std::size_t>(name.size(), 1);
    if (name.empty() ||
        !std::all_of(name.begin(), name.begin() + static_cast<std::ptrdiff_t>(checked), IsXmlNameCharacter)) {
        throw XMLNodeException("XMLTree::Serialize - a name that no document can hold");
    }
}

void AppendName(std::string& document, std::string_view name)
{
    constexpr std::string_view kNotInNames("=/ \r\n\t\0", 7);
    CheckName(name, false);
    AppendText(document, name, kNotInNames);
}

// A new line must not stand behind a value, which it would become part of.
void OpenNode(std::string& document, const XMLNode& node)
{
    document += '<';
    AppendName(document, node.GetName());
    for (const XMLNode::Attribute& attribute : node.Attributes()) {
        CheckName(attribute.name, true);
        document.append(" ").append(attribute.name).append("='");
        AppendText(document, attribute.value, std::string_view("\0", 1));
        document += '\'';
    }
    const bool empty = !node.FirstChild() && node.Text().empty();
    document += empty ? "/>\n" : ">";
    AppendValue(document, node.Text());
    if (!empty && node.Text().empty()) document += '\n';
}

void CloseNode(std::string& document, const XMLNode& node)
{
    if (!node.FirstChild() && node.Text().empty()) return;
    document += "</";
    AppendName(document, node.GetName());
    document += ">\n";
}

}  // namespace

std::string Serialize(const XMLTree& tree)
{
    std::string document(kDeclaration);
    document += '\n';
    const XMLNode* const root = tree.GetRoot().get();
    for (const XMLNode* node = root; node;) {
        OpenNode(document, *node);
        if (node->FirstChild()) {
            node = node->FirstChild();
            continue;
        }
        CloseNode(document, *node);
        // Up to the next node that has a sibling; all on the way end here.
        while (node != root && !node->NextSibling()) {
            node = node->Parent();
            CloseNode(document, *node);
        }
        node = node == root ? nullptr : node->NextSibling();
    }
    return document;
}

}  // namespace Ulmo
