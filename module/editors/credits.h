// The credits of the About dialog: lines of text that scroll over a picture.
#pragma once

#include "module/shell/host_dialog.h"

namespace sorvanix {

/// The band of the picture in which the credits scroll: rows from the first up to the last.
inline constexpr std::int32_t kCreditsTop = 130;
inline constexpr std::int32_t kCreditsBottom = 228;

/// The row below it where the caption begins.
inline constexpr std::int32_t kCaptionTop = 234;

/// How far the credits scroll, in pixels, until they begin anew.
std::int32_t CreditsLength() noexcept;

/// Darkens the band of a picture and draws the credits over it, scrolled up by an offset from 0 to
/// below CreditsLength(). The first line then stands that far above the lower edge of the band.
void DrawCredits(HostBitmap* bitmap, std::int32_t offset) noexcept;

/// Writes the name of a shader of the plug-in below the band.
void DrawCaption(HostBitmap* bitmap, const char* shaderName) noexcept;

}  // namespace sorvanix
