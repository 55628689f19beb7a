// Reads extension documents into a catalogue, by the rules of docs/extensions.md.
//
// What breaks a rule is skipped without an error, and the listener hears what and why. So checking a document before it
// is deployed and loading it follow the same rules.
#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>

#include "catalogue/catalogue.h"
#include "ulmo/xml_tree.h"

namespace OrvPLC {

class ExtensionListener {
public:
    enum class Severity {
        Warning,  // read, but not as it looks
        Error,    // not read: something of the document is missing in the catalogue
    };
    // The position is that of the element or attribute, in bytes of the document; the text is UTF-8.
    virtual void OnRemark(Severity severity, std::size_t position, const std::string& text) = 0;

protected:
    ~ExtensionListener() = default;
};

class ExtensionReader {
public:
    explicit ExtensionReader(TOrvActionCatalogue& catalogue, ExtensionListener* listener = nullptr)
        : catalogue_(catalogue), listener_(listener)
    {}

    // A document takes up to a hundred times its size while it is read, and what lies beside a host is not to be
    // trusted. Real documents are far from these limits.
    static constexpr std::size_t kLargestDocument = 16 * 1024 * 1024;
    static constexpr std::size_t kDeepestElement = 256;

    // Raises XMLNodeParsingException for a size above the limit.
    static void CheckSize(std::uint64_t size);

    // Raises XMLNodeParsingException for a document that is no XML or beyond a limit; nothing of it is registered then.
    // Any other failure leaves what was registered up to it. One reader may read several documents, one after the
    // other.
    void Read(const char* document);

private:
    using Node = Ulmo::XMLNode;
    using Attribute = Ulmo::XMLNode::Attribute;
    using Severity = ExtensionListener::Severity;
    using Words = std::initializer_list<std::string_view>;
    struct ElementRule;  // what an element of the grammar holds

    void ReadSection(const Node& root, std::string_view name, const ElementRule& rule,
                     void (ExtensionReader::*read)(const Node& row));
    void ReadEnum(const Node& row);
    void ReadValue(const Node& row, std::uint32_t enumId);
    void ReadClass(const Node& row);
    void ReadAction(const Node& row);
    const TOrvActionClassInternalInfo* ReadClassOfAction(const Node& row) const;
    void ReadParameters(const Node& row, TOrvActionInternalInfo& action) const;
    TOrvParameterInternalInfo ReadParameter(const Node& row, const std::u16string& name) const;

    template <class ReadRow>
    void ForEachRow(const Node& list, const ElementRule& rule, ReadRow&& readRow) const;
    bool IsRow(const Node& node, const ElementRule& rule) const;
    // How an item of a row is found: a name as an attribute or else as a child element, an attribute only, a child
    // only.
    std::u16string ReadName(const Node& row, std::string_view item) const;
    std::string_view ReadAttribute(const Node& row, std::string_view item) const;
    std::int32_t ReadNumber(const Node& row, std::string_view item, std::int32_t otherwise) const;
    std::u16string ReadChild(const Node& row, std::string_view item, std::u16string_view otherwise) const;
    void ReadTexts(const Node& row, TOrvBaseNameInfo& entry) const;
    bool IsAcceptable(const Node& row, std::u16string_view name, std::int32_t code, std::int32_t least) const;

    // For the listener alone.
    void Tell(Severity severity, std::size_t position, Words pieces) const;
    void TellWithoutEffect(const Node& node, const ElementRule& rule) const;
    void TellChildWithoutEffect(const Node& node, const Node& child, const ElementRule& rule) const;
    void TellNumber(const Attribute& attribute, std::int32_t number) const;
    void TellClass(const Node& row, std::u16string_view name, bool byNumber, bool known) const;
    void TellCollision(const Node& row, const TOrvBaseNameInfo* ofName, const TOrvBaseNameInfo* ofCode) const;
    void TellTakenNumber(const Node& row, const TOrvBaseNameInfo* by) const;  // of a value of an enum
    void TellEnum(const Node& row, std::u16string_view name, std::uint32_t id);
    void TellType(const Node& row, std::u16string_view type, std::uint32_t enumType) const;
    void TellView(const Node& row, std::u16string_view view) const;
    void TellColumns(const Node& row, std::u16string_view columns, std::uint32_t mask) const;
    void TellRepeated(const Node& list, const TOrvActionInternalInfo& action) const;

    TOrvActionCatalogue& catalogue_;
    ExtensionListener* listener_;
    std::map<std::uint32_t, std::u16string> enumNames_;  // by id, of the enums that were read; for the listener
};

// Which attributes and child elements of an element are read. Unused places of the arrays are empty.
struct ExtensionReader::ElementRule {
    std::string_view element;
    std::string_view required[3];  // each as an attribute or a child element; a row that lacks one is skipped
    std::string_view attributes[6];
    std::string_view children[6];
    bool onlyAttributes = false;  // a child element does not stand in for a required attribute
};

}  // namespace OrvPLC
