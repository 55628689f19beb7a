#include "extension_file.h"

#include "console.h"
#include "report.h"

bool ReadExtensionFile(const std::string& path, std::string& bytes)
{
    std::FILE* file = path == "-" ? stdin : OpenFile(path);
    bool failed = !file;
    if (file) {
        char piece[65536];
        while (const std::size_t got = ReadBytes(file, piece, sizeof piece, failed)) bytes.append(piece, got);
    }
    if (failed) ReportFile(path);
    if (file && file != stdin) std::fclose(file);
    return !failed;
}
