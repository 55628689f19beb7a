#include "forms.h"

#include <algorithm>

#include "bytes.h"
#include "commands.h"
#include "csv.h"
#include "text.h"

namespace {

// The first line that is not blank or a comment.
std::string_view FirstLine(std::string_view head)
{
    if (head.substr(0, 3) == "\xEF\xBB\xBF") head.remove_prefix(3);
    while (!head.empty()) {
        std::string_view line = head.substr(0, head.find('\n'));
        head.remove_prefix(std::min(head.size(), line.size() + 1));
        const std::size_t first = line.find_first_not_of(" \t\r");
        if (first != std::string_view::npos && line[first] != '#') return line.substr(first);
    }
    return {};
}

bool LooksLikeJson(std::string_view head)
{
    const std::string_view line = FirstLine(head);
    return line.starts_with("{") || line.starts_with("\"action\":");
}

bool LooksLikeProperties(std::string_view head)
{
    return FirstLine(head).starts_with("<properties");
}

bool LooksLikeFlatXml(std::string_view head)
{
    return FirstLine(head).starts_with("<action");
}

bool LooksLikeHexLine(std::string_view head)
{
    return LooksLikeHex(FirstLine(head));
}

std::string Names(bool readable)
{
    std::string names;
    for (const Form& form : Forms()) {
        if (readable ? form.read != nullptr : form.write != nullptr)
            names += (names.empty() ? "" : ", ") + std::string(form.name);
    }
    return names;
}

// Null, with a report and `sound` false, for a form that does not exist or cannot be used like that.
const Form* Wanted(const std::string& name, bool readable, bool& sound)
{
    const Form* form = FindForm(name);
    sound = form && (readable ? form->read != nullptr : form->write != nullptr);
    if (sound) return form;
    const std::string what = form ? (readable ? " is only written" : " is only read") : " is no form";
    std::vector<std::string> names;
    for (const Form& other : Forms()) names.emplace_back(other.name);
    if (!readable) names.emplace_back(kCsv);
    Complain("form", "'" + Visible(name) + "'" + what + "; choose from " + Names(readable) + (readable ? "" : ", csv"),
             form ? "" : Nearest(name, names));
    return nullptr;
}

// What a reader of lines would take for the end of this one gets a backslash before it.
std::string Continued(const std::string& record)
{
    if (record.find_first_of("\r\n") == std::string::npos) return record;
    std::string line;
    for (std::size_t i = 0; i < record.size(); ++i) {
        const bool pair = record[i] == '\n' && i > 0 && record[i - 1] == '\r';
        if ((record[i] == '\r' || record[i] == '\n') && !pair) line += '\\';
        line += record[i];
    }
    return line;
}

}  // namespace

const std::vector<Form>& Forms()
{
    // The order is that of the help and of guessing.
    static const std::vector<Form> forms = {
        {"technical", "action text, which the library reads back", Layout::Lines, false, nullptr, ReadTechnical,
         WriteTechnical, nullptr},
        {"plain", "text for people", Layout::Lines, false, nullptr, nullptr, WritePlain, nullptr},
        {"binary", "the binary form in frames", Layout::Frames, true, LooksLikeFrames, ReadBinary, WriteBinary,
         BytesOfBinary},
        {"raw", "the binary form, end to end", Layout::EndToEnd, true, LooksLikeBinary, ReadBinary, WriteBinary,
         BytesOfBinary},
        {"hex", "the binary form as hexadecimal digits", Layout::Lines, true, LooksLikeHexLine, ReadHex, WriteHex,
         BytesOfHex},
        {"json", "the JSON form, without a limit", Layout::Documents, false, LooksLikeJson, ReadJson, WriteJson,
         nullptr},
        {"properties", "names and values as XML", Layout::Blocks, false, LooksLikeProperties, nullptr, WriteProperties,
         nullptr},
        {"xml", "the flat list <action ...> <property ...>", Layout::Lines, false, LooksLikeFlatXml, nullptr,
         WriteFlatXml, nullptr},
        {"hesk", "text of the sibling product", Layout::Lines, false, nullptr, ReadHesk, WriteHesk, nullptr},
    };
    return forms;
}

bool IsBinary(const Form& form)
{
    return form.layout == Layout::Frames || form.layout == Layout::EndToEnd;
}

const Form* FindForm(std::string_view name)
{
    const std::string lower = LowerCaseAscii(name);
    for (const Form& form : Forms()) {
        if (form.name == lower) return &form;
    }
    return nullptr;
}

const Form& GuessForm(std::string_view head)
{
    for (const Form& form : Forms()) {
        if (form.looksLike && form.looksLike(head)) return form;
    }
    return Forms().front();
}

const Form* SourceForm(const std::string& name, bool& sound)
{
    sound = true;
    return name.empty() ? nullptr : Wanted(name, true, sound);
}

const Form* TargetForm(const std::string& name, bool& sound)
{
    return Wanted(name, false, sound);
}

std::string Delimited(const Form& form, const std::string& record)
{
    switch (form.layout) {
    case Layout::Frames: return LittleEndian(static_cast<std::uint32_t>(record.size())) + record;
    case Layout::EndToEnd: return record;
    case Layout::Lines: return Continued(record) + "\n";
    default: return record + "\n";
    }
}
