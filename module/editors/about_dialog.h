// The About dialog of the plug-in: a picture, credits, and the way to the documentation.
#pragma once

namespace sorvanix {

/// Opens the dialog modally, for a click on the title of the shader of this name.
void ShowAbout(const char* shaderName) noexcept;

}  // namespace sorvanix
