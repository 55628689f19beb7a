// Reads one document. Only for XMLTree, whose header says what it understands.
#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>

#include "ulmo/xml_node.h"

namespace Ulmo {

class XMLParser {
public:
    class XMLParserException : public UlmoException {
    public:
        XMLParserException(std::string message, std::size_t position)
            : UlmoException(std::move(message)), position_(position)
        {}
        std::size_t Position() const noexcept { return position_; }

    private:
        std::size_t position_;
    };

    // Elements below more than `deepest` others are a fault.
    XMLParser(std::string_view text, std::size_t deepest);

    void Run();                                                      // raises XMLParserException at the first fault
    const CountedPtr<XMLNode>& Root() const { return root_; }        // null for a document without elements
    const CountedPtr<XMLNode>& Version() const { return version_; }  // null for a document without declaration

private:
    [[noreturn]] static void Fail(std::string message, std::size_t position);
    bool AtEnd() const { return cursor_ == text_.size(); }
    bool At(char c) const { return !AtEnd() && text_[cursor_] == c; }
    bool Follows(std::string_view words) const { return text_.substr(cursor_).starts_with(words); }
    void SkipBlanks();

    bool EnterNextTag();
    void ReadMarkup();
    void ReadExclamation();
    void ReadComment();
    void ReadVersion();
    void ReadStartTag();
    void ReadEndTag();
    std::string ReadNodeName();
    bool Attach(const CountedPtr<XMLNode>& node);
    void Leave();
    void ReadValue(XMLNode& node);
    void SkipSection(std::size_t begin);

    using Names = std::set<std::string_view>;
    void ReadAttributes(XMLNode& node, bool ofVersion);
    void ReadAttribute(XMLNode& node, Names& names);
    std::string_view ReadAttributeName();
    std::string ReadAttributeValue();

    std::string_view text_;
    std::size_t cursor_ = 0;
    std::size_t tag_ = 0;         // the "<" of the tag that is being read
    std::size_t lastSection_;     // the last "[CDATA[" of the text, npos without one
    XMLNode* current_ = nullptr;  // the element that is open
    std::size_t deepest_;
    std::size_t depth_ = 0;  // the elements that are open
    CountedPtr<XMLNode> version_;
    CountedPtr<XMLNode> root_;
};

}  // namespace Ulmo
