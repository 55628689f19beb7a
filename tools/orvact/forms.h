// The forms in which actions come and go. A form is one row of the table in forms.cpp and the functions that the row
// names; every command that reads or writes actions finds it there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "action_view.h"
#include "report.h"

// How the actions of a form stand one after the other.
enum class Layout {
    Lines,      // one a line; blank lines and lines that begin with # are skipped
    Documents,  // the same, and one may go on over several lines
    Blocks,     // texts of several lines that tell their own ends
    Frames,     // each after its size in bytes, 32 bits little-endian
    EndToEnd,   // nothing between them; the action tells its own end
};

// Where a JSON document ends.
class DocumentWalk {
public:
    void Add(std::string_view text);
    bool IsWhole() const { return depth_ <= 0; }

private:
    std::int64_t depth_ = 0;
    bool quoted_ = false;
    bool escaped_ = false;
};

// The code of remarks about text beside what was read.
inline const std::string kUnreadCode = "unread";

// What reading one record gave: an action, or why it is not one.
struct Decoded {
    Action action;
    Remark problem;
    std::vector<Remark> remarks;  // what the user should know though the action was read
};

// The result of writing, or why the action has no such form.
struct Encoded {
    std::string record;
    std::string problem;
};

struct Form {
    const char* name;
    const char* help;
    Layout layout;
    bool faithful;  // what is written always reads back as the same action; for other forms convert checks
    bool (*looksLike)(std::string_view head);                      // null: is never guessed
    Decoded (*read)(const std::string& record);                    // null: is only written
    Encoded (*write)(const Action& action);                        // null: is only read
    bool (*image)(const std::string& record, std::string& bytes);  // the binary form in it, for dump; null: none
};

const std::vector<Form>& Forms();
const Form* FindForm(std::string_view name);  // null if there is none
// The form of an input by its first bytes; technical text is what nothing else claims.
const Form& GuessForm(std::string_view head);

// Null, with a report, if the form does not exist or cannot be read or written. "" as the name of a source gives null
// without a report: it is to be guessed.
const Form* SourceForm(const std::string& name, bool& sound);
const Form* TargetForm(const std::string& name, bool& sound);

// A record with what comes before it and after it in an output. A line break inside a line becomes one after a
// backslash, which the reader removes again.
std::string Delimited(const Form& form, const std::string& record);

bool IsBinary(const Form& form);

// The rows' functions: text_forms.cpp, binary_forms.cpp and sibling_forms.cpp.
Decoded ReadTechnical(const std::string& record);
inline constexpr const char* kNotUtf8 = "not valid in its encoding everywhere; what is not became U+FFFD";
Encoded WriteText(const Action& action, bool plain);
Encoded WriteTechnical(const Action& action);
Encoded WritePlain(const Action& action);
Encoded WriteJson(const Action& action);
Encoded WriteProperties(const Action& action);
Encoded WriteFlatXml(const Action& action);
Decoded ReadBinary(const std::string& record);
Encoded WriteBinary(const Action& action);
Decoded ReadHex(const std::string& record);
Encoded WriteHex(const Action& action);
Decoded ReadHesk(const std::string& record);
Encoded WriteHesk(const Action& action);
bool BytesOfBinary(const std::string& record, std::string& bytes);
bool BytesOfHex(const std::string& record, std::string& bytes);
Decoded ReadJson(const std::string& record);
bool LooksLikeFrames(std::string_view head);
bool LooksLikeBinary(std::string_view head);
bool LooksLikeHex(std::string_view head);
