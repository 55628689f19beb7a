// Reads extension files as the library does while it loads: with the same reader, into a catalogue of its own with the
// built-in content. This is the one command that uses more than the public header, since no exported function
// reads a catalogue file.
#include "lint.h"

#include <algorithm>
#include <cstring>

#include "catalogue/extension_reader.h"
#include "console.h"
#include "extension_file.h"
#include "report.h"
#include "settings.h"
#include "text.h"
#include "ulmo/xml_text.h"

namespace {

using OrvPLC::ExtensionListener;

struct Remark {
    ExtensionListener::Severity severity;
    std::size_t position;
    std::string text;
};

class Remarks : public ExtensionListener {
public:
    void OnRemark(Severity severity, std::size_t position, const std::string& text) override
    {
        remarks_.push_back({severity, position, text});
    }
    // In the order of their places.
    void PrintFor(const std::string& file, std::string_view document);

    std::size_t errors = 0;
    std::size_t warnings = 0;

private:
    std::vector<Remark> remarks_;
};

// From one place to the next, so that many remarks do not each count the lines from the start.
void Remarks::PrintFor(const std::string& file, std::string_view document)
{
    std::stable_sort(remarks_.begin(), remarks_.end(),
                     [](const Remark& a, const Remark& b) { return a.position < b.position; });
    constexpr std::size_t kLongest = 400;  // a remark may quote a text of any length
    std::size_t at = 0;
    Ulmo::TextPlace place;
    for (const Remark& remark : remarks_) {
        // Relative to the last place, which is where `at` stands.
        place = Ulmo::PlaceOf(document.substr(at), remark.position - at, place);
        at = remark.position;
        const bool error = remark.severity == ExtensionListener::Severity::Error;
        ++(error ? errors : warnings);
        const std::string text = Shortened(Visible(remark.text), kLongest);
        if (settings.jsonReport) {
            Print(JsonReport({file, place.line}, error ? "error" : "warning",
                             {"extension", text, {}, 0, place.column, {}}));
            continue;
        }
        Print(file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) +
              (error ? ": error: " : ": warning: ") + text + "\n");
    }
    remarks_.clear();
}

// The two mistakes of editors that make the first byte no "<".
std::string Advice(std::string_view document)
{
    if (document.starts_with("\xEF\xBB\xBF")) return " (the file begins with a byte order mark: save it without)";
    if (document.starts_with("\xFF\xFE") || document.starts_with("\xFE\xFF")) return " (save the file as UTF-8)";
    return {};
}

void TellFault(const Ulmo::XMLNodeParsingException& fault, std::string_view document, Remarks& remarks)
{
    const std::string message = Ulmo::Utf8FromWide(fault.WideMessage());
    remarks.OnRemark(ExtensionListener::Severity::Error, fault.ErrorCode(),
                     message.substr(0, message.find('\n')) + Advice(document) + ": nothing of the file is loaded");
}

// The name as the library looks for it.
bool IsLookedFor(const std::string& path)
{
    const std::string name = LowerCaseAscii(path.substr(path.find_last_of("/\\") + 1));
    return name.size() >= 7 && name.starts_with("plc") && name.ends_with(".xml");
}

// What was found before a fault that ends the reading is reported as well.
void Check(const std::string& path, const std::string& document, OrvPLC::ExtensionReader& reader, Remarks& remarks)
{
    using Severity = ExtensionListener::Severity;
    if (path != "-" && !IsLookedFor(path)) {
        remarks.OnRemark(Severity::Warning, 0, "a file of this name is not loaded: only plc*.xml is looked for");
    }
    try {
        reader.Read(document.c_str());
    } catch (const Ulmo::XMLNodeParsingException& fault) {
        TellFault(fault, document, remarks);
    }
    const std::size_t end = std::strlen(document.c_str());
    if (end != document.size()) {
        remarks.OnRemark(Severity::Error, end, "a zero byte ends the file for the reader: what follows is lost");
    }
    remarks.PrintFor(path == "-" ? "stdin" : path, document);
}

}  // namespace

void AddLint(CLI::App& app, LintOptions& options)
{
    CLI::App* command = app.add_subcommand("lint", "Checks extension files (plc*.xml) before they are deployed");
    command->add_option("FILE", options.files,
                        "An extension file, - for standard input; several are read in the order given")
        ->type_name("")
        ->required();
    command->footer(
        "Each line tells a place, what is wrong there and what the library will do with it. An error is\n"
        "content that will be missing, a warning content that reads otherwise than it looks. The files are\n"
        "read into the built-in catalogue one after the other, so put those first that others refer to;\n"
        "a host reads them in the order of its folder.\n\n"
        "Exit codes: 0 nothing to say, 1 something to say, 2 wrong usage or a file that cannot be read.");
}

int Lint(const LintOptions& options)
{
    constexpr int kFindings = 1;
    constexpr int kNotRead = 2;
    OrvPLC::TOrvActionCatalogue catalogue(OrvPLC::TOrvActionCatalogue::Content::BuiltIn);
    Remarks remarks;
    OrvPLC::ExtensionReader reader(catalogue, &remarks);
    bool allRead = true;
    for (const std::string& path : options.files) {
        std::string document;
        if (ReadExtensionFile(path, document)) {
            Check(path, document, reader, remarks);
        } else {
            allRead = false;
        }
    }
    if (!allRead) return kNotRead;
    if (remarks.errors + remarks.warnings == 0) return 0;
    if (settings.jsonReport) return kFindings;
    PrintError(std::to_string(remarks.errors) + (remarks.errors == 1 ? " error, " : " errors, ") +
               std::to_string(remarks.warnings) + (remarks.warnings == 1 ? " warning\n" : " warnings\n"));
    return kFindings;
}
