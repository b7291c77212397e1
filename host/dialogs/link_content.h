// What a user puts into the link of a dialog: a shader, a bitmap, or nothing.
#pragma once

#include <optional>

#include "host/channels/channel_link.h"
#include "host/channels/material_file.h"
#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// Fills a link with what material files write for an input: a graph, the name of a bitmap or of
/// another material file, or null. The answer is what is wrong, with a pointer below the content;
/// then the link is as it was. Previews that may read the link are stopped before.
std::optional<JsonError> FillLink(Link& link, const Json& content, const ShaderCatalogue& catalogue,
                                  const MaterialPlaces& places);

}  // namespace sorvanix::host
