// From what a scene file says of a channel to the shaders that fill it.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "host/scene/scene.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// The link of a channel, made empty when there is none. Throws std::bad_alloc.
Link& LinkOf(MaterialChannel& channel);

/// What fills a link, spelled as SpelledLink does.
Json SpelledGraph(Link& link, const ShaderCatalogue& catalogue,
                  const std::filesystem::path& folder);

/// Makes the links of all channels that have a graph and no link yet, takes back what their shaders
/// once wrote, and tells every outermost shader the number of its channel. To be called before a
/// render, while LinkedShaders knows the module's. The answers are what could not be made, one line
/// each: such a channel has no link, or, when a later program wrote its state, one that is made of
/// its graph alone.
std::vector<std::string> LinkMaterials(Scene& scene);

/// Keeps what the outermost shaders of all links store of themselves, for saving the scene. A
/// shader that stores nothing keeps the state that it was given, and so does one whose state is of
/// a later program, as long as nobody edits it. A graph that does not say what its shader does is
/// spelled anew by the catalogue, if there is one. Throws std::bad_alloc.
void StoreStates(Scene& scene, const ShaderCatalogue* catalogue = nullptr);

}  // namespace sorvanix::host
