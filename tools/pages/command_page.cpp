#include "command_page.h"

#include "csv.h"
#include "forms.h"

#include <algorithm>

namespace {

// The names of forms that can be read, or written.
std::vector<std::string> FormNames(bool read)
{
    std::vector<std::string> names;
    for (const Form& form : Forms()) {
        if (read ? form.read != nullptr : form.write != nullptr) names.emplace_back(form.name);
    }
    if (!read) names.emplace_back(kCsv);
    return names;
}

// The members of a set stand in the type's name: "TEXT:{classes,actions,enums}".
std::vector<std::string> Members(const std::string& typeName)
{
    std::vector<std::string> members;
    const std::size_t open = typeName.find('{');
    const std::size_t close = typeName.find('}');
    if (open == std::string::npos || close == std::string::npos) return members;
    return CLI::detail::split(typeName.substr(open + 1, close - open - 1), ',');
}

// By the words that the help shows for values.
bool IsFile(const std::string& name)
{
    for (const char* file : {"FILE", "TEXT", "PATTERNS", "PATTERN", "DB"}) {
        if (name == file) return true;
    }
    return false;
}

// Reads the tool's own table through the parser's interface, so help, pages and completions cannot differ.
PageOption OptionOf(const CLI::Option& option)
{
    PageOption page;
    for (const std::string& name : option.get_snames()) page.flags.push_back("-" + name);
    for (const std::string& name : option.get_lnames()) page.flags.push_back("--" + name);
    const bool takesValue = option.get_items_expected_max() > 0;
    if (option.get_positional()) {
        page.name = option.get_name(true);
    } else if (takesValue) {
        // A check stands after a colon: "N:POSITIVE".
        page.name = option.get_type_name();
        page.name.resize(std::min(page.name.size(), page.name.find(':')));
    }
    page.help = option.get_description();
    page.choices = Members(option.get_type_name());
    if (page.name == "FORM") page.choices = FormNames(option.check_lname("from"));
    page.file = IsFile(page.name);
    page.required = option.get_required();
    page.repeated =
        option.get_expected_max() > 1 || option.get_multi_option_policy() == CLI::MultiOptionPolicy::TakeAll;
    return page;
}

CommandPage PageBelow(const CLI::App& app, std::vector<std::string> path)
{
    CommandPage page;
    path.push_back(app.get_name());
    page.path = path;
    page.help = app.get_description();
    page.footer = app.get_footer();
    for (const CLI::Option* option : app.get_options()) {
        (option->get_positional() ? page.arguments : page.options).push_back(OptionOf(*option));
    }
    for (const CLI::App* command : app.get_subcommands({})) page.commands.push_back(PageBelow(*command, path));
    return page;
}

}  // namespace

std::string CommandPage::Joined(const char* separator) const
{
    return CLI::detail::join(path, separator);
}

CommandPage PageOf(const CLI::App& app)
{
    return PageBelow(app, {});
}
