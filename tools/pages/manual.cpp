#include "manual.h"

#include <OrvActions.h>

#include <sstream>

namespace {

// A backslash and a hyphen mean themselves; a line that begins with a point or a quote is text.
std::string Escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if ((c == '.' || c == '\'') && (result.empty() || result.back() == '\n')) result += "\\&";
        if (c == '-' || c == '\\') result += '\\';
        result += c == '\\' ? 'e' : c;
    }
    return result;
}

std::string Flags(const PageOption& option)
{
    std::string line = "\\fB" + Escaped(CLI::detail::join(option.flags, ", ")) + "\\fR";
    return option.name.empty() ? line : line + " \\fI" + Escaped(option.name) + "\\fR";
}

std::string Synopsis(const CommandPage& page)
{
    std::string text = ".SH SYNOPSIS\n\\fB" + Escaped(page.Joined(" ")) + "\\fR [\\fIoptions\\fR]";
    for (const PageOption& argument : page.arguments) {
        const std::string name = "\\fI" + argument.name + "\\fR" + (argument.repeated ? " ..." : "");
        text += argument.required ? " " + name : " [" + name + "]";
    }
    if (!page.commands.empty()) text += " \\fIcommand\\fR ...";
    return text + "\n";
}

std::string Choices(const PageOption& option)
{
    return option.choices.empty() ? "" : " (" + Escaped(CLI::detail::join(option.choices, ", ")) + ")";
}

std::string Options(const CommandPage& page)
{
    std::string text = ".SH OPTIONS\n";
    for (const PageOption& argument : page.arguments) {
        text += ".TP\n\\fI" + argument.name + "\\fR\n" + Escaped(argument.help) + "\n";
    }
    for (const PageOption& option : page.options) {
        text += ".TP\n" + Flags(option) + "\n" + Escaped(option.help) + Choices(option) + "\n";
    }
    return text;
}

std::string Commands(const CommandPage& page)
{
    std::string text = page.commands.empty() ? "" : ".SH COMMANDS\n";
    for (const CommandPage& command : page.commands) {
        text += ".TP\n\\fB" + Escaped(command.Joined("-")) + "\\fR(1)\n" + Escaped(command.help) + "\n";
    }
    return text;
}

// Running text is filled; lines that are indented, tables and command lines, stay as they are.
std::string Description(const std::string& footer)
{
    std::string text = ".SH DESCRIPTION\n";
    std::istringstream lines(footer);
    bool literal = false;
    for (std::string line; std::getline(lines, line);) {
        const bool indented = line.rfind("  ", 0) == 0;
        if (indented != literal) text += indented ? ".PP\n.nf\n" : ".fi\n";
        literal = indented;
        text += line.empty() ? ".PP\n" : Escaped(line) + "\n";
    }
    return literal ? text + ".fi\n" : text;
}

std::string SeeAlso(const CommandPage& page, const CommandPage& root)
{
    std::string text = ".SH SEE ALSO\n";
    const char* separator = "";
    Walk(root, [&](const CommandPage& other) {
        if (other.path == page.path) return;
        text += separator + ("\\fB" + Escaped(other.Joined("-"))) + "\\fR(1)";
        separator = ",\n";
    });
    return text + "\n";
}

}  // namespace

std::string ManualPage(const CommandPage& page, const CommandPage& root)
{
    const std::string name = Escaped(page.Joined("-"));
    return ".TH \"" + page.Joined("-") + "\" 1 \"\" \"OrvActions " ORV_ACTIONS_VERSION_TEXT "\" \"OrvActions\"\n" +
           ".SH NAME\n" + name + " \\- " + Escaped(page.help) + "\n" + Synopsis(page) + Description(page.footer) +
           Commands(page) + Options(page) + SeeAlso(page, root);
}
