// The outputs of diagnostics. Console, debug window and event log share one line:
//
//     ERROR [mymodule,1234] something went wrong CR LF
#pragma once

#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "OrvActions/OrvTypes.h"
#include "platform/console.h"
#include "ulmo/debug_out.h"
#include "ulmo/huge_stream.h"

namespace Ulmo {

std::u16string DebugLine(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text);

// Errors go to standard error, all else to standard output, in the colour of the level. The configuration's
// ConsoleTimeMode puts the time before the line: 1 the time, 2 the date with its weekday and the time, 3 date and
// time, in the user's language.
class ConsoleOutputStreamer final : public IDebugOutStreamerObject {
public:
    ConsoleOutputStreamer();
    void Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text) override;

private:
    CriticalSection section_;  // colour and text belong together
    Platform::ConsoleStream output_;
    Platform::ConsoleStream error_;
};

// The debug sink. The name of the module precedes the line unless the configuration's
// DebugWindowSourcePrefix is 0.
class DebugWindowOutputStreamer final : public IDebugOutStreamerObject {
public:
    DebugWindowOutputStreamer();
    void Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text) override;

private:
    std::u16string prefix_;
};

// The machine's log: type 2 for errors, 1 for warnings, 0 for all else.
class EventlogOutputStreamer final : public IDebugOutStreamerObject {
public:
    void Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text) override;
};

// One XML element a message, in UTF-8, into a stream that the host opens; without one nothing is written.
//
//     <debugout type="ERROR" filter="mymodule">something went wrong</debugout>
class FileOutputStreamer final : public IDebugOutStreamerObject {
public:
    void SetStream(std::unique_ptr<THugeStream> stream);  // null closes the one that is there
    void Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text) override;
    void Close() override;

private:
    CriticalSection section_;
    std::unique_ptr<THugeStream> stream_;
};

struct DebugHistoryEntry {
    std::u16string number;
    std::u16string source;
    std::u16string text;  // "ERROR : [mymodule] something went wrong"
    std::uint32_t threadId;
    TUlmoDateTime time;
};

// The last messages of the process.
class OutputHistoryStreamer final : public IDebugOutStreamerObject {
public:
    static constexpr std::size_t kLimit = 1024;

    void Write(const DebugOutMessage& message, std::u16string_view source, std::u16string_view text) override;
    std::vector<DebugHistoryEntry> Snapshot();  // oldest first

private:
    CriticalSection section_;
    std::deque<DebugHistoryEntry> entries_;
};

}  // namespace Ulmo
