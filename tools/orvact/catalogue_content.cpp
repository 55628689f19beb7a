// Like lint this reads extension files by the library's own rules, so it uses more than the public header.
#include "catalogue_content.h"

#include <algorithm>

#include "catalogue/extension_reader.h"
#include "extension_file.h"
#include "report.h"
#include "text.h"
#include "ulmo/string_conversion.h"

namespace {

using namespace OrvPLC;

template <class View>
View WithTexts(const TOrvBaseNameInfo& entry)
{
    View view;
    view.name = Ulmo::Utf8FromWide(entry.NameW.view());
    view.plainName = Ulmo::Utf8FromWide(entry.Plain().W.view());
    view.description = Ulmo::Utf8FromWide(entry.Description.W.view());
    return view;
}

ParameterView ViewOf(const TOrvParameterInternalInfo& entry)
{
    ParameterView view = WithTexts<ParameterView>(entry);
    view.type = entry.Type;
    view.view = entry.View;
    view.priority = entry.Priority;
    view.enumType = entry.EnumType;
    view.columns = entry.DbField;
    return view;
}

ActionView ViewOf(const TOrvActionInternalInfo& entry)
{
    ActionView view = WithTexts<ActionView>(entry);
    view.code = entry.Code;
    view.priority = entry.Priority;
    if (entry.Class) {
        view.className = Ulmo::Utf8FromWide(entry.Class->NameW.view());
        view.classCode = entry.Class->Code;
    }
    for (const TOrvParameterInternalInfo& parameter : entry.Parameters) view.parameters.push_back(ViewOf(parameter));
    return view;
}

// The catalogue finds an enum by its name, and not the name of an enum.
std::map<std::uint32_t, std::string> EnumNames(const std::string& document, const TOrvActionCatalogue& catalogue)
{
    std::map<std::uint32_t, std::string> names;
    Ulmo::XMLTree tree;
    tree.Parse(document.c_str(), ExtensionReader::kDeepestElement);
    const Ulmo::XMLNode* root = tree.GetRoot().get();
    const Ulmo::XMLNode* section = root ? root->FindChild("enums") : nullptr;
    for (const Ulmo::XMLNode* row = section ? section->FirstChild() : nullptr; row; row = row->NextSibling()) {
        const auto* attribute = row->FindAttribute("name");
        const Ulmo::XMLNode* child = row->FindChild("name");
        const std::string name = attribute ? attribute->value : child ? child->Text() : std::string();
        if (const std::uint32_t id = catalogue.FindEnumTypeId(Ulmo::WideFromUtf8(name))) names.emplace(id, name);
    }
    return names;
}

// By name in any case of ASCII letters.
bool Has(const auto& views, const std::string& name)
{
    return std::ranges::any_of(views,
                               [&](const auto& view) { return LowerCaseAscii(view.name) == LowerCaseAscii(name); });
}

}  // namespace

CatalogueContent CatalogueContent::Present()
{
    return {Classes(), Actions(), Enums(), GeneralParameters()};
}

bool CatalogueContent::AddExtensions(const std::vector<std::string>& files)
{
    if (files.empty()) return true;
    // A catalogue of its own: that of the process must not change while it is shown.
    TOrvActionCatalogue catalogue(TOrvActionCatalogue::Content::BuiltIn);
    ExtensionReader reader(catalogue);
    std::map<std::uint32_t, std::string> enumNames;
    for (const std::string& file : files) {
        std::string document;
        if (!ReadExtensionFile(file, document)) return false;
        try {
            reader.Read(document.c_str());
            enumNames.merge(EnumNames(document, catalogue));
        } catch (const Ulmo::XMLNodeParsingException&) {
            Complain("extension", "cannot be read; orvact lint tells why", {}, file);
            return false;
        }
    }
    for (const auto& [key, found] : catalogue.ClassesByName()) {
        const TOrvActionClassInternalInfo& entry = *found;
        ClassView view = WithTexts<ClassView>(entry);
        view.code = entry.Code;
        view.priority = entry.Priority;
        // What lies beside the program as well is in the catalogue of the process already.
        if (IsExtension(view) && !Has(classes, view.name)) classes.push_back(view);
    }
    for (const auto& [key, found] : catalogue.ActionsByName()) {
        const TOrvActionInternalInfo& entry = *found;
        const ActionView view = ViewOf(entry);
        if (IsExtension(view) && !Has(actions, view.name)) actions.push_back(view);
    }
    for (const auto& [key, found] : catalogue.EnumValues()) {
        const TOrvEnumInternalInfo& entry = *found;
        const auto named = enumNames.find(entry.EnumId);
        const EnumView owner{named == enumNames.end() ? EnumName(entry.EnumId) : named->second, entry.EnumId, {}};
        if (!IsExtension(owner)) continue;
        const auto same = [&](const EnumView& view) { return view.id == entry.EnumId; };
        auto place = std::ranges::find_if(enums, same);
        if (place == enums.end()) place = enums.insert(place, owner);
        EnumValueView value = WithTexts<EnumValueView>(entry);
        value.value = entry.Value;
        if (!Has(place->values, value.name)) place->values.push_back(value);
    }
    std::ranges::sort(actions, {}, [](const ActionView& view) { return LowerCaseAscii(view.name); });
    return true;
}

const EnumView* CatalogueContent::FindEnum(std::uint32_t id) const
{
    const auto found = std::ranges::find_if(enums, [&](const EnumView& view) { return view.id == id; });
    return found == enums.end() ? nullptr : &*found;
}
