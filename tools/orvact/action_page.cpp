#include "action_page.h"

#include "console.h"
#include "table.h"
#include "text.h"

namespace {

// The catalogue's name, or the own name of an action that it does not know.
std::string Identity(const Action& action, const ActionView* known)
{
    const bool match = action->GetMessageKind() == ORV_MESSAGE_MATCH_ACTION;
    const std::string name = Visible(Utf8FromWide(action->GetActionName()));
    const std::string kind = match ? "match action" : "action";
    if (!known) return Painted(Tone::Name, name) + ", " + kind + " unknown to the catalogue";
    return Painted(Tone::Name, name) + ", " + kind + " " + std::to_string(known->code) + " of class " +
           known->className;
}

}  // namespace

void Indented(const char* label, const std::string& text)
{
    Print("    " + Painted(Tone::Quiet, label) + text + "\n");
}

void PrintAction(const Action& action, const std::string& label)
{
    const ActionView* known = FindAction(action->GetActionCode());
    Print(Painted(Tone::Quiet, label) + "  " + Identity(action, known) + "\n");
    if (action->GetMessageKind() == ORV_MESSAGE_MATCH_ACTION) {
        const std::string description = MatchDescription(action);
        if (!description.empty()) Indented("description: ", Visible(description));
    }
    Table table(6);
    for (const StoredParameter& parameter : ParametersOf(action, known)) {
        table.Row({parameter.name, parameter.type, parameter.view, parameter.value});
    }
    table.Write();
    Indented("text:  ", Visible(Utf8FromWide(TextOf(action, false))));
    Indented("plain: ", Visible(Utf8FromWide(TextOf(action, true))));
}
