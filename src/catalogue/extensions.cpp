#include "catalogue/extensions.h"

#include <fstream>
#include <initializer_list>
#include <iterator>

#include "catalogue/extension_reader.h"
#include "platform/debug_output.h"
#include "platform/host_files.h"
#include "ulmo/exceptions.h"
#include "ulmo/string_conversion.h"

namespace OrvPLC {

namespace {

enum class Level { Debug, Error };

void TellDiagnostic(Level, std::initializer_list<std::u16string_view> pieces) noexcept
try {
    std::u16string text;
    for (const std::u16string_view piece : pieces) text += piece;
    Platform::WriteDebug(text);
} catch (...) {
    // Nobody is left to tell.
}

// A name that is no text shows replacement characters.
std::u16string TextOf(const std::filesystem::path& path)
{
    const std::u8string name = path.u8string();
    return Ulmo::WideFromUtf8({reinterpret_cast<const char*>(name.data()), name.size()});
}

// False when the file cannot be opened.
bool ReadWholeFile(const std::filesystem::path& path, std::string& bytes)
{
    std::filebuf file;
    if (!file.open(path, std::ios::in | std::ios::binary)) return false;
    bytes.assign(std::istreambuf_iterator<char>(&file), std::istreambuf_iterator<char>());
    return true;
}

void LoadFile(TOrvActionCatalogue& catalogue, const std::filesystem::path& path, std::u16string& name)
{
    name = TextOf(path);
    TellDiagnostic(Level::Debug, {u"++++: ", name});
    std::string document;
    if (ReadWholeFile(path, document)) ExtensionReader(catalogue).Read(document.c_str());
}

void LoadAll()
{
    std::filesystem::path folder;
    std::vector<std::filesystem::path> files;
    if (!Platform::GetHostFolder(folder)) Ulmo::ThrowLastError(u"GetModuleFileNameW");
    if (!Platform::FindFiles(folder, "plc", ".xml", files)) Ulmo::ThrowLastError(u"FindFirstFileW");
    for (const std::filesystem::path& file : files) LoadXMLExtension(Catalogue(), file);
}

}  // namespace

void LoadXMLExtension(TOrvActionCatalogue& catalogue, const std::filesystem::path& path) noexcept
{
    std::u16string name;
    try {
        LoadFile(catalogue, path, name);
    } catch (...) {
        TellDiagnostic(Level::Error, {u"OrvPLC::LoadXMLExtension(\"", name, u"\") failed!"});
    }
}

void LoadXMLExtensions() noexcept
try {
    LoadAll();
} catch (...) {
    TellDiagnostic(Level::Error, {u"OrvPLC::LoadXMLExtensions() failed!"});
}

}  // namespace OrvPLC
