#include "catalogue_pages.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <set>

#include "action_code.h"
#include "catalogue_content.h"
#include "commands.h"
#include "console.h"
#include "event_record.h"
#include "forms.h"
#include "report.h"
#include "sibling_forms.h"
#include "text.h"
#include "web.h"

namespace {

using Json = nlohmann::ordered_json;

// A name as a part of an address and of a file name, on every system.
std::string Stem(const std::string& name)
{
    std::string stem;
    // Any other byte becomes its number. A long name is cut, since file systems have limits.
    for (const char unit : name.substr(0, 80)) {
        const bool plain = (unit >= '0' && unit <= '9') || (unit >= 'a' && unit <= 'z') || (unit >= 'A' && unit <= 'Z');
        stem += plain || unit == '_' ? std::string(1, unit) : "-" + std::to_string(static_cast<unsigned char>(unit));
    }
    return stem;
}

std::string Link(const std::string& address, const std::string& text)
{
    return "<a href=\"" + address + "\">" + Html(text) + "</a>";
}

std::string ActionPage(const std::string& name)
{
    return "actions/" + Stem(name) + ".html";
}

std::string ClassPage(const std::string& name)
{
    return "classes/" + Stem(name) + ".html";
}

std::string EnumPage(const EnumView& view)
{
    return "enums/" + Stem(view.name) + ".html";
}

std::string Heading(const std::string& name, const std::string& what, bool extension)
{
    return "<p class=\"quiet what\">" + Html(what) + (extension ? " <b class=\"mark\">extension</b>" : "") +
           "</p>\n<h1>" + Html(name) + "</h1>\n";
}

// The description, if it says more than the plain name.
template <class View>
std::string SaidBeyond(const View& view)
{
    const std::string plain = LowerCaseAscii(view.plainName);
    const std::string said = LowerCaseAscii(view.description);
    return said == plain || said == plain + "." ? std::string() : Html(view.description);
}

template <class View>
std::string Texts(const View& view)
{
    std::string html;
    if (!view.plainName.empty() && view.plainName != view.name) html += "<p>" + Html(view.plainName) + "</p>\n";
    const std::string more = SaidBeyond(view);
    return more.empty() ? html : html + "<p class=\"quiet\">" + more + "</p>\n";
}

std::string Facts(const std::vector<std::pair<std::string, std::string>>& facts)
{
    std::string html = "<dl class=\"facts\">";
    for (const auto& [name, value] : facts) html += "<div><dt>" + name + "</dt><dd>" + value + "</dd></div>";
    return html + "</dl>\n";
}

// Columns that are empty in all rows are left out.
std::string Table(const std::vector<std::string>& heading, const std::vector<std::vector<std::string>>& rows)
{
    const auto filled = [&](std::size_t column) {
        return std::ranges::any_of(rows, [&](const auto& row) { return !row[column].empty(); });
    };
    // A wide table becomes a list of cards on a phone, where each cell needs its heading.
    const bool cards = heading.size() > 4;
    std::string html = std::string("<div class=\"wide\"><table") + (cards ? " class=\"cards\"" : "") + "><thead><tr>";
    for (std::size_t i = 0; i < heading.size(); ++i) {
        if (filled(i)) html += "<th scope=\"col\">" + heading[i] + "</th>";
    }
    html += "</tr></thead><tbody>\n";
    for (const auto& row : rows) {
        html += "<tr>";
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (filled(i)) html += (cards ? "<td data-label=\"" + heading[i] + "\">" : "<td>") + row[i] + "</td>";
        }
        html += "</tr>\n";
    }
    return html + "</tbody></table></div>\n";
}

std::string Sample(const std::string& title, const std::string& text)
{
    return "<h3>" + title + "</h3>\n<pre tabindex=\"0\">" + Html(text) + "</pre>\n";
}

std::string List(const std::vector<std::string>& items)
{
    if (items.empty()) return "<p class=\"quiet\">None.</p>\n";
    std::string html = "<ul class=\"grid\">";
    for (const std::string& item : items) html += "<li>" + item + "</li>";
    return html + "</ul>\n";
}

std::string Joined(const std::vector<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
    return text;
}

// Writes the pages and what the search looks through.
class Site {
public:
    Site(const CatalogueContent& content, std::filesystem::path folder) : content_(content), folder_(std::move(folder))
    {
        for (const ActionView& action : content_.actions) {
            for (const ParameterView& parameter : action.parameters) {
                users_[parameter.name].push_back({&action, &parameter});
            }
        }
    }

    bool Write();

private:
    struct Use {
        const ActionView* action;
        const ParameterView* parameter;
    };

    void File(const std::string& name, const std::string& text);
    void Page(const std::string& name, const std::string& title, const std::string& body);
    void Index(const char* kind, const std::string& name, const std::string& number, const std::string& plain,
               const std::string& address, const std::string& also, bool extension);

    std::string TypeLink(const ParameterView& parameter) const;
    std::string ParameterTable(const std::vector<ParameterView>& parameters) const;
    std::string Examples(const ActionView& view) const;
    std::vector<std::string> Uses(const std::function<bool(const ParameterView&)>& fits) const;

    void WriteAction(const ActionView& view);
    void WriteClass(const ClassView& view);
    void WriteEnum(const EnumView& view);
    void WriteParameters();
    void WriteGeneral();
    void WriteTypes();
    void WriteColumns();
    void WriteFront();

    const CatalogueContent& content_;
    std::filesystem::path folder_;
    std::map<std::string, std::vector<Use>> users_;  // of a parameter's name
    Json index_ = Json::array();
    bool sound_ = true;
};

// The first file that cannot be written is reported, and no other is tried after it.
void Site::File(const std::string& name, const std::string& text)
{
    if (!sound_) return;
    std::error_code error;
    const std::filesystem::path path = folder_ / name;
    std::filesystem::create_directories(path.parent_path(), error);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (file) return;
    sound_ = false;
    const std::u8string shown = path.u8string();
    Complain("output", "cannot be written", {}, std::string(shown.begin(), shown.end()));
}

// Addresses in a body are those of the front page; a page in a folder goes one up.
void Site::Page(const std::string& name, const std::string& title, const std::string& body)
{
    const std::string root = name.find('/') == std::string::npos ? "" : "../";
    File(name, Filled(Web::kCatalogueHtml,
                      {{"title", Html(title)}, {"root", root}, {"body", Replaced(body, "href=\"", "href=\"" + root)}}));
}

void Site::Index(const char* kind, const std::string& name, const std::string& number, const std::string& plain,
                 const std::string& address, const std::string& also, bool extension)
{
    index_.push_back({kind, name, number, plain == name ? "" : plain, address, also, extension ? 1 : 0});
}

// An enum has a page of its own, another kind its place on the page of types.
std::string Site::TypeLink(const ParameterView& parameter) const
{
    const EnumView* owner = parameter.type == ORV_KIND_Numeric32Bit && parameter.enumType != 0
                                ? content_.FindEnum(parameter.enumType)
                                : nullptr;
    if (owner) return Link(EnumPage(*owner), owner->name);
    const std::string name = KindName(parameter.type);
    return Link("types.html#" + Stem(name), name);
}

// One link a column, in the order of the record.
std::string ColumnLinks(std::uint32_t columns)
{
    std::string html;
    for (const EventColumn& column : kEventColumns) {
        if (!(columns & column.bit)) continue;
        const std::string name = ColumnNames(column.bit);
        html += (html.empty() ? "" : " ") + Link("columns.html#" + name, name);
    }
    return html;
}

std::string Site::ParameterTable(const std::vector<ParameterView>& parameters) const
{
    if (parameters.empty()) return "<p class=\"quiet\">No parameters.</p>\n";
    std::vector<std::vector<std::string>> rows;
    for (const ParameterView& parameter : parameters) {
        rows.push_back({users_.contains(parameter.name)
                            ? Link("parameters.html#" + Stem(parameter.name), parameter.name)
                            : Html(parameter.name),
                        TypeLink(parameter), parameter.view ? Html(ViewName(parameter.view)) : "",
                        std::to_string(parameter.priority), ColumnLinks(parameter.columns), Html(parameter.plainName),
                        SaidBeyond(parameter)});
    }
    return Table({"Name", "Type", "View", "Priority", "Columns", "Plain name", "Description"}, rows);
}

// The sample in every form that has a text, and how a program makes it.
std::string Site::Examples(const ActionView& view) const
{
    const Action example = ExampleAction(view);
    // The library does not know what is only in a file: now it would write another action than with the file loaded.
    const bool known = example.Code() == view.code;
    std::string html = "<h2>Example</h2>\n";
    if (!known) {
        html += "<p class=\"quiet\">The other forms stand here when the file lies beside orvact.</p>\n";
    }
    for (const Form& form : Forms()) {
        if (!form.write || IsBinary(form) || (!known && std::string(form.name) != "technical")) continue;
        const Encoded encoded = form.write(example);
        if (encoded.problem.empty()) html += Sample(Html(form.name) + ": " + Html(form.help), encoded.record);
    }
    return html +
           "<h2>In a program</h2>\n<p class=\"quiet\">On Windows wide texts are written "
           "<code>L&quot;...&quot;</code> " +
           "in C.</p>\n" + Sample("C", CodeInC(view, example)) + Sample("C++", CodeInCpp(view, example));
}

void Site::WriteAction(const ActionView& view)
{
    const bool extension = IsExtension(view);
    std::string body =
        Heading(view.name, "Action", extension) + Texts(view) +
        Facts({{"Code", std::to_string(view.code)},
               {"Class", view.className.empty() ? "none" : Link(ClassPage(view.className), view.className)},
               {"Priority", std::to_string(view.priority)}});
    body += "<h2>Parameters</h2>\n" + ParameterTable(view.parameters) +
            "<p class=\"quiet\">Besides these it may carry the " + Link("general.html", "general parameters") +
            ".</p>\n";
    const std::string sibling = ActionFromSibling(view.name);
    if (!sibling.empty()) {
        body += "<p class=\"quiet\">Text of the sibling product under this name is read" +
                (sibling == view.name ? std::string() : " as " + Link(ActionPage(sibling), sibling)) + ".</p>\n";
    }
    Page(ActionPage(view.name), view.name, body + Examples(view));
    std::vector<std::string> names;
    for (const ParameterView& parameter : view.parameters) names.push_back(parameter.name);
    Index("action", view.name, std::to_string(view.code), view.plainName, ActionPage(view.name),
          view.className + " " + Joined(names), extension);
}

void Site::WriteClass(const ClassView& view)
{
    std::vector<std::vector<std::string>> rows;
    for (const ActionView& action : content_.actions) {
        if (action.classCode != view.code) continue;
        rows.push_back(
            {Link(ActionPage(action.name), action.name), std::to_string(action.code), Html(action.plainName)});
    }
    Page(ClassPage(view.name), view.name,
         Heading(view.name, "Class", IsExtension(view)) + Texts(view) +
             Facts({{"Code", std::to_string(view.code)},
                    {"Priority", std::to_string(view.priority)},
                    {"Actions", std::to_string(rows.size())}}) +
             "<h2>Actions</h2>\n" + Table({"Name", "Code", "Plain name"}, rows));
    Index("class", view.name, std::to_string(view.code), view.plainName, ClassPage(view.name), "", IsExtension(view));
}

// The actions with such a parameter, each with the names of those that fit.
std::vector<std::string> Site::Uses(const std::function<bool(const ParameterView&)>& fits) const
{
    std::vector<std::string> uses;
    for (const ActionView& action : content_.actions) {
        std::vector<std::string> names;
        for (const ParameterView& parameter : action.parameters) {
            if (fits(parameter)) names.push_back(parameter.name);
        }
        if (!names.empty()) {
            uses.push_back(Link(ActionPage(action.name), action.name) + " <span class=\"quiet\">" +
                           Html(Joined(names)) + "</span>");
        }
    }
    return uses;
}

void Site::WriteEnum(const EnumView& view)
{
    std::vector<std::vector<std::string>> rows;
    std::vector<std::string> names;
    for (const EnumValueView& value : view.values) {
        rows.push_back(
            {std::to_string(static_cast<std::int32_t>(value.value)), Html(value.name), Html(value.plainName)});
        names.push_back(value.name + " " + value.plainName);
    }
    const auto fits = [&](const ParameterView& parameter) {
        return view.id == 1 ? parameter.type == ORV_KIND_Boolean : parameter.enumType == view.id;
    };
    Page(EnumPage(view), view.name,
         Heading(view.name, "Enum", IsExtension(view)) + Facts({{"Id", std::to_string(view.id)}}) +
             "<h2>Values</h2>\n" + Table({"Value", "Name", "Plain name"}, rows) + "<h2>Used by</h2>\n" +
             List(Uses(fits)));
    Index("enum", view.name, std::to_string(view.id), "", EnumPage(view), Joined(names), IsExtension(view));
}

// By name: the same name in several actions is one heading.
void Site::WriteParameters()
{
    std::string body = Heading("Parameters", "By name", false) +
                       "<p>Every name that a declared parameter has, and the actions that declare it.</p>\n";
    for (const auto& [name, uses] : users_) {
        body += "<h2 id=\"" + Stem(name) + "\">" + Html(name) + "</h2>\n";
        std::vector<std::string> items;
        for (const Use& use : uses) {
            items.push_back(Link(ActionPage(use.action->name), use.action->name) + " <span class=\"quiet\">" +
                            TypeLink(*use.parameter) + "</span>");
        }
        body += List(items);
        std::set<std::string> plain;
        for (const Use& use : uses) plain.insert(use.parameter->plainName);
        Index("parameter", name, std::to_string(uses.size()) + (uses.size() == 1 ? " action" : " actions"), "",
              "parameters.html#" + Stem(name), Joined({plain.begin(), plain.end()}), false);
    }
    Page("parameters.html", "Parameters", body);
}

void Site::WriteGeneral()
{
    Page("general.html", "General parameters",
         Heading("General parameters", "On any action", false) +
             "<p>Any action may carry these besides its own parameters.</p>\n" + ParameterTable(content_.general));
    for (const ParameterView& parameter : content_.general) {
        Index("general parameter", parameter.name, "", parameter.plainName, "general.html", "", false);
    }
}

void Site::WriteTypes()
{
    std::string body = Heading("Types", "Kinds of values", false);
#define ORV_KIND_ROW(name, number) {number, #name},
    const std::vector<std::pair<std::uint32_t, std::string>> kinds = {ORV_FOR_EACH_KIND(ORV_KIND_ROW)};
#undef ORV_KIND_ROW
    for (const auto& [kind, name] : kinds) {
        const auto fits = [type = kind](const ParameterView& parameter) {
            return parameter.type == type && (type != ORV_KIND_Numeric32Bit || parameter.enumType == 0);
        };
        const std::vector<std::string> uses = Uses(fits);
        body += "<h2 id=\"" + name + "\">" + name + "</h2>\n<p>Kind " + std::to_string(kind) + ", written as <code>" +
                Html(WrittenAs(kind)) + "</code></p>\n<details><summary>Used by " + std::to_string(uses.size()) +
                " actions</summary>\n" + List(uses) + "</details>\n";
        Index("type", name, std::to_string(kind), "", "types.html#" + name, "", false);
    }
    Page("types.html", "Types", body);
}

void Site::WriteColumns()
{
    std::string body = Heading("Columns", "Of the event record", false) +
                       "<p>What each column of the event database holds, and which parameters fill it.</p>\n";
    for (const EventColumn& column : kEventColumns) {
        const std::string name = ColumnNames(column.bit);
        const auto fits = [&](const ParameterView& parameter) { return (parameter.columns & column.bit) != 0; };
        std::vector<std::string> uses = Uses(fits);
        const std::size_t count = uses.size();
        for (const ParameterView& parameter : content_.general) {
            if (fits(parameter)) {
                uses.insert(uses.begin(), Link("general.html", "any action") + " <span class=\"quiet\">" +
                                              Html(parameter.name) + "</span>");
            }
        }
        body += "<h2 id=\"" + name + "\">" + name + "</h2>\n<p>In the database <code>" + column.name +
                "</code></p>\n<details><summary>Filled by " + std::to_string(count) + " actions</summary>\n" +
                List(uses) + "</details>\n";
        Index("column", name, "", column.name, "columns.html#" + name, column.name, false);
    }
    Page("columns.html", "Columns", body);
}

// Last, since it has the counts, and the index that the other pages have filled.
void Site::WriteFront()
{
    std::vector<std::vector<std::string>> classes;
    for (const ClassView& view : content_.classes) {
        const auto count = std::ranges::count(content_.actions, view.code, &ActionView::classCode);
        classes.push_back(
            {Link(ClassPage(view.name), view.name) + (IsExtension(view) ? " <b class=\"mark\">extension</b>" : ""),
             std::to_string(view.code), std::to_string(count), Html(view.plainName)});
    }
    std::vector<std::string> enums;
    for (const EnumView& view : content_.enums) enums.push_back(Link(EnumPage(view), view.name));
    Page("index.html", "Catalogue",
         Filled(Web::kCatalogueFrontHtml, {{"actions", std::to_string(content_.actions.size())},
                                           {"classes", std::to_string(content_.classes.size())},
                                           {"enums", std::to_string(content_.enums.size())},
                                           {"classTable", Table({"Class", "Code", "Actions", "Plain name"}, classes)},
                                           {"enumList", List(enums)}}));
    File("style.css", std::string(Web::kPageCss) + std::string(Web::kCatalogueCss));
    File("catalogue.js", std::string(Web::kCatalogueJs));
    File("index.js", "const catalogueIndex = " + index_.dump(-1, ' ', false, Json::error_handler_t::replace) + ";\n");
}

bool Site::Write()
{
    for (const ActionView& view : content_.actions) WriteAction(view);
    for (const ClassView& view : content_.classes) WriteClass(view);
    for (const EnumView& view : content_.enums) WriteEnum(view);
    WriteParameters();
    WriteGeneral();
    WriteTypes();
    WriteColumns();
    WriteFront();
    return sound_;
}

}  // namespace

int WriteCatalogue(const CatalogueOptions& options)
{
    CatalogueContent content = CatalogueContent::Present();
    if (!content.AddExtensions(options.extensions)) return kUsage;
    const std::u8string folder(options.folder.begin(), options.folder.end());
    if (!Site(content, std::filesystem::path(folder)).Write()) return kUsage;
    Print(std::to_string(content.actions.size()) + " actions; open " + options.folder + "/index.html in a browser\n");
    return kDone;
}
