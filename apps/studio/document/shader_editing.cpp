#include "apps/studio/document/shader_editing.h"

#include <fmt/format.h>
#include <sorvanix/ids.h>

#include <algorithm>
#include <vector>

#include "apps/studio/document/scene_edit.h"
#include "host/channels/channel_link.h"
#include "host/scene/material_links.h"
#include "host/scene/scene_file.h"
#include "host/scene/scene_format.h"

namespace sorvanix::studio {

namespace {

using host::Container;
using host::NestedContainer;

// One shader on the way from the outermost one to an input, and the key of the input.
struct Step {
  Word shader;
  std::int32_t input;
};

std::size_t ChannelNumber(const std::string& channel) {
  const auto found = std::find(host::kChannelNames.begin(), host::kChannelNames.end(), channel);
  return static_cast<std::size_t>(found - host::kChannelNames.begin());
}

// A scene of a later version may have others.
bool IsKnown(const std::string& channel) {
  return ChannelNumber(channel) < host::kChannelNames.size();
}

std::vector<host::StreamValue> StoredBy(const host::Shader& shader) {
  host::Stream stream;
  shader.Write(stream);
  return stream.Values();
}

// What a link tells of itself leaves empty inputs out; to empty those of another link they must be
// told.
void TellEmptyInputs(Container& link, const host::ShaderCatalogue& catalogue) {
  const auto* shader = catalogue.Find(static_cast<std::int32_t>(link.GetInt(KeyLinkPluginId)));
  Container* parameters = link.GetContainer(KeyLinkParameters);
  if (shader == nullptr || parameters == nullptr) return;
  for (const host::ShaderInput& input : shader->inputs) {
    Container* inner = parameters->GetContainer(input.key);
    if (inner != nullptr && inner->IndexOf(KeyLinkPluginId) >= 0) {
      TellEmptyInputs(*inner, catalogue);
      continue;
    }
    Container empty;
    empty.Set(KeyLinkPluginId, Word{host::StreamLink::kEmpty});
    parameters->Set(input.key, NestedContainer(empty));
  }
}

// What a link told of what stands in an input of an input of ..., and the way there; null when it
// is no shader.
const Container* ContentAt(const Container& link, const std::vector<std::string>& inputs,
                           const host::ShaderCatalogue& catalogue, std::vector<Step>& way) {
  const Container* content = &link;
  for (const std::string& name : inputs) {
    const Word id = content->GetInt(KeyLinkPluginId);
    const auto* shader = catalogue.Find(static_cast<std::int32_t>(id));
    const auto* input = shader != nullptr ? shader->FindInput(name) : nullptr;
    const Container* parameters = content->GetContainer(KeyLinkParameters);
    if (input == nullptr || parameters == nullptr) return nullptr;
    way.push_back({id, input->key});
    content = parameters->GetContainer(input->key);
    if (content == nullptr) return nullptr;
  }
  return content;
}

// The shader of an input belongs to the one around it, so its dialog runs on a copy. What came of
// it is told to the outermost shader, which keeps all else that it has. False when nothing came.
bool EditInput(host::Link& outermost, const GraphPlace& place, const EditingPlace& with) {
  Container told;
  outermost.Message(MessageGetParameters, told);
  std::vector<Step> way;
  const Container* content = ContentAt(told, place.inputs, with.catalogue, way);
  host::Link copy;
  Container description;
  if (content != nullptr) description.Assign(*content);
  copy.Message(MessageSetParameters, description);
  host::Shader* const shader = copy.HeldShader();
  if (shader == nullptr) return false;
  shader->Instance().channel = outermost.HeldShader()->Channel();
  if (!with.editor.Edit(*shader)) return false;

  Container edited;
  copy.Message(MessageGetParameters, edited);
  TellEmptyInputs(edited, with.catalogue);
  for (auto step = way.rbegin(); step != way.rend(); ++step) {
    Container parameters, around;
    parameters.Set(step->input, NestedContainer(edited));
    around.Set(KeyLinkPluginId, step->shader);
    around.Set(KeyLinkParameters, NestedContainer(parameters));
    edited.Assign(Container());
    for (const auto& [key, value] : around) edited.Set(key, value);
  }
  return outermost.Message(MessageSetParameters, edited) != 0;
}

// `after`, with the former spelling of all that is as it was `before`: names of material files,
// numbers as the user wrote them, members that only a later program knows. Null: nothing is.
Json Respell(const Json& former, const Json* before, const Json& after,
             const host::ShaderCatalogue& catalogue) {
  const auto same = [](const Json* first, const Json* second) {
    return first == nullptr || second == nullptr ? first == second : SameJson(*first, *second);
  };
  if (before != nullptr && SameJson(*before, after)) return former;
  const host::ShaderDescription* shader = ShaderOf(after, catalogue);
  if (shader == nullptr || ShaderOf(former, catalogue) != shader) return after;
  Json spelled = former;
  const auto take = [&](const std::string& name) {
    const Json* was = before != nullptr ? before->Find(name) : nullptr;
    const Json* is = after.Find(name);
    if (before != nullptr && same(was, is)) return;
    if (is == nullptr) return RemoveMember(spelled, name);
    const Json* spelling = former.Find(name);
    SetMember(spelled, name,
              Respell(spelling != nullptr ? *spelling : Json(), was, *is, catalogue));
  };
  for (const host::ShaderParameter& parameter : shader->parameters) take(parameter.name);
  for (const host::ShaderInput& input : shader->inputs) take(input.name);
  return spelled;
}

host::SceneReading ReadAlone(const Json& material, const Json& scene,
                             const std::filesystem::path& file,
                             const host::ShaderCatalogue& catalogue) {
  return host::ReadScene(host::WriteJson(SceneOf(material, scene), -1), file,
                         {.catalogue = &catalogue});
}

}  // namespace

tl::expected<std::optional<EditedGraph>, std::string> EditShader(const Json& material,
                                                                 const GraphPlace& place,
                                                                 const EditingPlace& with) {
  if (!IsKnown(place.channel) || FindShader(material, place, with.catalogue) == nullptr) {
    return tl::unexpected(fmt::format("there is no shader at {}", Describe(place)));
  }
  const auto reading = ReadAlone(material, with.scene, with.file, with.catalogue);
  if (reading.scene == nullptr) return tl::unexpected(FirstError(reading));
  const auto problems = host::LinkMaterials(*reading.scene);
  auto& channel = reading.scene->materials.front()->channels[ChannelNumber(place.channel)];
  host::Link& outermost = host::LinkOf(channel);
  if (outermost.HeldShader() == nullptr) {
    return tl::unexpected(problems.empty() ? "its shader cannot be had" : problems.front());
  }
  const auto spelled = [&] {
    return host::SpelledGraph(outermost, with.catalogue, with.file.parent_path());
  };
  const Json before = spelled();
  const auto stored = StoredBy(*outermost.HeldShader());
  const bool isConfirmed = place.inputs.empty() ? with.editor.Edit(*outermost.HeldShader())
                                                : EditInput(outermost, place, with);
  const Json after = spelled();
  if (!isConfirmed || (SameJson(before, after) && StoredBy(*outermost.HeldShader()) == stored)) {
    return std::nullopt;
  }
  const Json* known = channel.isGraphStale ? nullptr : &before;
  const GraphPlace whole = {.channel = place.channel, .inputs = {}};
  Json graph = Respell(*FindGraph(material, whole), known, after, with.catalogue);
  host::StoreStates(*reading.scene);
  return EditedGraph{.graph = std::move(graph), .state = channel.state};
}

Json WithStoredGraph(Json material, const std::string& channel, const Json& scene,
                     const std::filesystem::path& file, const host::ShaderCatalogue& catalogue) {
  const GraphPlace whole = {.channel = channel, .inputs = {}};
  const Json* graph = FindGraph(material, whole);
  if (graph == nullptr || !IsKnown(channel) || !HasState(material, channel)) return material;
  const auto reading = ReadAlone(material, scene, file, catalogue);
  if (reading.scene == nullptr) return material;
  // What cannot be taken back is not taken back by a render either.
  [[maybe_unused]] const auto problems = host::LinkMaterials(*reading.scene);
  auto& read = reading.scene->materials.front()->channels[ChannelNumber(channel)];
  if (!read.isGraphStale || read.isLaterState) return material;
  Json spelled =
      Respell(*graph, nullptr,
              host::SpelledGraph(host::LinkOf(read), catalogue, file.parent_path()), catalogue);
  return PutEdited(material, channel, std::move(spelled), {}).value_or(material);
}

}  // namespace sorvanix::studio
