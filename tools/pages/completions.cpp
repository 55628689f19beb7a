#include "completions.h"

namespace {

std::vector<std::string> CommandNames(const CommandPage& page)
{
    std::vector<std::string> names;
    for (const CommandPage& command : page.commands) names.push_back(command.path.back());
    return names;
}

std::vector<std::string> AllFlags(const CommandPage& page)
{
    std::vector<std::string> flags;
    for (const PageOption& option : page.options) flags.insert(flags.end(), option.flags.begin(), option.flags.end());
    return flags;
}

// In single quotes, for every shell.
std::string Quoted(const std::string& text)
{
    std::string result = "'";
    for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::string Words(const std::vector<std::string>& words)
{
    return CLI::detail::join(words, " ");
}

// The words and the pattern of files that stand where a value is expected.
std::string BashValue(const PageOption& option)
{
    if (option.file) return "compopt -o default; return";
    return "COMPREPLY=($(compgen -W " + Quoted(Words(option.choices)) + " -- \"$word\")); return";
}

// What follows one command: values of its options, commands below it, its flags, files.
std::string BashCase(const CommandPage& page)
{
    std::string text = "    " + Quoted(page.Joined(" ")) + ")\n        case $before in\n";
    for (const PageOption& option : page.options) {
        if (option.name.empty()) continue;
        text += "        " + CLI::detail::join(option.flags, "|") + ") " + BashValue(option) + " ;;\n";
    }
    text += "        esac\n        words=" + Quoted(Words(CommandNames(page)));
    for (const PageOption& argument : page.arguments) {
        if (!argument.choices.empty()) text += "\" \"" + Quoted(Words(argument.choices));
    }
    text += "\n        flags=" + Quoted(Words(AllFlags(page))) + "\n";
    for (const PageOption& argument : page.arguments) {
        if (!argument.file) continue;
        text += "        files=yes\n";
        break;
    }
    return text + "        ;;\n";
}

// What zsh wants after the colon of a value: what it is, and how it is completed.
std::string ZshValue(const PageOption& option)
{
    if (!option.choices.empty()) return ":" + option.name + ":(" + Words(option.choices) + ")";
    return ":" + option.name + ":" + (option.file ? "_files" : "( )");
}

// Brackets and colons are zsh's own in an option's text.
std::string ZshText(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        if (c == '[' || c == ']' || c == ':') result += '\\';
        result += c;
    }
    return result;
}

std::string FunctionName(const CommandPage& page)
{
    return "_" + page.Joined("_");
}

// A function a command; that of a command with others below it calls theirs.
std::string ZshFunction(const CommandPage& page)
{
    std::string text = FunctionName(page) + "()\n{\n    local state line\n    _arguments -C -s";
    for (const PageOption& option : page.options) {
        for (const std::string& flag : option.flags) {
            const std::string value = option.name.empty() ? "" : ZshValue(option);
            text += " \\\n        " +
                    Quoted((option.repeated ? "*" : "") + flag + "[" + ZshText(option.help) + "]" + value);
        }
    }
    for (const PageOption& argument : page.arguments) {
        text += " \\\n        " + Quoted((argument.repeated ? "*" : argument.required ? "" : ":") + ZshValue(argument));
    }
    if (page.commands.empty()) return text + "\n}\n\n";
    text += " \\\n        '1: :->command' '*:: :->rest'\n    case $state in\n    command)\n        local -a commands\n";
    text += "        commands=(\n";
    for (const CommandPage& command : page.commands) {
        text += "            " + Quoted(command.path.back() + ":" + ZshText(command.help)) + "\n";
    }
    text += "        )\n        _describe command commands\n        ;;\n    rest)\n        case $line[1] in\n";
    for (const CommandPage& command : page.commands) {
        text += "        " + command.path.back() + ") " + FunctionName(command) + " ;;\n";
    }
    return text + "        esac\n        ;;\n    esac\n}\n\n";
}

// Holds only while the words so far are those of this command.
std::string FishLine(const CommandPage& page, const std::string& rest)
{
    return "complete -c orvact -n " + Quoted("__orvact_at " + page.Joined(" ")) + " " + rest + "\n";
}

std::string FishOption(const PageOption& option)
{
    std::string text;
    for (const std::string& flag : option.flags) {
        text += flag.rfind("--", 0) == 0 ? "-l " + flag.substr(2) + " " : "-s " + flag.substr(1) + " ";
    }
    if (!option.name.empty()) text += option.file ? "-r -F " : "-x ";
    if (!option.choices.empty()) text += "-a " + Quoted(Words(option.choices)) + " ";
    return text + "-d " + Quoted(option.help);
}

}  // namespace

std::string BashCompletion(const CommandPage& root)
{
    std::string text =
        "# bash completion for orvact\n"
        "_orvact()\n"
        "{\n"
        "    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=orvact index\n"
        "    local words= flags= files=\n"
        "    for ((index = 1; index < COMP_CWORD; ++index)); do\n"
        "        case \"$command ${COMP_WORDS[index]}\" in\n";
    Walk(root, [&](const CommandPage& page) {
        // The command itself is where the walk over the words begins.
        if (page.path.size() == 1) return;
        text += "        " + Quoted(page.Joined(" ")) + ") command=" + Quoted(page.Joined(" ")) + " ;;\n";
    });
    text += "        esac\n    done\n    case $command in\n";
    Walk(root, [&](const CommandPage& page) { text += BashCase(page); });
    return text +
           "    esac\n"
           "    if [[ $word == -* ]]; then words=$flags; fi\n"
           "    COMPREPLY=($(compgen -W \"$words\" -- \"$word\"))\n"
           "    if [[ $files && $word != -* ]]; then compopt -o default; fi\n"
           "}\n"
           "complete -F _orvact orvact\n";
}

std::string ZshCompletion(const CommandPage& root)
{
    std::string text = "#compdef orvact\n\n";
    Walk(root, [&](const CommandPage& page) { text += ZshFunction(page); });
    return text + "_orvact \"$@\"\n";
}

std::string FishCompletion(const CommandPage& root)
{
    std::string text =
        "# fish completion for orvact\n"
        "function __orvact_at\n"
        "    set -l command orvact\n"
        "    for word in (commandline -opc)[2..-1]\n"
        "        switch \"$command $word\"\n"
        "            case";
    Walk(root, [&](const CommandPage& page) { text += " " + Quoted(page.Joined(" ")); });
    text +=
        "\n"
        "                set command \"$command $word\"\n"
        "        end\n"
        "    end\n"
        "    test \"$command\" = \"$argv\"\n"
        "end\n";
    Walk(root, [&](const CommandPage& page) {
        for (const CommandPage& command : page.commands) {
            text += FishLine(page, "-f -a " + command.path.back() + " -d " + Quoted(command.help));
        }
        for (const PageOption& option : page.options) text += FishLine(page, FishOption(option));
        bool file = false;
        for (const PageOption& argument : page.arguments) {
            file = file || argument.file;
            if (!argument.choices.empty()) text += FishLine(page, "-f -a " + Quoted(Words(argument.choices)));
        }
        if (!file) text += FishLine(page, "-f");
    });
    return text;
}
