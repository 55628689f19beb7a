#include "catalogue/extensions.h"

#include <initializer_list>
#include <optional>

#include "catalogue/extension_reader.h"
#include "platform/debug_output.h"
#include "platform/host_files.h"
#include "ulmo/exceptions.h"
#include "ulmo/huge_stream.h"

namespace OrvPLC {

namespace {

// Straight to the debug sink and without a level: these very texts are what an administrator looks for there, whatever
// the filter of the diagnostics holds back.
void Tell(std::initializer_list<std::u16string_view> pieces) noexcept
try {
    std::u16string text;
    for (const std::u16string_view piece : pieces) text += piece;
    Platform::WriteDebug(text);
} catch (...) {
    // Nobody is left to tell.
}

// False when the file cannot be opened; a file that opens and cannot be read is a failure.
bool ReadWholeFile(const std::filesystem::path& path, std::string& bytes)
{
    std::optional<Ulmo::THugeFileStream> file;
    try {
        file.emplace(path);
    } catch (const Ulmo::SystemException&) {
        return false;
    }
    ExtensionReader::CheckSize(file->Size());
    bytes = file->ReadToEnd();
    return true;
}

// `name` is set before anything can fail, for the caller's report.
void LoadFile(TOrvActionCatalogue& catalogue, const std::filesystem::path& path, std::u16string& name)
{
    name = Platform::FileNameText(path);
    Tell({u"++++: ", name});
    std::string document;
    if (ReadWholeFile(path, document)) ExtensionReader(catalogue).Read(document.c_str());
}

// Raises SystemException if the folder cannot be listed.
void LoadAll()
{
    std::filesystem::path folder;
    std::vector<std::filesystem::path> files;
    if (!Platform::GetHostFolder(folder)) Ulmo::ThrowLastError(u"GetModuleFileNameW");
    if (!Platform::FindFiles(folder, "plc", ".xml", files)) Ulmo::ThrowLastError(u"FindFirstFileW");
    // Each on its own: a file that fails does not keep the next from being read.
    for (const std::filesystem::path& file : files) LoadXMLExtension(Catalogue(), file);
}

}  // namespace

void LoadXMLExtension(TOrvActionCatalogue& catalogue, const std::filesystem::path& path) noexcept
{
    std::u16string name;
    try {
        LoadFile(catalogue, path, name);
    } catch (...) {
        Tell({u"OrvPLC::LoadXMLExtension(\"", name, u"\") failed!"});
    }
}

void LoadXMLExtensions() noexcept
try {
    LoadAll();
} catch (...) {
    Tell({u"OrvPLC::LoadXMLExtensions() failed!"});
}

}  // namespace OrvPLC
