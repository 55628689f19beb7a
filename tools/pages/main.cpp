// Writes the manual pages and the completions of the shells into a folder:
//
//     orvact_pages FOLDER
//
// They come from the table that the tool itself parses its command line with.
#include "command_line.h"
#include "completions.h"
#include "console.h"
#include "manual.h"

#include <filesystem>
#include <fstream>

namespace {

void Write(const std::filesystem::path& path, const std::string& text)
{
    std::filesystem::create_directories(path.parent_path());
    std::ofstream file(path, std::ios::binary);
    file << text;
    // Set after the write, so that a failure of it raises here, and closing may still fail.
    file.exceptions(std::ios::failbit | std::ios::badbit);
    file.close();
}

}  // namespace

int Run(const std::vector<std::string>& arguments)
{
    if (arguments.size() != 1) {
        PrintError("usage: orvact_pages FOLDER\n");
        return 2;
    }
    const std::filesystem::path folder = arguments.front();
    const CommandLine line;
    const CommandPage root = PageOf(line.app);
    Walk(root,
         [&](const CommandPage& page) { Write(folder / "man1" / (page.Joined("-") + ".1"), ManualPage(page, root)); });
    Write(folder / "completions" / "orvact", BashCompletion(root));
    Write(folder / "completions" / "_orvact", ZshCompletion(root));
    Write(folder / "completions" / "orvact.fish", FishCompletion(root));
    return 0;
}
