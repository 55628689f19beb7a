#include "bridge/action_text_parser.h"

#include "bridge/odd_actions.h"

namespace HeskPLC {

using OrvPLC::ObjectPtr;
using OrvPLC::PatternSearch;
using OrvPLC::TOrvAction;

ActionTextToken::ActionTextToken(const PatternSearch& found)
{
    for (std::size_t part = 0; part < parts_.size(); ++part) parts_[part] = found[part + 1];
}

ObjectPtr<TOrvAction> ActionTextParser::Parse()
{
    if (!Split()) return nullptr;
    const Converter* converter = FindConverter(name_);
    if (!converter) return nullptr;
    ObjectPtr<TOrvAction> action(TOrvAction::Create(converter->action));
    const OddAction* odd = FindOddAction(*converter);
    if (odd && odd->read) {
        odd->read(*this, *action, *converter);
    } else {
        ReadFields(*this, *action, converter->fields);
    }
    return action;
}

// The search for a field is not anchored: what stands in front of it is skipped without complaint. Deliberate.
bool ActionTextParser::Split()
{
    if (!search_.Find(Patterns().head, text_) || !search_[1].empty()) return false;
    name_ = search_[2];
    fields_ = search_.Rest();
    return ForEachToken([this](const ActionTextToken& token) {
        if (tokens_.size() < kMostTokens) tokens_.push_back(token);
    });
}

}  // namespace HeskPLC
