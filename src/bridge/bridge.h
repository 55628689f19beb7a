// The bridge to the sibling product as the rest of the library sees it.
#pragma once

namespace HeskPLC {

// Makes the bridge ready and registers it with the readers, which hand it what is the sibling's.
void StartBridge();
void EndBridge();

}  // namespace HeskPLC
