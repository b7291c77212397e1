// Rendering a document into a bitmap: what the module asks for when it shows a preview.
#pragma once

#include "host/host.h"

namespace sorvanix::host {

/// Sets the render function of the document table. The picture is as large as the settings ask,
/// within the bitmap, and as good as KeyRenderQuality asks; it goes into the bitmap once it is
/// whole. The thread table's mustStop is asked between tiles. Answers 0 for success, else -1:
/// stopped, no memory, nothing to render into. The tables must outlive all calls.
void InstallDocumentRender(HostTables& tables) noexcept;

}  // namespace sorvanix::host
