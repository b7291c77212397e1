// A link's content spelled as a scene file spells graphs.
#pragma once

#include <filesystem>

#include "host/channels/channel_link.h"
#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// The shader that a link holds, with those parameters that differ from their initial values, and
/// what stands in its inputs; null for a link without a shader that the catalogue knows. Bitmaps
/// are named from `folder` on. What a scene file cannot say is left out: bitmaps that are not
/// there, ramps without knots, shaders that are unread.
Json GraphOf(Link& link, const ShaderCatalogue& catalogue, const std::filesystem::path& folder);

}  // namespace sorvanix::host
