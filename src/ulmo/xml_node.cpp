#include "ulmo/xml_node.h"

#include <algorithm>

namespace Ulmo {

namespace {

// Nobody else can take a reference meanwhile: a tree is for one thread at a time.
bool IsHeldElsewhere(XMLNode& node) noexcept
{
    // One reference is the tree's, one was just taken.
    const bool elsewhere = node.AddRef() > 2;
    node.Release();
    return elsewhere;
}

// The parts of a path that hold something.
std::vector<std::string> SplitPath(std::string_view path)
{
    std::vector<std::string> parts;
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        if (end > begin) parts.emplace_back(path.substr(begin, end - begin));
        begin = end + 1;
    }
    return parts;
}

}  // namespace

XMLNode::XMLNode(std::string name, std::string value, std::size_t position)
    : name_(std::move(name)), value_(std::move(value)), position_(position)
{}

XMLNode::~XMLNode()
{
    DropChildren();
    DropSiblings();
}

// Walks down to a node without children, drops it and goes on with its sibling, then with its parent: what ends is
// always a node with nothing below or behind it.
void XMLNode::DropChildren() noexcept
{
    XMLNode* at = this;
    for (;;) {
        at->childrenByName_.clear();
        XMLNode* child = at->firstChild_.get();
        if (child && IsHeldElsewhere(*child)) {
            // It lives on, and with it the siblings that it owns.
            for (XMLNode* orphan = child; orphan; orphan = orphan->nextSibling_.get()) orphan->parent_ = nullptr;
            at->firstChild_ = {};
            child = nullptr;
        }
        if (child) {
            at = child;
            continue;
        }
        if (at == this) return;
        XMLNode* parent = at->parent_;
        // Through a name of its own: the assignment ends the node that holds the right side.
        CountedPtr<XMLNode> next = std::move(at->nextSibling_);
        parent->firstChild_ = std::move(next);
        at = parent;
    }
}

// Only a node that has outlived its parent still owns siblings here.
void XMLNode::DropSiblings() noexcept
{
    CountedPtr<XMLNode> next = std::move(nextSibling_);
    while (next && !IsHeldElsewhere(*next)) {
        CountedPtr<XMLNode> after = std::move(next->nextSibling_);
        next = std::move(after);
    }
}

CountedPtr<XMLNode> XMLNode::CopyAlone() const
{
    CountedPtr<XMLNode> copy = MakeCounted<XMLNode>(name_, value_, position_);
    copy->attributes_ = attributes_;
    return copy;
}

// In a loop, like the end of a tree: documents may be nested deeper than the stack.
void XMLNode::CopyChildren(const XMLNode& source)
{
    const XMLNode* from = &source;
    XMLNode* to = this;
    for (;;) {
        if (from->firstChild_) {
            from = from->firstChild_.get();
            to = &to->Append(from->CopyAlone());
            continue;
        }
        for (; from != &source && !from->nextSibling_; from = from->parent_) to = to->parent_;
        if (from == &source) return;
        from = from->nextSibling_.get();
        to = &to->parent_->Append(from->CopyAlone());
    }
}

CountedPtr<XMLNode> XMLNode::Copy(bool withSiblings) const
{
    CountedPtr<XMLNode> first = CopyAlone();
    first->CopyChildren(*this);
    XMLNode* last = first.get();
    for (const XMLNode* next = nextSibling_.get(); withSiblings && next; next = next->nextSibling_.get()) {
        last->nextSibling_ = next->CopyAlone();
        last = last->nextSibling_.get();
        last->CopyChildren(*next);
    }
    return first;
}

// A name that went or came may make another child the first of that name.
void XMLNode::FindAgain(std::string_view name)
{
    childrenByName_.erase(name);
    for (XMLNode* child = firstChild_.get(); child; child = child->nextSibling_.get()) {
        if (child->name_ != name) continue;
        childrenByName_.emplace(child->name_, child);
        return;
    }
}

void XMLNode::SetName(std::string name)
{
    if (!parent_) {
        name_ = std::move(name);
        return;
    }
    // The index must not look at the old name once it is gone.
    parent_->childrenByName_.erase(name_);
    std::swap(name_, name);
    parent_->FindAgain(name);
    parent_->FindAgain(name_);
}

const XMLNode::Attribute* XMLNode::FindAttribute(std::string_view name) const noexcept
{
    for (const Attribute& attribute : attributes_) {
        if (attribute.name == name) return &attribute;
    }
    return nullptr;
}

Variant XMLNode::FindAttributeVariant(std::string_view name) const
{
    if (const Attribute* attribute = FindAttribute(name)) return Variant(attribute->value);
    throw XMLNodeException("XMLNode::FindAttributeVariant(string) - attribute not found");
}

void XMLNode::AddAttribute(std::string name, const Variant& value)
{
    if (HasAttribute(name)) {
        throw XMLNodeException("XMLNode::AddAttribute(string) - attribute already assigned");
    }
    attributes_.push_back({std::move(name), value.ToString(), 0});
}

void XMLNode::CheckJoins(const XMLNode* node) const
{
    bool joins = node && !node->parent_ && !node->nextSibling_;
    for (const XMLNode* above = this; joins && above; above = above->parent_) joins = above != node;
    if (!joins) throw XMLNodeException("XMLNode - a node that belongs elsewhere cannot be added");
}

XMLNode& XMLNode::Append(CountedPtr<XMLNode> node)
{
    Place(std::move(node), lastChild_);
    return *lastChild_;
}

// Behind `before`, which is a child of this node, or null if there is none yet.
void XMLNode::Place(CountedPtr<XMLNode> node, XMLNode* before)
{
    XMLNode* placed = node.get();
    const bool last = before == lastChild_;
    // The step that may fail comes first.
    const bool firstOfName = childrenByName_.try_emplace(placed->name_, placed).second;
    placed->parent_ = this;
    if (before) {
        placed->nextSibling_ = std::move(before->nextSibling_);
        before->nextSibling_ = std::move(node);
    } else {
        firstChild_ = std::move(node);
    }
    if (last) {
        lastChild_ = placed;
    } else if (!firstOfName) {
        FindAgain(placed->name_);
    }
}

void XMLNode::AddChild(CountedPtr<XMLNode> node)
{
    CheckJoins(node.get());
    XMLNode* parent = this;
    const std::vector<std::string> parts = SplitPath(node->name_);
    // The parts before the last name elements that are made if they are missing.
    for (std::size_t i = 0; i + 1 < parts.size(); ++i) {
        XMLNode* child = parent->FindChild(parts[i]);
        parent = child ? child : &parent->Append(MakeCounted<XMLNode>(parts[i]));
    }
    if (!parts.empty()) node->name_ = parts.back();
    parent->Append(std::move(node));
}

void XMLNode::InsertAfter(CountedPtr<XMLNode> node)
{
    if (!parent_) throw XMLTreeException("InsertAfter: adding to root not allowed");
    CheckJoins(node.get());
    const std::size_t slash = node->name_.find('/');
    const std::vector<std::string> parts = SplitPath(node->name_);
    if (slash == std::string::npos || parts.size() < 2) {
        if (!parts.empty()) node->name_ = parts.back();
        return parent_->Place(std::move(node), this);
    }
    XMLNode* leading = parent_->FindChild(parts.front());
    if (!leading) {
        CountedPtr<XMLNode> made = MakeCounted<XMLNode>(parts.front());
        leading = made.get();
        parent_->Place(std::move(made), this);
    }
    std::string rest;
    for (std::size_t i = 1; i < parts.size(); ++i) rest += (i > 1 ? "/" : "") + parts[i];
    node->name_ = std::move(rest);
    leading->AddChild(std::move(node));
}

const XMLNode* XMLNode::FindChild(std::string_view name) const
{
    const auto found = childrenByName_.find(name);
    return found == childrenByName_.end() ? nullptr : found->second;
}

}  // namespace Ulmo
