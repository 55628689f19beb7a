// A small reader of XML in UTF-8 for documents of the size of a configuration, and queries over what it has read.
//
// It is no conforming XML processor, and its limits are part of what callers rely on: no hexadecimal entities, no
// namespaces, no internal DOCTYPE subsets, no "-" inside comments, no ">" in texts; CDATA sections are passed over; the
// text of an element is what comes before its first child. Encoding is not checked. The first fault ends the
// reading. Documents of any size and depth are read in linear time and constant stack.
#pragma once

#include <string>
#include <string_view>

#include "ulmo/xml_node.h"

namespace Ulmo {

// A document that cannot be read. The error code is the position of the fault in bytes; the message holds what is wrong
// and the piece of the document that stands there.
class XMLNodeParsingException : public XMLNodeException {
public:
    using XMLNodeException::XMLNodeException;
};

// Asked about each node that a query finds.
class XMLNodeFilter {
public:
    virtual bool Accepts(const XMLNode& node) = 0;

protected:
    ~XMLNodeFilter() = default;
};

class XMLTree : public VirtualReferenceCountBaseClass {
public:
    XMLTree();

    // Replaces version and root. Raises XMLNodeParsingException, also for elements that stand below more than `deepest`
    // others; the tree is empty then.
    void Parse(const char* text, std::size_t deepest = kAnyDepth);
    static constexpr std::size_t kAnyDepth = static_cast<std::size_t>(-1);

    // Null before a document has been read, and for one that holds no element.
    const CountedPtr<XMLNode>& GetRoot() const noexcept { return root_; }
    // The declaration, with its attributes; named "noversion" if there is none.
    const CountedPtr<XMLNode>& GetVersion() const noexcept { return version_; }

    // Copies each node at the path, with what is below it, as a child of the result. A path is names joined by "/",
    // counted from the children of the root. A name with "*" or "?" finds all children that fit, one without only the
    // first, an empty one all. The filter may be null.
    void FindNodes(std::string_view path, XMLNodeFilter* filter, XMLNode& result) const;

private:
    CountedPtr<XMLNode> version_;
    CountedPtr<XMLNode> root_;
};

// The tree as a document that reads back the same, after the usual declaration in place of its own. Raises
// XMLNodeException for a name that no document can hold.
std::string Serialize(const XMLTree& tree);

}  // namespace Ulmo
