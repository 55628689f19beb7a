#include "ulmo/xml_tree.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace Ulmo;

using NodePtr = CountedPtr<XMLNode>;

NodePtr NewNode(const char* name)
{
    return MakeCounted<XMLNode>(name);
}

std::string Below(const XMLNode& node)
{
    std::string names;
    for (const XMLNode* child = node.FirstChild(); child; child = child->NextSibling()) {
        names += (names.empty() ? "" : " ") + child->GetName() + (child->FirstChild() ? "(" + Below(*child) + ")" : "");
    }
    return names;
}

TEST(XmlNode, AttributesAreUniqueAndExact)
{
    const NodePtr node = NewNode("a");
    node->AddAttribute("b", "1");
    node->AddAttribute("B", 7);
    EXPECT_EQ(node->FindAttributeVariant("B").As<int>(), 7);
    EXPECT_EQ(node->FindAttributeVariant("B").GetKind(), Variant("").GetKind());
    EXPECT_EQ(node->GetValue().ToString(), "");
    EXPECT_FALSE(node->HasAttribute("c"));
    for (const auto& [call, message] :
         {std::pair<void (*)(XMLNode&), const char*>{[](XMLNode& n) { n.FindAttributeVariant("c"); },
                                                     "XMLNode::FindAttributeVariant(string) - attribute not found"},
          {[](XMLNode& n) { n.AddAttribute("b", "2"); },
           "XMLNode::AddAttribute(string) - attribute already assigned"}}) {
        try {
            call(*node);
            ADD_FAILURE();
        } catch (const XMLNodeException& fault) {
            EXPECT_STREQ(fault.what(), message);
        }
    }
}

TEST(XmlNode, PathsMakeWhatIsAbsent)
{
    const NodePtr root = NewNode("root");
    root->AddChild(NewNode("a/b/c"));
    root->AddChild(NewNode("a/d"));
    root->AddChild(NewNode("e"));
    root->FindChild("a")->InsertAfter(NewNode("f"));
    root->FindChild("a")->InsertAfter(NewNode("/g//h/i"));
    root->FindChild("e")->InsertAfter(NewNode("a/k"));
    root->FindChild("e")->InsertAfter(NewNode("/last/"));
    EXPECT_EQ(Below(*root), "a(b(c) d k) g(h(i)) f e last");
    EXPECT_EQ(root->FindChild("a")->FirstChild()->FirstChild()->Parent()->GetName(), "b");
    root->AddChild(NewNode("end"));
    EXPECT_EQ(Below(*root), "a(b(c) d k) g(h(i)) f e last end");
    EXPECT_THROW(root->InsertAfter(NewNode("x")), XMLTreeException);
}

TEST(XmlNode, RefusesWhatBelongsElsewhere)
{
    const NodePtr root = NewNode("root");
    root->AddChild(NewNode("a"));
    XMLNode* const a = root->FirstChild();
    EXPECT_THROW(root->AddChild(NodePtr(a)), XMLNodeException);
    EXPECT_THROW(a->AddChild(root), XMLNodeException);
    EXPECT_THROW(a->InsertAfter(root), XMLNodeException);
    EXPECT_THROW(root->AddChild(NodePtr()), XMLNodeException);
    EXPECT_EQ(Below(*root), "a");
}

TEST(XmlNode, TheFirstOfANameIsFound)
{
    const NodePtr root = NewNode("root");
    for (const char* name : {"a", "b", "a"}) root->AddChild(NewNode(name));
    XMLNode* const first = root->FirstChild();
    EXPECT_EQ(root->FindChild("a"), first);
    first->SetName("zz");
    EXPECT_EQ(root->FindChild("b"), first->NextSibling());
    first->SetName("b");
    EXPECT_EQ(root->FindChild("b"), first);
    EXPECT_EQ(root->FindChild("a"), first->NextSibling()->NextSibling());
    first->InsertAfter(NewNode("a"));
    EXPECT_EQ(root->FindChild("a"), first->NextSibling());
    EXPECT_EQ(root->FindChild("A"), nullptr);
}

TEST(XmlNode, HeldNodesOutliveTheirTree)
{
    NodePtr middle;
    NodePtr deep;
    {
        XMLTree tree;
        tree.Parse("<r><a/><m><x><y>text</y></x></m><c><z/></c></r>");
        middle = NodePtr(tree.GetRoot()->FindChild("m"));
        deep = NodePtr(middle->FirstChild()->FirstChild());
    }
    EXPECT_EQ(middle->Parent(), nullptr);
    EXPECT_EQ(middle->NextSibling()->FirstChild()->GetName(), "z");
    EXPECT_EQ(middle->NextSibling()->Parent(), nullptr);
    EXPECT_EQ(Below(*middle), "x(y)");
    middle = {};
    EXPECT_EQ(deep->Parent(), nullptr);
    EXPECT_EQ(deep->Text(), "text");
}

TEST(XmlNode, CopiesWithAndWithoutSiblings)
{
    XMLTree tree;
    tree.Parse("<r><a b='1'>t<c><d/></c><e/></a><f><g/></f></r>");
    const XMLNode& a = *tree.GetRoot()->FirstChild();
    const NodePtr alone = a.Copy();
    const NodePtr all = a.Copy(true);
    EXPECT_EQ(Below(*alone), "c(d) e");
    EXPECT_EQ(alone->FindAttributeVariant("b").ToString() + alone->Text(), "1t");
    EXPECT_EQ(alone->NextSibling(), nullptr);
    EXPECT_EQ(Below(*all->NextSibling()), "g");
}

TEST(XmlTree, FindsByPath)
{
    struct WithValue : XMLNodeFilter {
        bool Accepts(const XMLNode& node) override { return !node.Text().empty(); }
    } withValue;
    XMLTree tree;
    tree.Parse("<r><a1><x/><x>2</x><y>3</y></a1><a2><x>4<z/></x></a2><b><x/></b></r>");
    const auto found = [&tree](const char* path, XMLNodeFilter* filter) {
        const NodePtr result = NewNode("result");
        tree.FindNodes(path, filter, *result);
        return Below(*result);
    };
    EXPECT_EQ(found("a1/x", nullptr), "x");  // by name only the first
    EXPECT_EQ(found("a*/x*", nullptr), "x x x(z)");
    EXPECT_EQ(found("a?/x*", &withValue), "x x(z)");
    EXPECT_EQ(found("/?", nullptr), "x x y x(z) x");
    EXPECT_EQ(found("r", nullptr), "");
    EXPECT_EQ(found("a2/x/", nullptr), "z");  // a piece without a name means any
    EXPECT_EQ(found("a1/x/none/*", nullptr), "");
    tree.FindNodes("*", nullptr, *tree.GetRoot());
    EXPECT_EQ(Below(*tree.GetRoot()), "a1(x x y) a2(x(z)) b(x) a1(x x y) a2(x(z)) b(x)");
}

TEST(XmlTree, SerializedTextReadsBackTheSame)
{
    XMLTree tree;
    tree.Parse("<a b='&lt;&#10;&quot;&#0;&#200;'>&#32;x  &#32;<c>y&#0;&#91;CDATA[!&#32;</c>!<d/></a>");
    const std::string text = Serialize(tree);
    EXPECT_EQ(text,
              "<?xml version='1.0' encoding='utf-8' ?>\n"
              "<a b='&lt;\n&quot;&#0;&#200;'>&#32;x  &#32;<c>y&#0;&#91;CDATA[!&#32;</c>\n<d/>\n</a>\n");
    XMLTree again;
    again.Parse(text.c_str());
    EXPECT_EQ(Serialize(again), text);
    EXPECT_EQ(again.GetRoot()->FindChild("c")->Text(), std::string("y\0[CDATA[! ", 11));
    for (const char* name : {"", "<"}) {
        tree.GetRoot()->SetName(name);
        EXPECT_THROW(Serialize(tree), XMLNodeException) << name;
    }
    again.GetRoot()->SetName("a=");
    EXPECT_NE(Serialize(again).find("<a&#61; b="), std::string::npos);
    again.GetRoot()->AddAttribute("b=", 1);
    EXPECT_THROW(Serialize(again), XMLNodeException);
    EXPECT_EQ(Serialize(XMLTree()), "<?xml version='1.0' encoding='utf-8' ?>\n");
}

TEST(XmlTree, DeepTreesAreCopiedWrittenAndDropped)
{
    constexpr int kDeep = 100'000;
    std::string text;
    for (int i = 0; i < kDeep; ++i) text += "<a>";
    for (int i = 0; i < kDeep; ++i) text += "</a>";
    XMLTree tree;
    tree.Parse(text.c_str());
    const NodePtr copy = tree.GetRoot()->Copy();
    const NodePtr result = NewNode("result");
    tree.FindNodes("*", nullptr, *result);
    EXPECT_EQ(Serialize(tree).size(), 40U + 4U * (kDeep - 1) + 5U * (kDeep - 1) + 5U);

    // As many siblings, which the first of them owns when the parent is gone.
    NodePtr parent = NewNode("r");
    for (int i = 0; i < kDeep; ++i) parent->Append(NewNode("a"));
    NodePtr first(parent->FirstChild());
    parent = {};
    EXPECT_EQ(first->Parent(), nullptr);
}

}  // namespace
