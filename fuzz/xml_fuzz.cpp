// Reads arbitrary bytes as XML. What reads is written, copied and queried, and must read back the same.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "ulmo/xml_text.h"
#include "ulmo/xml_tree.h"

using namespace Ulmo;

namespace {

void CheckRoundTrip(const XMLTree& tree)
{
    const std::string written = Serialize(tree);
    XMLTree again;
    again.Parse(written.c_str());
    if (Serialize(again) != written) std::abort();
}

// A query copies each node it finds with all that is below, so only small trees are asked.
void Query(const XMLTree& tree, std::size_t size)
{
    if (size > 4096) return;
    const CountedPtr<XMLNode> result = MakeCounted<XMLNode>("result");
    for (const char* path : {"*", "*/?*", "//", "a/b"}) tree.FindNodes(path, nullptr, *result);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    XMLTree tree;
    try {
        tree.Parse(text.c_str());
    } catch (const XMLNodeParsingException& fault) {
        if (fault.ErrorCode() > size || tree.GetRoot()) std::abort();
        PlaceOf(text, fault.ErrorCode());
        return 0;
    }
    CheckRoundTrip(tree);
    Query(tree, size);
    return 0;
}
