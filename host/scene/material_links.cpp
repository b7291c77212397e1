#include "host/scene/material_links.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "host/channels/channel_link.h"
#include "host/channels/graph_spelling.h"
#include "host/dialogs/import_confirmation.h"
#include "host/scene/scene_format.h"
#include "host/services/filenames.h"
#include "host/services/stream_json.h"

namespace sorvanix::host {
namespace {

namespace fs = std::filesystem;

/// Names of bitmaps: in files they count from the scene's folder on, or stand in a folder of
/// images; in links they are ways to the files.
class BitmapNames {
 public:
  explicit BitmapNames(const Scene& scene) : scene_(scene), folder_(scene.file.parent_path()) {}

  /// As the reader of graphs searches for them.
  std::string WayTo(const std::string& name) const {
    const fs::path written = PathFromUtf8(name);
    for (const fs::path& folder : scene_.imageFolders) {
      std::error_code error;
      if (fs::is_regular_file(folder_ / written, error)) break;
      if (fs::is_regular_file(folder / written, error)) return Utf8FromPath(folder / written);
    }
    return Utf8FromPath(folder_ / written);
  }
  std::string NameOf(const std::string& way) const {
    if (scene_.file.empty()) return way;
    const fs::path file = PathFromUtf8(way);
    std::string name = NameFrom(folder_, file);
    if (!IsOutside(name)) return name;
    for (const fs::path& folder : scene_.imageFolders) {
      std::string inImages = NameFrom(folder, file);
      if (!IsOutside(inImages)) return inImages;
    }
    return name;
  }

 private:
  static bool IsOutside(const std::string& name) {
    return name.starts_with("../") || PathFromUtf8(name).is_absolute();
  }

  const Scene& scene_;
  const fs::path folder_;
};

/// Gives every bitmap in a shader's values, and in those behind it, the name that `renamed`
/// answers.
template <class Renamed>
void RenameBitmaps(std::vector<StreamValue>& values, const Renamed& renamed) {
  for (StreamValue& value : values) {
    auto* link = std::get_if<StreamLink>(&value.value);
    if (link == nullptr) continue;
    if (!link->filename.empty()) link->filename = renamed(link->filename);
    RenameBitmaps(link->values, renamed);
  }
}

/// The same of a shader's parameters.
template <class Renamed>
Container WithBitmapsRenamed(const Container& parameters, const Renamed& renamed) {
  Container result;
  for (const auto& [key, value] : parameters) {
    if (const auto* filename = std::get_if<Filename>(&value)) {
      result.Set(key, Filename(renamed(filename->path)));
    } else if (const auto* nested = std::get_if<NestedContainer>(&value)) {
      result.Set(key, NestedContainer(WithBitmapsRenamed(**nested, renamed)));
    } else {
      result.Set(key, value);
    }
  }
  return result;
}

/// What message MessageSetParameters tells a link; nothing for a channel without a graph.
std::optional<Container> DescriptionOf(const MaterialChannel::Graph& graph) {
  Container description;
  if (const auto* node = std::get_if<MaterialNode>(&graph)) {
    description.Set(KeyLinkPluginId, Word{node->shader->id});
    description.Set(KeyLinkParameters, NestedContainer(ContainerOf(*node)));
  } else if (const auto* bitmap = std::get_if<MaterialBitmap>(&graph)) {
    description.Set(KeyLinkPluginId, Word{0});
    description.Set(KeyLinkFilename, Filename(Utf8FromPath(bitmap->file)));
  } else {
    return std::nullopt;
  }
  return description;
}

std::vector<StreamValue> WrittenBy(const Shader& shader) {
  Stream stream;
  shader.Write(stream);
  return stream.Values();
}

/// The number with which a shader's values begin: the version of their form.
std::optional<std::int32_t> MarkerOf(const std::vector<StreamValue>& values) {
  if (values.empty()) return std::nullopt;
  const auto* marker = std::get_if<std::int32_t>(&values.front().value);
  return marker == nullptr ? std::nullopt : std::optional(*marker);
}

/// Whether a later program wrote these values of a shader, or those of one behind it: then they may
/// hold more than the shader would read.
bool IsLater(const std::vector<StreamValue>& values, const Shader& shader) {
  const auto marker = MarkerOf(values), known = MarkerOf(WrittenBy(shader));
  if (marker && known && *marker > *known) return true;
  return std::any_of(values.begin(), values.end(), [](const StreamValue& value) {
    const auto* inner = std::get_if<StreamLink>(&value.value);
    Link link;
    return inner != nullptr && inner->pluginId > 0 && link.HoldShader(inner->pluginId) &&
           IsLater(inner->values, *link.HeldShader());
  });
}

/// Whether a shader that is not known here stands somewhere in these values.
bool HoldsUnknown(const std::vector<StreamValue>& values) {
  return std::any_of(values.begin(), values.end(), [](const StreamValue& value) {
    const auto* inner = std::get_if<StreamLink>(&value.value);
    Link link;
    return inner != nullptr && inner->pluginId > 0 &&
           (!link.HoldShader(inner->pluginId) || HoldsUnknown(inner->values));
  });
}

/// Takes back the values that the shader itself wrote, which say more than its parameters do; false
/// when it cannot.
bool Restore(Shader& shader, const Json& state, const BitmapNames& names) {
  auto values = StreamFromJson(state);
  if (!values || IsLater(*values, shader)) return false;
  RenameBitmaps(*values, [&](const std::string& name) { return names.WayTo(name); });
  Stream stream(std::move(*values));
  return shader.Read(stream);
}

/// Fills a link from its graph. A graph `withState` is not confirmed: what follows from its
/// parameters is read too.
bool TakeGraph(Link& link, Container& description, bool withState) {
  std::optional<UnconfirmedImport> unconfirmed;
  if (withState) unconfirmed.emplace();
  return link.Message(MessageSetParameters, description) != 0;
}

/// Why the channel has no link, or not all that was stored of it; or an empty text.
std::string MakeLink(MaterialChannel& channel, const BitmapNames& names) {
  auto description = DescriptionOf(channel.graph);
  if (!description) return {};
  auto link = std::shared_ptr<Link>(new Link);
  const bool hasState = !std::holds_alternative<std::nullptr_t>(channel.state.value);
  if (!TakeGraph(*link, *description, hasState)) return "its shader cannot be had";
  channel.link = link;
  Shader* shader = link->HeldShader();
  if (shader == nullptr) return {};
  if (hasState) {
    const auto spelled = [&](const Container& parameters) {
      return WithBitmapsRenamed(parameters,
                                [&](const std::string& way) { return names.NameOf(way); });
    };
    const Container told = spelled(shader->Parameters());
    channel.isLaterState = !Restore(*shader, channel.state, names);
    if (channel.isLaterState) {
      // What a reading that failed has left is nothing to go by.
      link->Clear();
      if (!TakeGraph(*link, *description, false)) return "its shader cannot be had";
      shader = link->HeldShader();
    }
    // Of a shader that is not known here the graph says more than could be spelled anew.
    channel.isGraphStale =
        !HoldsUnknown(WrittenBy(*shader)) && !(spelled(shader->Parameters()) == told);
  }
  channel.linkedValues = WrittenBy(*shader);
  if (!channel.isLaterState) return {};
  return "its state is not of a form that is known here; the parameters of its graph are taken";
}

/// What the shader of a link stores, and how a file spells it.
void StoreState(MaterialChannel& channel, const ShaderCatalogue* catalogue, const Scene& scene) {
  std::vector<StreamValue> values = WrittenBy(*channel.link->HeldShader());
  if (values.empty()) return;  // it stores nothing
  const bool isEdited = values != channel.linkedValues;
  const bool isSpelled = !std::holds_alternative<std::nullptr_t>(channel.graphJson.value);
  if (catalogue != nullptr && (isEdited || channel.isGraphStale || !isSpelled)) {
    channel.graphJson = SpelledGraph(*channel.link, *catalogue, scene.file.parent_path());
    channel.isGraphStale = false;
  }
  if (channel.isLaterState && !isEdited) return;
  channel.linkedValues = values;
  const BitmapNames names(scene);
  RenameBitmaps(values, [&](const std::string& way) { return names.NameOf(way); });
  channel.state = StreamToJson(values);
  channel.isLaterState = false;
}

}  // namespace

Json SpelledGraph(Link& link, const ShaderCatalogue& catalogue, const fs::path& folder) {
  Container description;
  link.Message(MessageGetParameters, description);
  return SpelledLink(description, catalogue, folder);
}

Link& LinkOf(MaterialChannel& channel) {
  if (channel.link == nullptr) channel.link = std::shared_ptr<Link>(new Link);
  return *channel.link;
}

std::vector<std::string> LinkMaterials(Scene& scene) {
  std::vector<std::string> problems;
  for (const auto& material : scene.materials) {
    for (std::size_t i = 0; i < kMaterialChannelCount; ++i) {
      MaterialChannel& channel = material->channels[i];
      if (channel.link == nullptr) {
        if (const std::string problem = MakeLink(channel, BitmapNames(scene)); !problem.empty()) {
          problems.push_back(fmt::format("material \"{}\", channel {}: {}", material->name.text,
                                         kChannelNames[i], problem));
        }
      }
      if (channel.link == nullptr) continue;
      if (Shader* shader = channel.link->HeldShader()) {
        shader->Instance().channel = static_cast<std::int32_t>(i);
      }
    }
  }
  return problems;
}

void StoreStates(Scene& scene, const ShaderCatalogue* catalogue) {
  for (const auto& material : scene.materials) {
    for (MaterialChannel& channel : material->channels) {
      if (channel.link == nullptr || channel.link->HeldShader() == nullptr) continue;
      StoreState(channel, catalogue, scene);
    }
  }
}

}  // namespace sorvanix::host
