// Reads arbitrary bytes as an extension of a small catalogue, with a listener and without. Both must register the same,
// and what is registered must hold together.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "catalogue/extension_reader.h"

using namespace OrvPLC;

namespace {

class Remarks : public ExtensionListener {
public:
    explicit Remarks(std::size_t size) : size_(size) {}
    void OnRemark(Severity, std::size_t position, const std::string& text) override
    {
        if (position > size_ || text.empty()) std::abort();
    }

private:
    std::size_t size_;
};

void Require(bool holds)
{
    if (!holds) std::abort();
}

void CheckAction(const TOrvActionCatalogue& catalogue, const TOrvActionInternalInfo& action)
{
    Require(catalogue.FindActionByName(action.NameW.view()) == &action);
    Require(catalogue.FindActionByIndex(action.InternalIndex) == &action);
    Require(catalogue.FindActionByCode(action.Code) != nullptr && action.Code >= 10000);
    Require(action.KeyOrder().size() == action.Parameters.size());
    for (const TOrvParameterInternalInfo& parameter : action.Parameters) {
        const std::size_t position = action.FindParameter(parameter.NameW.view());
        Require(position < action.Parameters.size());
        Require(action.Parameters[position].LowerName.view() == parameter.LowerName.view());
        Require(action.HasRepeatedNames() || &action.Parameters[position] == &parameter);
    }
}

std::size_t Load(const std::string& document, ExtensionListener* listener)
{
    TOrvActionCatalogue catalogue;
    catalogue.RegisterActionClass(Ulmo::MakeCounted<TOrvActionClassInternalInfo>(u"System", 0u, 5u, 0u));
    catalogue.RegisterActionClass(Ulmo::MakeCounted<TOrvActionClassInternalInfo>(u"Video", 1u, 5u, 0u));
    try {
        ExtensionReader(catalogue, listener).Read(document.c_str());
    } catch (const Ulmo::XMLNodeParsingException&) {
        // A failure is an answer, and nothing is registered.
        Require(catalogue.ActionsByName().empty() && catalogue.EnumValues().empty());
    }
    for (const auto& [name, action] : catalogue.ActionsByName()) CheckAction(catalogue, *action);
    return catalogue.ActionsByName().size() + catalogue.ClassesByName().size() + catalogue.EnumValues().size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string document(reinterpret_cast<const char*>(data), size);
    Remarks remarks(size);
    Require(Load(document, &remarks) == Load(document, nullptr));
    return 0;
}
