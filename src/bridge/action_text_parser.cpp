#include "bridge/action_text_parser.h"

#include "bridge/odd_actions.h"

namespace HeskPLC {

using OrvPLC::ObjectPtr;
using OrvPLC::TOrvAction;

ObjectPtr<TOrvAction> ActionTextParser::Parse()
{
    if (!Split()) return nullptr;
    const Converter* converter = FindConverter(name_);
    if (!converter) return nullptr;
    // The row names our action, which may be called otherwise than the sibling's.
    ObjectPtr<TOrvAction> action(TOrvAction::Create(converter->action));
    const OddAction* odd = FindOddAction(*converter);
    if (odd && odd->read) {
        odd->read(*this, *action, *converter);
    } else {
        ReadFields(*this, *action, converter->Fields());
    }
    return action;
}

// The search for a field is not anchored: what comes before it is skipped without complaint. Deliberate.
bool ActionTextParser::Split()
{
    OrvPLC::HeaderMatch header;
    if (!scanner_.FindHeader(header) || !header.prefix.empty()) return false;
    name_ = header.name;
    fields_ = scanner_.Place();
    return ForEachToken([this](const ActionTextToken& token) {
        if (tokens_.size() < kMostTokens) tokens_.push_back(token);
    });
}

}  // namespace HeskPLC
