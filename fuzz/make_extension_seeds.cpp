// Seeds for the extension loader: a document with every item of the grammar, and odd rows.
#include "seeds.h"

namespace {

constexpr std::string_view kRows[] = {
    "<enums><enum name='E' code='1000'><plain>e</plain><description>d</description><values>"
    "<value name='V' value='1' text='t'/><value name='W' value='-2'/></values></enum></enums>"
    "<actionclasses><actionclass name='C' code='1000' priority='4' "
    "flags='2'><plain>c</plain><description>d</description>"
    "</actionclass></actionclasses><actions><action name='A' code='10000' class='C' priority='6' "
    "flags='1'><plain>a</plain>"
    "<description>d</description><parameters><parameter name='P' type='E' view='VideoInput' priority='8' flags='1' "
    "dbfield='Int32_A|String_A'><plain>p</plain><description>d</description></parameter></parameters></action></"
    "actions>",
    "<actions><action code='10000' class='1'><name>A</name><params><parameter name='p' type='Bool'/>"
    "<parameter name='P' type='x'/></params></action><action name='B' code='10000' class='x'/></actions>",
    "<Actions/><actions><action Name='a' code='1' class='1'/></actions><actions/>",
};

void Make(const SeedFolder& folder)
{
    int number = 0;
    for (const std::string_view rows : kRows) {
        folder.Write("extension" + std::to_string(number++), std::string("<PLC>").append(rows).append("</PLC>"));
    }
}

}  // namespace

int main(int count, char** arguments)
{
    return MakeSeeds(count, arguments, Make);
}
