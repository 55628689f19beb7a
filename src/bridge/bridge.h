// The bridge to the sibling product as the rest of the library sees it.
#pragma once

namespace HeskPLC {

// Registers the bridge with the readers, which pass it the sibling's input. The sibling's library is loaded later.
void StartBridge();
void EndBridge();

}  // namespace HeskPLC
