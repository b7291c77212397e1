#include "apps/studio/document/graph_edit.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <utility>

#include "apps/studio/document/scene_edit.h"
#include "host/channels/material_value.h"
#include "host/services/json_numbers.h"

namespace sorvanix::studio {

namespace {

constexpr std::string_view kChannels = "channels", kGraph = "graph", kState = "state", kOn = "on",
                           kStrength = "strength", kColour = "colour";

const Json* FindChannel(const Json& material, const std::string& channel) {
  const Json* channels = material.Find(kChannels);
  return channels != nullptr ? channels->Find(channel) : nullptr;
}

// Made when it is not there.
Json& ChannelOf(Json& material, const std::string& channel) {
  Json* channels = FindMember(material, kChannels);
  if (channels == nullptr) channels = &SetMember(material, kChannels, Json(Json::Object()));
  Json* found = FindMember(*channels, channel);
  return found != nullptr ? *found : SetMember(*channels, channel, Json(Json::Object()));
}

// What holds the place: the channel, or the shader whose input it is; and its name there.
struct Slot {
  Json* holder = nullptr;  // null: the place is not there
  std::string_view name;
};

Slot SlotOf(Json& material, const GraphPlace& place) {
  Slot slot = {&ChannelOf(material, place.channel), kGraph};
  for (const std::string& input : place.inputs) {
    Json* const shader = FindMember(*slot.holder, slot.name);
    if (shader == nullptr || !std::holds_alternative<Json::Object>(shader->value)) return {};
    slot = {shader, input};
  }
  return slot;
}

tl::unexpected<std::string> Nothing(const GraphPlace& place) {
  return tl::unexpected(fmt::format("there is nothing at {}", Describe(place)));
}

// Puts a graph there, or empties the place for null.
ChangedMaterial Put(Json material, const GraphPlace& place, Json graph) {
  const Slot slot = SlotOf(material, place);
  if (slot.holder == nullptr) {
    return tl::unexpected(fmt::format("there is no shader that has {}", Describe(place)));
  }
  if (IsNull(graph)) {
    RemoveMember(*slot.holder, slot.name);
  } else {
    SetMember(*slot.holder, slot.name, std::move(graph));
  }
  RemoveMember(ChannelOf(material, place.channel), kState);
  return material;
}

const Json* FirstInput(const Json& shader, const host::ShaderDescription& description) {
  if (description.inputs.empty()) return nullptr;
  const Json* input = shader.Find(description.inputs.front().name);
  return input != nullptr && !IsNull(*input) ? input : nullptr;
}

}  // namespace

GraphPlace GraphPlace::Below(const std::string& input) const {
  GraphPlace below = *this;
  below.inputs.push_back(input);
  return below;
}

bool GraphPlace::Holds(const GraphPlace& other) const {
  return channel == other.channel && inputs.size() <= other.inputs.size() &&
         std::equal(inputs.begin(), inputs.end(), other.inputs.begin());
}

std::string Describe(const GraphPlace& place) {
  if (place.inputs.empty()) return place.channel;
  return fmt::format("{}: {}", place.channel, fmt::join(place.inputs, ", "));
}

const Json* FindGraph(const Json& material, const GraphPlace& place) {
  const Json* channel = FindChannel(material, place.channel);
  const Json* graph = channel != nullptr ? channel->Find(kGraph) : nullptr;
  for (const std::string& input : place.inputs) {
    if (graph != nullptr) graph = graph->Find(input);
  }
  return graph != nullptr && !IsNull(*graph) ? graph : nullptr;
}

const host::ShaderDescription* FindShader(const Json& material, const GraphPlace& place,
                                          const host::ShaderCatalogue& catalogue) {
  const Json* graph = FindGraph(material, place);
  return graph != nullptr ? ShaderOf(*graph, catalogue) : nullptr;
}

Json NewShader(const host::ShaderDescription& shader) {
  return Json(Json::Object{{"shader", Json(shader.name)}});
}

ChangedMaterial PlaceGraph(Json material, const GraphPlace& place, Json graph) {
  auto changed = Put(std::move(material), place, std::move(graph));
  if (changed) RemoveMember(ChannelOf(*changed, place.channel), kOn);
  return changed;
}

ChangedMaterial PutEdited(Json material, const std::string& channel, Json graph, Json state) {
  auto changed = Put(std::move(material), {.channel = channel, .inputs = {}}, std::move(graph));
  if (changed && !IsNull(state)) {
    SetMember(ChannelOf(*changed, channel), kState, std::move(state));
  }
  return changed;
}

ChangedMaterial ReplaceShader(Json material, const GraphPlace& place,
                              const host::ShaderDescription& shader,
                              const host::ShaderCatalogue& catalogue) {
  Json fresh = NewShader(shader);
  if (const host::ShaderDescription* former = FindShader(material, place, catalogue)) {
    const Json& graph = *FindGraph(material, place);
    for (std::size_t i = 0; i < former->inputs.size(); ++i) {
      const Json* content = graph.Find(former->inputs[i].name);
      if (content == nullptr || IsNull(*content)) continue;
      if (shader.FindInput(former->inputs[i].name) != nullptr) {
        SetMember(fresh, former->inputs[i].name, *content);
      } else if (i < shader.inputs.size()) {
        SetMember(fresh, shader.inputs[i].name, *content);
      }
    }
  }
  return PlaceGraph(std::move(material), place, std::move(fresh));
}

ChangedMaterial WrapInFilter(Json material, const GraphPlace& place,
                             const host::ShaderDescription& filter) {
  const Json* graph = FindGraph(material, place);
  if (graph == nullptr) return Nothing(place);
  if (filter.inputs.empty()) {
    return tl::unexpected(fmt::format("{} has no input to wrap anything in", filter.name));
  }
  Json wrapped = NewShader(filter);
  SetMember(wrapped, filter.inputs.front().name, *graph);
  return Put(std::move(material), place, std::move(wrapped));
}

ChangedMaterial RemoveGraph(Json material, const GraphPlace& place) {
  if (FindGraph(material, place) == nullptr) return Nothing(place);
  return Put(std::move(material), place, Json());
}

ChangedMaterial UnwrapFilter(Json material, const GraphPlace& place,
                             const host::ShaderCatalogue& catalogue) {
  const Json* graph = FindGraph(material, place);
  if (graph == nullptr) return Nothing(place);
  const host::ShaderDescription* shader = FindShader(material, place, catalogue);
  const Json* input = shader != nullptr ? FirstInput(*graph, *shader) : nullptr;
  if (input == nullptr) {
    return tl::unexpected(fmt::format("nothing fills the first input of {}", Describe(place)));
  }
  Json content = *input;
  return Put(std::move(material), place, std::move(content));
}

ChangedMaterial MoveShader(Json material, const GraphPlace& from, const GraphPlace& to) {
  const Json* graph = FindGraph(material, from);
  if (graph == nullptr) return Nothing(from);
  if (from.Holds(to)) return tl::unexpected(std::string("a shader cannot stand inside itself"));
  Json content = *graph;
  if (to.Holds(from)) return PlaceGraph(std::move(material), to, std::move(content));
  return RemoveGraph(std::move(material), from).and_then([&](Json&& without) {
    return PlaceGraph(std::move(without), to, std::move(content));
  });
}

Json SwitchChannel(Json material, const std::string& channel, bool on) {
  Json& switched = ChannelOf(material, channel);
  const auto* members = std::get_if<Json::Object>(&switched.value);
  if (members == nullptr) return material;  // of a form of later programs, which is kept
  RemoveMember(switched, kOn);
  if (on) return material;
  if (members->empty()) {
    RemoveMember(*FindMember(material, kChannels), channel);
  } else {
    SetMember(switched, kOn, Json(false));
  }
  return material;
}

bool HasState(const Json& material, const std::string& channel) {
  const Json* found = FindChannel(material, channel);
  const Json* state = found != nullptr ? found->Find(kState) : nullptr;
  return state != nullptr && !IsNull(*state);
}

bool IsChannelOn(const Json& material, const std::string& channel) {
  const Json* found = FindChannel(material, channel);
  const Json* on = found != nullptr ? found->Find(kOn) : nullptr;
  const auto* truth = on != nullptr ? std::get_if<bool>(&on->value) : nullptr;
  return found != nullptr && (truth == nullptr || *truth);
}

float StrengthOf(const Json& material, const std::string& channel) {
  const Json* found = FindChannel(material, channel);
  const Json* strength = found != nullptr ? found->Find(kStrength) : nullptr;
  return strength != nullptr ? host::FloatIn(*strength).value_or(1) : 1;
}

Vector ColourOf(const Json& material, const std::string& channel) {
  const Vector white = {1, 1, 1};
  const Json* found = FindChannel(material, channel);
  const Json* colour = found != nullptr ? found->Find(kColour) : nullptr;
  if (colour == nullptr) return white;
  host::ShaderParameter parameter;
  parameter.type = host::ParameterType::Vector;
  parameter.unit = "colour";
  const auto value = host::ReadParameterValue(parameter, *colour);
  return value ? std::get<Vector>(value->value) : white;
}

Json SetStrength(Json material, const std::string& channel, float strength) {
  Json& changed = ChannelOf(material, channel);
  if (strength == 1) {
    RemoveMember(changed, kStrength);
  } else {
    SetMember(changed, kStrength, host::JsonOf(strength));
  }
  return material;
}

Json SetColour(Json material, const std::string& channel, const Vector& colour) {
  Json& changed = ChannelOf(material, channel);
  if (colour.x == 1 && colour.y == 1 && colour.z == 1) {
    RemoveMember(changed, kColour);
  } else {
    SetMember(changed, kColour, host::JsonOf(colour));
  }
  return material;
}

}  // namespace sorvanix::studio
