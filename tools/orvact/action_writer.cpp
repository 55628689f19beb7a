#include "action_writer.h"

#include "console.h"
#include "settings.h"

namespace {

// Reports if what was written would read as something else.
void CheckReading(const Form& form, const Action& action, const std::string& record, const Place& place)
{
    // A form that is only written has nothing to be compared with.
    if (!form.read || form.faithful) return;
    const Decoded again = form.read(record);
    if (again.action && action == again.action) return;
    const std::string message =
        std::string("what was written in form ") + form.name + " does not read back as the same action";
    Report(place, Severity::Note, {"unfaithful", message, {}, 0, 0, {}});
}

}  // namespace

bool ActionWriter::Open(const std::string& form)
{
    if (IsCsv(form)) return true;
    bool sound = false;
    form_ = TargetForm(form, sound);
    if (!sound || !IsBinary(*form_) || settings.force || !OutputIsTerminal()) return sound;
    Complain("binary", std::string("form ") + form_->name + " is not for a terminal; give -o FILE, a pipe or --force");
    return false;
}

bool ActionWriter::Write(const Action& action, const Place& place)
{
    if (!form_) {
        table_.Add({orv::ToUtf8(action.Name()), std::to_string(action.Code())}, action);
        return true;
    }
    const Encoded encoded = form_->write(action);
    if (!encoded.problem.empty()) {
        Report(place, Severity::Error, {"unwritten", encoded.problem, {}, 0, 0, {}});
        return false;
    }
    const std::string record = Delimited(*form_, encoded.record);
    IsBinary(*form_) ? PrintBytes(record) : Print(record);
    CheckReading(*form_, action, encoded.record, place);
    return true;
}

void ActionWriter::Finish()
{
    if (!form_) table_.Write();
}
