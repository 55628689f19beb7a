// The binary form: bare, and as digits.
#include "binary_walk.h"
#include "bytes.h"
#include "forms.h"
#include "remarks.h"
#include "text.h"

namespace {

// An action without name and records.
constexpr std::size_t kShortest = 4 + 4 + 4;

bool IsBlank(char character)
{
    return character == ' ' || (character >= '\t' && character <= '\r');
}

// -1 for what is no digit.
int DigitOf(char character)
{
    if (character >= '0' && character <= '9') return character - '0';
    const char lower = static_cast<char>(character | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

// The position of the first character that is wrong, npos for none.
std::size_t BytesOf(std::string_view digits, std::string& bytes)
{
    int high = -1;
    for (std::size_t i = 0; i < digits.size(); ++i) {
        // Blanks may stand between bytes and not inside one.
        if (high < 0 && IsBlank(digits[i])) continue;
        const int digit = DigitOf(digits[i]);
        if (digit < 0) return i;
        if (high >= 0) bytes += static_cast<char>(high << 4 | digit);
        high = high >= 0 ? -1 : digit;
    }
    return high >= 0 ? digits.size() : std::string_view::npos;
}

}  // namespace

Decoded ReadBinary(const std::string& record)
{
    Decoded decoded;
    const BinaryWalk walk = WalkBinary(record, false);
    if (!walk.problem.empty()) {
        decoded.problem.code = "damaged";
        decoded.problem.message =
            "damaged at byte " + std::to_string(walk.end) + ": " + walk.problem + " (orvact dump shows it)";
        return decoded;
    }
    decoded.action = Action::TryFromBinary(record);
    if (!decoded.action) {
        decoded.problem.code = "not-an-action";
        decoded.problem.message = walk.sibling
                                      ? "an action of the sibling platform, whose library is not here or refuses it"
                                      : "the library does not read it";
        return decoded;
    }
    if (walk.end < record.size()) {
        decoded.remarks.push_back({kUnreadCode,
                                   "left out the " + std::to_string(record.size() - walk.end) +
                                       " bytes after the action",
                                   {}, 0, 0, {}});
    }
    AddRemarks(decoded.action, decoded.remarks);
    return decoded;
}

Encoded WriteBinary(const Action& action)
{
    try {
        return {action.Binary(), {}};
    } catch (const orv::Error&) {
        return {{}, "has no binary form"};
    }
}

Decoded ReadHex(const std::string& record)
{
    std::string bytes;
    const std::size_t wrong = BytesOf(record, bytes);
    if (wrong == std::string::npos) return ReadBinary(bytes);
    Decoded decoded;
    decoded.problem.code = "not-an-action";
    decoded.problem.column = wrong + 1;
    decoded.problem.message = wrong == record.size() ? "half a byte at the end" : "no hexadecimal digit";
    return decoded;
}

Encoded WriteHex(const Action& action)
{
    const Encoded binary = WriteBinary(action);
    Encoded encoded{"", binary.problem};
    for (const char byte : binary.record) AppendHex(encoded.record, static_cast<unsigned char>(byte));
    return encoded;
}

bool BytesOfBinary(const std::string& record, std::string& bytes)
{
    bytes = record;
    return true;
}

bool BytesOfHex(const std::string& record, std::string& bytes)
{
    return BytesOf(record, bytes) == std::string::npos;
}

// No action is as short as its own kind is as a number: what begins with a small number is no frame.
bool LooksLikeFrames(std::string_view head)
{
    return head.size() >= 8 && Word32At(head, 0) >= kShortest && LooksLikeBinary(head.substr(4));
}

bool LooksLikeBinary(std::string_view head)
{
    return head.size() >= 4 && Word32At(head, 0) >= ORV_MESSAGE_SIBLING_ACTION &&
           Word32At(head, 0) <= ORV_MESSAGE_MATCH_ACTION;
}

bool LooksLikeHex(std::string_view line)
{
    std::string bytes;
    BytesOf(line.substr(0, line.find_first_of("\r\n")), bytes);
    return LooksLikeBinary(bytes);
}
