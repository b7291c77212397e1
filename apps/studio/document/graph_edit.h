// The graphs in a material's channels as trees to be changed: place, replace, wrap, remove, move.
//
// All functions take a material as a scene file spells it and answer the changed one. What a
// shader once stored of itself ("state") describes the graph as it was then, so every change of a
// channel's graph drops it.
#pragma once

#include <string>
#include <tl/expected.hpp>
#include <vector>

#include <sorvanix/types.h>

#include "apps/studio/document/json_edit.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::studio {

/// A place where a shader may stand: a channel, and the way down from its outermost shader by the
/// names of inputs.
struct GraphPlace {
  std::string channel;
  std::vector<std::string> inputs;

  GraphPlace Below(const std::string& input) const;
  /// Whether `other` is this place or one below it.
  bool Holds(const GraphPlace& other) const;
  bool operator==(const GraphPlace&) const = default;
};

/// "bump: input, maskInput": the place in words.
std::string Describe(const GraphPlace& place);

/// What stands at the place: a shader, or the name of a file. Null for nothing, and for a place
/// that is not there.
const Json* FindGraph(const Json& material, const GraphPlace& place);

/// The description of the shader that stands there; null for nothing and for a file.
const host::ShaderDescription* FindShader(const Json& material, const GraphPlace& place,
                                          const host::ShaderCatalogue& catalogue);

/// A shader with its defaults.
Json NewShader(const host::ShaderDescription& shader);

/// The error of all is one line.
using ChangedMaterial = tl::expected<Json, std::string>;

/// Puts a graph at a place, in place of what stands there. A channel that was off is on then.
ChangedMaterial PlaceGraph(Json material, const GraphPlace& place, Json graph);

/// Puts a channel's graph after a dialog, with what its outermost shader stored, or null. The
/// channel stays on or off.
ChangedMaterial PutEdited(Json material, const std::string& channel, Json graph, Json state);

/// Exchanges the shader that stands there: what fills its inputs goes over to the new one's, by
/// their names, then in their order, as far as it has inputs.
ChangedMaterial ReplaceShader(Json material, const GraphPlace& place,
                              const host::ShaderDescription& shader,
                              const host::ShaderCatalogue& catalogue);

/// Puts a filter there, and what stood there into the filter's first input.
ChangedMaterial WrapInFilter(Json material, const GraphPlace& place,
                             const host::ShaderDescription& filter);

/// Empties the place.
ChangedMaterial RemoveGraph(Json material, const GraphPlace& place);

/// Takes a filter away and leaves what fills its first input, the opposite of WrapInFilter.
ChangedMaterial UnwrapFilter(Json material, const GraphPlace& place,
                             const host::ShaderCatalogue& catalogue);

/// Takes a graph from one place to another, where it replaces what stands there.
ChangedMaterial MoveShader(Json material, const GraphPlace& from, const GraphPlace& to);

/// Turns a channel on or off. One that says nothing else is left out of the file while it is off.
Json SwitchChannel(Json material, const std::string& channel, bool on);
/// Whether the file holds what the outermost shader of a channel stored.
bool HasState(const Json& material, const std::string& channel);
bool IsChannelOn(const Json& material, const std::string& channel);

/// What a channel's values are multiplied by: 1 and white unless the material says otherwise.
float StrengthOf(const Json& material, const std::string& channel);
Vector ColourOf(const Json& material, const std::string& channel);
/// What is initial is left out of the file.
Json SetStrength(Json material, const std::string& channel, float strength);
Json SetColour(Json material, const std::string& channel, const Vector& colour);

}  // namespace sorvanix::studio
