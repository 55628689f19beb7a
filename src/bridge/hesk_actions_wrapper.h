// The sibling product's own library, loaded when it is first needed: it turns that product's buffers and records into
// text and says whether a text is valid. Without it every conversion fails quietly.
//
// Threads: any thread may call at any time. Only loading is guarded; the imported functions must be safe on distinct
// handles.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "OrvActions/OrvEvents.h"
#include "ulmo/critical_section.h"
#include "ulmo/reference_count.h"
#include "ulmo/secure_module_handle.h"

namespace HeskPLC {

// Whether the functions are there, and how often loading has failed, is kept once for the process and not in here.
class HeskActionsWrapper final : public Ulmo::SecureModuleHandle, public Ulmo::VirtualReferenceCountBaseClass {
public:
    ~HeskActionsWrapper() override;

    // Whether the library is loaded with all its functions; if not, tries to load it. A file that is absent costs one
    // query and does not count as an attempt. After ten failed attempts there is no further one.
    bool Load();

    // Each gives our own action text. False when the library is not there or does not understand the input, or when
    // anything goes wrong; nothing is raised. `version` is 1 for an action and 2 for a match action of the sibling;
    // `flag` is passed on.
    bool ConvertTextBuffer(std::u16string_view text, std::uint32_t version, bool flag, std::u16string& output);
    bool ConvertTextBufferA(std::string_view utf8, std::uint32_t version, bool flag, std::u16string& output);
    bool ConvertBinBuffer(std::span<const std::byte> buffer, std::uint32_t version, bool flag, std::u16string& output);
    bool ConvertEventData(const TOrvEventData& record, std::u16string& output);

    void Unload();

private:
    Ulmo::CriticalSection section_;
};

// The wrapper of the process, made on first use; it lives until the library ends.
HeskActionsWrapper& GetHeskActionsWrapper();
void EndHeskActionsWrapper();

}  // namespace HeskPLC
