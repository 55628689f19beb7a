#include "ulmo/xml_parser.h"

#include "ulmo/format.h"
#include "ulmo/xml_text.h"

namespace Ulmo {

namespace {

constexpr std::size_t kNone = std::string_view::npos;
constexpr std::string_view kSection = "[CDATA[";
constexpr std::string_view kSectionEnd = "]]";
constexpr std::string_view kNameEnd = "=/>< \r\n\t";

std::string MismatchMessage(std::string_view start, std::string_view end)
{
    const std::string_view names[] = {start, end};
    std::string message;
    Text::Format("Name of start tag [{0}] does not match name of end tag [{1}]", message, names);
    return message;
}

}  // namespace

XMLParser::XMLParser(std::string_view text, std::size_t deepest)
    : text_(text), lastSection_(text.rfind(kSection)), deepest_(deepest)
{}

void XMLParser::Fail(std::string message, std::size_t position)
{
    throw XMLParserException(std::move(message), position);
}

void XMLParser::SkipBlanks()
{
    while (!AtEnd() && IsXmlBlank(text_[cursor_])) ++cursor_;
}

void XMLParser::Run()
{
    SkipBlanks();
    if (!At('<')) Fail("Invalid xml format. Start of node [<] not found", cursor_);
    while (EnterNextTag()) ReadMarkup();
    if (current_) Fail("End of root node expected", text_.size());
}

// Text between tags is passed over, and so is a "<" that ends the document.
bool XMLParser::EnterNextTag()
{
    tag_ = text_.find('<', cursor_);
    if (tag_ == kNone || tag_ + 1 == text_.size()) return false;
    cursor_ = tag_ + 1;
    return true;
}

void XMLParser::ReadMarkup()
{
    const char first = text_[cursor_];
    if (first == '!' || first == '/' || first == '?') ++cursor_;
    switch (first) {
    case '!': return ReadExclamation();
    case '/': return ReadEndTag();
    case '?': return ReadVersion();
    default: return ReadStartTag();
    }
}

void XMLParser::ReadExclamation()
{
    if (Follows("--")) return ReadComment();
    if (Follows("DOCTYPE")) {
        const std::size_t end = text_.find('>', cursor_);
        if (end == kNone) Fail("End of DOCTYPE not found", tag_);
        cursor_ = end + 1;
        return;
    }
    if (!current_ || !Follows(kSection)) Fail("Syntax error reading comment", tag_);
    SkipSection(cursor_);
}

// Deliberately strict: a "-" that does not begin the end mark is a fault.
void XMLParser::ReadComment()
{
    const std::size_t dash = text_.find('-', cursor_ + 2);
    if (dash == kNone) Fail("End of comment not found", tag_);
    cursor_ = dash;
    if (!Follows("-->")) Fail("Syntax error reading comment end", dash);
    cursor_ += 3;
}

void XMLParser::ReadVersion()
{
    if (!Follows("xml")) Fail("Illegal version beginning - xml expected", cursor_);
    cursor_ += 3;
    CountedPtr<XMLNode> node = MakeCounted<XMLNode>("xmlversionattributes", std::string(), tag_);
    ReadAttributes(*node, true);
    if (!At('?')) Fail("No end of version tag found", tag_);
    ++cursor_;
    if (!At('>')) Fail("Illegal version termination", cursor_);
    ++cursor_;
    version_ = std::move(node);
}

// Up to a character that cannot be part of a name; the last name of a document has one behind it as well.
std::string XMLParser::ReadNodeName()
{
    const std::size_t end = text_.find_first_of(kNameEnd, cursor_);
    if (end == kNone) Fail("Start of attribute not found in read node name - invalid node", cursor_);
    if (end == cursor_) Fail("No node name in read node name", cursor_);
    std::string name(text_.substr(cursor_, end - cursor_));
    DecodeXmlEntities(name);
    cursor_ = end;
    return name;
}

// False for a second root, which stays outside of the tree: its end tag then finds no element open. One that closes
// itself has no end tag, so it is passed over. Deliberate: documents with a tail of that kind have always been read.
bool XMLParser::Attach(const CountedPtr<XMLNode>& node)
{
    if (!current_ && root_) return false;
    if (depth_++ == deepest_) Fail("Elements are nested too deeply", tag_);
    if (current_) {
        current_->Append(node);
    } else {
        root_ = node;
    }
    current_ = node.get();
    return true;
}

void XMLParser::Leave()
{
    // Null at the root, so a document has ended when nothing is open.
    current_ = current_->Parent();
    --depth_;
}

void XMLParser::ReadStartTag()
{
    if (!IsXmlNameCharacter(text_[cursor_])) Fail("Illegal character after tag start", cursor_);
    const CountedPtr<XMLNode> node = MakeCounted<XMLNode>(ReadNodeName(), std::string(), tag_);
    const bool attached = Attach(node);
    ReadAttributes(*node, false);
    if (AtEnd()) Fail("Unexpected end during next node parsing", cursor_);
    if (At('>')) {
        ++cursor_;
        return ReadValue(*node);
    }
    if (!At('/')) Fail("Invalid tag end", cursor_);
    ++cursor_;
    SkipBlanks();
    if (!At('>')) Fail("Empty node - end [>] not found", cursor_);
    ++cursor_;
    // An element that closes itself was entered like any other.
    if (attached) Leave();
}

void XMLParser::ReadEndTag()
{
    const std::size_t begin = cursor_;
    const std::string name = ReadNodeName();
    SkipBlanks();
    if (!current_) Fail("End tag without start (no or multiple root)", begin);
    if (name != current_->GetName()) Fail(MismatchMessage(current_->GetName(), name), begin);
    if (!At('>')) Fail("Invalid termination of end tag", cursor_);
    ++cursor_;
    Leave();
}

// Reads the text before the first child or the end tag. A CDATA section ends the reading and leaves the value
// unset, also when a "!" merely has one anywhere behind it: deliberate, files that rely on it exist.
void XMLParser::ReadValue(XMLNode& node)
{
    SkipBlanks();
    if (AtEnd()) Fail("Unexpected end during value parsing", cursor_);
    std::size_t end = text_.find_first_of("!<>", cursor_);
    for (; end != kNone && text_[end] == '!'; end = text_.find_first_of("!<>", end + 1)) {
        if (lastSection_ != kNone && lastSection_ > end) return SkipSection(text_.find(kSection, end));
    }
    if (end == kNone) Fail("Unexpected end of file while parsing for values", cursor_);
    if (text_[end] == '>') Fail("Invalid character '<' in value", end);  // the words are deliberate
    if (text_.substr(end + 1).starts_with('!') && text_.substr(end + 2).starts_with(kSection)) {
        return SkipSection(end + 2);
    }
    std::string_view value = text_.substr(cursor_, end - cursor_);
    value = value.substr(0, value.find_last_not_of(' ') + 1);
    cursor_ = end;
    if (value.empty()) return;
    std::string decoded(value);
    DecodeXmlEntities(decoded);
    node.SetValue(std::move(decoded));
}

void XMLParser::SkipSection(std::size_t begin)
{
    const std::size_t end = text_.find(kSectionEnd, begin);
    if (end == kNone) Fail("Invalid CDATA section: ]] not found", begin);
    cursor_ = end + kSectionEnd.size();
}

void XMLParser::ReadAttributes(XMLNode& node, bool ofVersion)
{
    Names names;
    for (SkipBlanks(); !AtEnd() && !At('/') && !At('>') && !(ofVersion && At('?')); SkipBlanks()) {
        ReadAttribute(node, names);
    }
}

// A few names are found by looking at them all; with many that would take the square of the time.
void XMLParser::ReadAttribute(XMLNode& node, Names& names)
{
    constexpr std::size_t kFew = 16;
    const std::size_t begin = cursor_;
    const std::string_view name = ReadAttributeName();
    std::string value = ReadAttributeValue();
    auto& attributes = node.attributes_;
    if (attributes.size() == kFew) {
        // The names are unique up to here. They are taken from the document, whose text does not move.
        for (const XMLNode::Attribute& earlier : attributes) {
            names.insert(text_.substr(earlier.position, earlier.name.size()));
        }
    }
    const bool known = attributes.size() < kFew ? node.HasAttribute(name) : !names.insert(name).second;
    if (known) Fail("Double attribute - attribute has been already set", begin);
    attributes.push_back({std::string(name), std::move(value), begin});
}

std::string_view XMLParser::ReadAttributeName()
{
    const std::size_t begin = cursor_;
    while (!AtEnd() && IsXmlNameCharacter(text_[cursor_])) ++cursor_;
    if (AtEnd()) Fail("End of file during attribute name parsing", begin);
    if (At('/') || At('>')) Fail("Unexpected end of attribute", cursor_);
    if (!At('=') && !IsXmlBlank(text_[cursor_])) Fail("Invalid character during attribute name parsing", cursor_);
    if (cursor_ == begin) Fail("Invalid (no) attribute name", begin);
    return text_.substr(begin, cursor_ - begin);
}

std::string XMLParser::ReadAttributeValue()
{
    SkipBlanks();
    if (!AtEnd() && !At('=')) Fail("Invalid char at start of attribute value", cursor_);
    if (At('=')) ++cursor_;
    SkipBlanks();
    if (AtEnd()) Fail("Attribute value: unexpected end", cursor_);
    if (!At('\'') && !At('"')) Fail("Attribute value begin: no ' or \" char found", cursor_);
    const std::size_t end = text_.find(text_[cursor_], cursor_ + 1);
    if (end == kNone) Fail("Attribute value end: no ' or \" char found", cursor_);
    std::string value(text_.substr(cursor_ + 1, end - cursor_ - 1));
    cursor_ = end + 1;
    DecodeXmlEntities(value);
    return value;
}

}  // namespace Ulmo
