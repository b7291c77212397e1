// Bitmaps as textures, through OpenImageIO's texture system: decoded tile by tile into a cache that
// all textures share, and filtered over mip levels, which are made on the fly.
#pragma once

#include "host/channels/texture.h"

namespace sorvanix::host {

/// Opens an image file of any format that OpenImageIO reads; a TextureLoader.
///
/// A texel's colour stands at its centre, ((x + 0.5) / width, (y + 0.5) / height), and is met there
/// exactly by a sample of one texel or less; between centres it is blended bilinearly. A sample
/// spans twice its delta, plus the blur. Beyond 0..1 the picture repeats where the tag's flag says
/// tile, every other time mirrored where it says mirrored too; else its border goes on.
tl::expected<TexturePointer, std::string> OpenBitmapTexture(const std::filesystem::path& file);

}  // namespace sorvanix::host
