// Writes seeds for xml_fuzz into a directory: a document for each construct that the reader knows.
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace {

constexpr std::string_view kDocuments[] = {
    "<?xml version='1.0' encoding=\"utf-8\" ?>\n<a b='1' c = \"2\"><d>text </d><e/>tail</a>",
    "<!DOCTYPE a><!-- comment --><a:_.-1 / >",
    "<a>x!y<![CDATA[<z>]]></a>",
    "<a><b/><![CDATA[]]><![CDATA[]]></a>",
    "<a b='&lt;&gt;&amp;&quot;&apos;&#65;&#x41;&none;'>&#32;&lt</a>",
    "<a><b><c><d/></c></b><b>1</b></a><e/>",
};

}  // namespace

int main(int count, char** arguments)
{
    if (count != 2) {
        std::fputs("usage: make_xml_seeds <directory>\n", stderr);
        return 2;
    }
    const std::filesystem::path directory = arguments[1];
    std::filesystem::create_directories(directory);
    int number = 0;
    for (const std::string_view document : kDocuments) {
        std::ofstream stream(directory / ("document" + std::to_string(number++)), std::ios::binary);
        stream << document;
        if (!stream.flush()) return 1;
    }
    return 0;
}
