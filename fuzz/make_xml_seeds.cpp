// Seeds for the XML reader: a document for each construct that the reader knows.
#include "seeds.h"

namespace {

constexpr std::string_view kDocuments[] = {
    "<?xml version='1.0' encoding=\"utf-8\" ?>\n<a b='1' c = \"2\"><d>text </d><e/>tail</a>",
    "<!DOCTYPE a><!-- comment --><a:_.-1 / >",
    "<a>x!y<![CDATA[<z>]]></a>",
    "<a><b/><![CDATA[]]><![CDATA[]]></a>",
    "<a b='&lt;&gt;&amp;&quot;&apos;&#65;&#x41;&none;'>&#32;&lt</a>",
    "<a><b><c><d/></c></b><b>1</b></a><e/>",
};

void Make(const SeedFolder& folder)
{
    int number = 0;
    for (const std::string_view document : kDocuments) folder.Write("document" + std::to_string(number++), document);
}

}  // namespace

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
