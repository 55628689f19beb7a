/* Runs the conformance table through the flat interface, in C. bindings/conformance/cases.txt tells the form.
 *
 *     conformance TABLE...
 */
#include <OrvActions.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

enum { ROOM = 65536, COLUMNS = 10 };

static char caseName[200];
static int passed, failed, caseFailed;

static void Expect(const char* what, const char* expected, const char* actual)
{
    if (strcmp(expected, actual) == 0) return;
    printf("%s: %s\n  expected %s\n  and got  %s\n", caseName, what, expected, actual);
    caseFailed = 1;
}

/* Into a buffer of ROOM bytes. */
static void Print(char* out, const char* form, ...)
{
    va_list values;
    va_start(values, form);
    vsnprintf(out, ROOM, form, values);
    va_end(values);
}

/* ---- texts ---- */

static OrvWChar* Widened(const char* text)
{
    static OrvWChar units[ROOM];
    size_t count = 0;
    const unsigned char* at = (const unsigned char*)text;
    while (*at) {
        int more = *at >= 0xF0 ? 3 : *at >= 0xE0 ? 2 : *at >= 0xC0 ? 1 : 0;
        uint32_t code = more ? *at & (0x3Fu >> more) : *at;
        for (++at; more > 0; --more, ++at) code = code << 6 | (*at & 0x3Fu);
        if (code >= 0x10000) {
            units[count++] = (OrvWChar)(0xD800 + ((code - 0x10000) >> 10));
            code = 0xDC00 + ((code - 0x10000) & 0x3FF);
        }
        units[count++] = (OrvWChar)code;
    }
    units[count] = 0;
    return units;
}

static char* PutCode(char* out, uint32_t code)
{
    if (code < 0x80) {
        *out++ = (char)code;
        return out;
    }
    int more = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    static const unsigned char kLead[] = {0, 0xC0, 0xE0, 0xF0};
    *out++ = (char)(kLead[more] | code >> (6 * more));
    while (more-- > 0) *out++ = (char)(0x80 | (code >> (6 * more) & 0x3F));
    return out;
}

static const char* Narrowed(const OrvWChar* text)
{
    static char bytes[ROOM];
    char* out = bytes;
    for (; text && *text; ++text) {
        uint32_t code = (uint16_t)*text;
        if (code >= 0xD800 && code < 0xDC00) code = 0x10000 + ((code - 0xD800) << 10) + ((uint32_t)*++text - 0xDC00);
        out = PutCode(out, code);
    }
    *out = 0;
    return bytes;
}

static uint32_t Bytes(const char* digits, unsigned char* bytes)
{
    uint32_t count = 0;
    for (; digits[0] && digits[1]; digits += 2) {
        const char pair[3] = {digits[0], digits[1], 0};
        bytes[count++] = (unsigned char)strtoul(pair, NULL, 16);
    }
    return count;
}

static const char* Digits(const unsigned char* bytes, uint32_t count)
{
    static char digits[2 * ROOM];
    for (uint32_t at = 0; at < count; ++at) sprintf(digits + 2 * at, "%02x", bytes[at]);
    digits[2 * count] = 0;
    return digits;
}

/* ---- forms ---- */

static TOrvHandle Read(const char* text)
{
    return OrvAct_CreateFromTextBufferA(text, ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 1, NULL);
}

static const char* Stored(TOrvHandle action, OrvBool plain)
{
    static char text[ROOM];
    return OrvAct_StoreToTextBufferA(action, text, ROOM, plain, 1, NULL) ? text : "(no text)";
}

static const char* Json(TOrvHandle action)
{
    static OrvWChar text[ROOM];
    const uint32_t noLimit = 0xFFFFFFFF;
    return OrvAct_StoreToJson(action, text, ROOM, NULL, 1, &noLimit) ? Narrowed(text) : "(no JSON)";
}

static const char* Binary(TOrvHandle action)
{
    static unsigned char bytes[ROOM];
    uint32_t size = 0;
    return OrvAct_StoreToBinBuffer(action, bytes, ROOM, &size) ? Digits(bytes, size) : "(no bytes)";
}

/* ---- values ---- */

static const char* GuidText(const TOrvGuid* guid)
{
    static char text[40];
    const uint8_t* end = guid->Data4;
    sprintf(text, "%08lx-%04x-%04x-%02x%02x-%02x%02x%02x%02x%02x%02x", (unsigned long)guid->Data1, guid->Data2,
            guid->Data3, end[0], end[1], end[2], end[3], end[4], end[5], end[6], end[7]);
    return text;
}

static const char* Shown(const TOrvParameterValue* value)
{
    static char text[ROOM];
    const int64_t rect = value->payload.int64;
    uint64_t bits = 0;
    switch (value->kind) {
    case ORV_KIND_Boolean: Print(text, "%d", value->payload.boolean); break;
    case ORV_KIND_Numeric32Bit: Print(text, "%ld", (long)value->payload.int32); break;
    case ORV_KIND_Numeric64Bit: Print(text, "%lld", (long long)value->payload.int64); break;
    case ORV_KIND_NumericDouble:
        memcpy(&bits, &value->payload.real, sizeof bits);
        Print(text, "%016llx", (unsigned long long)bits);
        break;
    case ORV_KIND_DateTime: Print(text, "%llu", (unsigned long long)value->payload.dateTime.value); break;
    case ORV_KIND_Guid: return GuidText(&value->payload.guid);
    case ORV_KIND_EventType:
        Print(text, "%llu|%s", (unsigned long long)value->payload.eventType.id,
                Narrowed(value->payload.eventType.name));
        break;
    case ORV_KIND_MediaChannel:
        Print(text, "%llu|%lu|%s", (unsigned long long)value->payload.channel.id,
                (unsigned long)value->payload.channel.number, Narrowed(value->payload.channel.name));
        break;
    case ORV_KIND_Resource:
        Print(text, "%s|%s", GuidText(&value->payload.resource.guid), Narrowed(value->payload.resource.name));
        break;
    case ORV_KIND_Rect:
        Print(text, "%d,%d,%d,%d", (int16_t)rect, (int16_t)(rect >> 16), (int16_t)(rect >> 32),
                (int16_t)(rect >> 48));
        break;
    default: return Narrowed(value->text);
    }
    return text;
}

static const char* KindName(uint32_t kind)
{
#define ORV_NAME(name, number) \
    if (kind == number) return #name;
    ORV_FOR_EACH_KIND(ORV_NAME)
#undef ORV_NAME
    return "(none)";
}

/* The record goes from read to read: each one frees the text of the one before. */
static TOrvParameterValue value;

static void CheckField(TOrvHandle action, char** columns)
{
    char actual[ROOM], expected[ROOM];
    Print(expected, "%s\t%s\t%s", columns[2], columns[3], columns[4]);
    if (!Talvec_Action_GetParameterByName(action, Widened(columns[1]), &value)) {
        Expect(columns[1], expected, "(absent)");
        return;
    }
    Print(actual, "%s\t%lu\t%s", KindName(value.kind), (unsigned long)value.enum_type, Shown(&value));
    Expect(columns[1], expected, actual);
}

/* ---- failures ---- */

static const char* ErrorText(void)
{
    static char text[ROOM];
    TOrvLastErrorInfo info;
    if (!OrvAct_GetLastError(&info)) return "-\t-\t-";
    Print(text, "%lu\t%lu\t%s", (unsigned long)info.code, (unsigned long)info.subCode, Narrowed(info.messageW));
    return text;
}

static OrvBool Converted(OrvBool (*convert)(const OrvWChar*, OrvBStr*), const char* text)
{
    return convert(Widened(text), NULL);
}

/* The answer of a call on an action; `second` stays as it is where the call tells nothing else. */
static OrvBool CallOn(TOrvHandle action, const char* call, uint32_t number, char* second)
{
    static const TOrvChannelValue kEmpty;
    OrvWChar text[256];
    uint32_t required = 0;
    if (strcmp(call, "role") == 0) return OrvAct_SetVideoOutput(action, &kEmpty);
    if (strcmp(call, "decode") == 0) return OrvAct_DecodeABCDisconnect(action);
    if (strcmp(call, "record") == 0) {
        TOrvEventData record = {.size = number};
        return OrvAct_GetActionEventData(action, &record, NULL);
    }
    OrvBool done = OrvAct_StoreToTextBufferW(action, text, number, 0, 0, &required);
    sprintf(second, "%lu", (unsigned long)required);
    return done;
}

static void CheckFailure(char** columns)
{
    static unsigned char bytes[ROOM];
    const char *call = columns[1], *argument = columns[2];
    const uint32_t number = (uint32_t)strtoul(columns[3], NULL, 10);
    char second[20] = "-", actual[ROOM], expected[ROOM];
    uint32_t consumed = 0;
    OrvBool done = 0;
    TOrvHandle action = NULL;
    if (strcmp(call, "parse") == 0) {
        action = OrvAct_CreateFromTextBufferW(Widened(argument), ORV_LENGTH_TERMINATED, ORV_EXPECT_ANY, 0, NULL);
        done = action != NULL;
    } else if (strcmp(call, "bytes") == 0) {
        action = OrvAct_CreateFromBinBuffer(bytes, Bytes(argument, bytes), number, &consumed);
        sprintf(second, "%lu", (unsigned long)consumed);
        done = action != NULL;
    } else if (strcmp(call, "from-sibling") == 0) {
        done = Converted(Talvec_Action_ConvertHeskActionTextToOrvActionText, argument);
    } else if (strcmp(call, "to-sibling") == 0) {
        done = Converted(Talvec_Action_ConvertOrvActionTextToHeskActionText, argument);
    } else {
        action = Read(argument);
        done = CallOn(action, call, number, second);
    }
    Print(actual, "%s\t%s\t%s", done ? "true" : "false", second, ErrorText());
    Print(expected, "%s\t%s\t%s\t%s\t%s", columns[4], columns[5], columns[6], columns[7], columns[8]);
    Expect(call, expected, actual);
    OrvAct_CloseHandle(action);
}

/* ---- the table ---- */

static TOrvHandle action;
static char technical[ROOM];
static uint32_t fields;

static void CheckBytes(const char* digits)
{
    static unsigned char bytes[ROOM];
    uint32_t consumed = 0;
    const uint32_t size = Bytes(digits, bytes);
    OrvBool equal = 0;
    Expect("hex", digits, Binary(action));
    TOrvHandle again = OrvAct_CreateFromBinBuffer(bytes, size, ORV_EXPECT_ANY, &consumed);
    Expect("read from bytes", technical, again ? Stored(again, 0) : "(null)");
    OrvAct_Equal(action, again, &equal);
    if (consumed != size || !equal) Expect("consumed and equal", "yes", "no");
    OrvAct_CloseHandle(again);
}

static void EndCase(void)
{
    if (!caseName[0]) return;
    if (action) {
        Expect("technical", technical, Stored(action, 0));
        if (Talvec_Action_ConvertToIOrvAction(action)->table->GetParameterCount(
                Talvec_Action_ConvertToIOrvAction(action)) != fields) {
            Expect("number of parameters", "as listed", "another");
        }
        OrvAct_CloseHandle(action);
    }
    *(caseFailed ? &failed : &passed) += 1;
    action = NULL;
    caseFailed = 0;
    fields = 0;
}

static void Take(char** columns)
{
    const char* word = columns[0];
    if (strcmp(word, "case") == 0) {
        EndCase();
        strcpy(caseName, columns[1]);
    } else if (strcmp(word, "text") == 0) {
        action = Read(columns[1]);
        strcpy(technical, columns[1]);
        if (!action) Expect("text", "an action", "(null)");
    } else if (strcmp(word, "technical") == 0) {
        strcpy(technical, columns[1]);
    } else if (strcmp(word, "fail") == 0) {
        CheckFailure(columns);
    } else if (!action) {
        return;
    } else if (strcmp(word, "plain") == 0) {
        Expect(word, columns[1], Stored(action, 1));
    } else if (strcmp(word, "json") == 0) {
        Expect(word, columns[1], Json(action));
    } else if (strcmp(word, "hex") == 0) {
        CheckBytes(columns[1]);
    } else if (strcmp(word, "field") == 0) {
        ++fields;
        CheckField(action, columns);
    }
}

static void TakeTable(const char* path)
{
    static char line[ROOM];
    FILE* table = fopen(path, "rb");
    if (!table) exit(2);
    while (fgets(line, ROOM, table)) {
        char* columns[COLUMNS];
        line[strcspn(line, "\r\n")] = 0;
        if (line[0] == 0 || line[0] == '#') continue;
        char* rest = line;
        for (int at = 0; at < COLUMNS; ++at) {
            columns[at] = rest;
            char* end = rest + strcspn(rest, "\t");
            rest = *end ? end + 1 : end;
            *end = 0;
        }
        Take(columns);
    }
    EndCase();
    caseName[0] = 0;
    fclose(table);
}

int main(int count, char** arguments)
{
    for (int at = 1; at < count; ++at) TakeTable(arguments[at]);
    printf("%d passed, %d failed\n", passed, failed);
    const uint32_t open = OrvAct_GetNumberOfOpenHandles();
    if (open != 0) printf("%lu objects are still open\n", (unsigned long)open);
    return failed != 0 || passed == 0 || open != 0;
}
