// A node of an XML tree: a name, a text, attributes in document order, and children.
//
// Nodes are counted. Parents own their children; the way back to the parent is a raw pointer that becomes null when the
// parent goes, so a node that is held on its own outlives its tree. Trees of any depth are copied and destroyed without
// recursion. A tree is for one thread at a time.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ulmo/exceptions.h"
#include "ulmo/reference_count.h"
#include "ulmo/variant.h"

namespace Ulmo {

class XMLTreeException : public UlmoException {
public:
    using UlmoException::UlmoException;
};

class XMLNodeException : public UlmoException {
public:
    using UlmoException::UlmoException;
};

class XMLNode : public VirtualReferenceCountBaseClass {
public:
    // All values are UTF-8 text and held as such; a Variant is made of one where it is asked for. Positions are those
    // of the document that the node was read from, in bytes, and 0 for what was not read.
    struct Attribute {
        std::string name;
        std::string value;
        std::size_t position;
    };

    explicit XMLNode(std::string name = {}, std::string value = {}, std::size_t position = 0);
    ~XMLNode() override;

    // A copy with all that is below it and, when asked, with the siblings behind it and what is below them.
    CountedPtr<XMLNode> Copy(bool withSiblings = false) const;

    const std::string& GetName() const noexcept { return name_; }
    void SetName(std::string name);
    Variant GetValue() const { return value_; }
    const std::string& Text() const noexcept { return value_; }  // the value as the node holds it
    void SetValue(std::string value) { value_ = std::move(value); }
    std::size_t Position() const noexcept { return position_; }  // of the "<" of its start tag

    // Names of attributes compare exactly.
    const std::vector<Attribute>& Attributes() const noexcept { return attributes_; }
    const Attribute* FindAttribute(std::string_view name) const noexcept;  // null if there is none
    bool HasAttribute(std::string_view name) const noexcept { return FindAttribute(name) != nullptr; }
    Variant FindAttributeVariant(std::string_view name) const;  // raises XMLNodeException
    // The text of the value. Raises XMLNodeException for a second attribute of a name.
    void AddAttribute(std::string name, const Variant& value);

    // Adds a node that has no parent and no siblings as the last child. A "/" in its name makes the name a path: what
    // stands before the last "/" is looked up from here, and made where it is absent, and the node goes there under the
    // last part. Raises XMLNodeException for a node that belongs elsewhere or that this one is below of.
    void AddChild(CountedPtr<XMLNode> node);
    // The same, right behind this node and under the same parent. With a path, what is made goes there. Raises
    // XMLTreeException for a root.
    void InsertAfter(CountedPtr<XMLNode> node);
    // Adds a fresh node as the last child, whatever its name holds.
    XMLNode& Append(CountedPtr<XMLNode> node);

    const XMLNode* FindChild(std::string_view name) const;  // the first of that name, compared exactly
    XMLNode* FindChild(std::string_view name) { return const_cast<XMLNode*>(std::as_const(*this).FindChild(name)); }
    XMLNode* FirstChild() const noexcept { return firstChild_.get(); }
    XMLNode* NextSibling() const noexcept { return nextSibling_.get(); }
    XMLNode* Parent() const noexcept { return parent_; }

private:
    friend class XMLParser;

    CountedPtr<XMLNode> CopyAlone() const;
    void CopyChildren(const XMLNode& source);
    void DropChildren() noexcept;
    void DropSiblings() noexcept;
    void CheckJoins(const XMLNode* node) const;
    void Place(CountedPtr<XMLNode> node, XMLNode* before);
    void FindAgain(std::string_view name);

    std::string name_;
    std::string value_;
    std::size_t position_;
    std::vector<Attribute> attributes_;
    XMLNode* parent_ = nullptr;
    CountedPtr<XMLNode> firstChild_;
    std::map<std::string_view, XMLNode*> childrenByName_;  // the first of each name; the keys are the nodes' own names
    XMLNode* lastChild_ = nullptr;
    CountedPtr<XMLNode> nextSibling_;
};

}  // namespace Ulmo
