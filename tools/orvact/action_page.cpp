#include "action_page.h"

#include "console.h"
#include "table.h"
#include "text.h"

namespace {

// The catalogue's name, or the own name of an action that it does not know.
std::string Identity(const Action& action, const ActionView* known)
{
    const std::string name = Visible(orv::ToUtf8(action.Name()));
    const std::string kind = action.IsMatchAction() ? "match action" : "action";
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
    const ActionView* known = FindAction(action.Code());
    Print(Painted(Tone::Quiet, label) + "  " + Identity(action, known) + "\n");
    if (action.IsMatchAction()) {
        const std::u16string description = action.Description();
        if (!description.empty()) Indented("description: ", Visible(orv::ToUtf8(description)));
    }
    Table table(6);
    for (const StoredParameter& parameter : ParametersOf(action, known)) {
        table.Row({parameter.name, parameter.type, parameter.view, parameter.value});
    }
    table.Write();
    Indented("text:  ", ShownText(action));
    Indented("plain: ", ShownText(action, true));
}
