// The part of the scene reader that reads materials and the graphs in their channels.
#include <fmt/format.h>

#include <algorithm>

#include "host/channels/material_value.h"
#include "host/scene/scene_reader.h"
#include "host/services/filenames.h"
#include "host/services/input_log.h"
#include "host/services/stream_json.h"

namespace sorvanix::host {
namespace {

namespace fs = std::filesystem;

/// The text of the value that begins at an offset of a text that has been parsed.
std::string_view TextOfValue(std::string_view text, std::size_t offset) {
  int depth = 0;
  bool inText = false;
  for (std::size_t i = offset; i < text.size(); ++i) {
    const char c = text[i];
    if (inText) {
      if (c == '\\') ++i;
      inText = c != '"';
    } else if (c == '"') {
      inText = true;
    } else if (c == '{' || c == '[') {
      ++depth;
    } else if ((c == '}' || c == ']') && --depth == 0) {
      return text.substr(offset, i + 1 - offset);
    }
  }
  return text.substr(offset);
}

bool IsFile(const fs::path& path) {
  std::error_code error;
  return fs::is_regular_file(path, error);
}

}  // namespace

void SceneReader::ReadMaterials(const Place& place) {
  ForEach(place, "materials", [&](const Place& item) {
    if (Members(item, "a material") == nullptr) return;
    auto material = std::shared_ptr<Material>(new Material);
    ReadMaterial(item, *material);
    if (material->name.text.empty()) {
      Fail(item, "a material needs a name");
    } else if (scene_->FindMaterial(material->name.text) != nullptr) {
      Fail(item, fmt::format("there are two materials \"{}\"", Excerpt(material->name.text)));
    }
    scene_->Add(std::move(material));
  });
}

void SceneReader::ReadMaterial(const Place& place, Material& material) {
  std::vector<std::string_view> names = {"channels"};
  AddNames(FieldsOfMaterials(), names);
  ReadFields(place, FieldsOfMaterials(), material);
  if (const Json* given = Find(place, "channels")) {
    ReadChannels(Below(place, "channels", *given), material);
  }
  material.kept = CheckNames(place, "field of a material", names);
}

void SceneReader::ReadChannels(const Place& place, Material& material) {
  if (!IsObject(place, "the channels by their names")) return;
  for (std::size_t i = 0; i < kMaterialChannelCount; ++i) {
    if (const Json* given = Find(place, kChannelNames[i])) {
      ReadChannel(Below(place, kChannelNames[i], *given), material.channels[i]);
    }
  }
  material.keptChannels =
      CheckNames(place, "channel", {kChannelNames.begin(), kChannelNames.end()});
}

void SceneReader::ReadChannel(const Place& place, MaterialChannel& channel) {
  if (!IsObject(place, "a channel")) return;
  std::vector<std::string_view> names = {"graph", "state"};
  AddNames(FieldsOfChannels(), names);
  channel.on = true;  // who names a channel wants to see it
  ReadFields(place, FieldsOfChannels(), channel);
  if (const Json* graph = Find(place, "graph")) ReadGraph(Below(place, "graph", *graph), channel);
  if (const Json* state = Find(place, "state")) {
    const auto values = StreamFromJson(*state);
    if (values || isLater_) channel.state = *state;
    if (!values) Refuse(Below(place, "state", *state), values.error().message);
  }
  channel.kept = CheckNames(place, "field of a channel", names);
}

void SceneReader::ReadGraph(const Place& place, MaterialChannel& channel) {
  channel.graphJson = place.json;
  if (const auto* name = std::get_if<std::string>(&place.json.value)) {
    ReadGraphFile(place, *name, channel);
  } else if (std::holds_alternative<Json::Object>(place.json.value)) {
    ReadGraphText(place, channel);
  } else if (!std::holds_alternative<std::nullptr_t>(place.json.value)) {
    Refuse(place,
           fmt::format("expected a shader or the name of a file, found {}", KindOf(place.json)));
  }
}

void SceneReader::ReadGraphFile(const Place& place, const std::string& name,
                                MaterialChannel& channel) {
  if (const std::string_view wrong = WrongInFilename(name); !wrong.empty()) {
    return Fail(place, std::string(wrong));
  }
  std::vector<fs::path> folders = {file_.parent_path()};
  const bool isMaterial = name.ends_with(".json");
  if (!isMaterial) {
    folders.insert(folders.end(), options_.imageFolders.begin(), options_.imageFolders.end());
  }
  for (const fs::path& folder : folders) {
    const fs::path path = folder / PathFromUtf8(name);
    if (!IsFile(path)) continue;
    if (!isMaterial) {
      InputLog::Note(path);
      channel.graph = MaterialBitmap{name, path};
    } else if (options_.catalogue != nullptr) {
      const auto text = ReadMaterialText(path);
      if (!text) return Fail(place, fmt::format("\"{}\": {}", Excerpt(name), text.error()));
      MaterialReading reading =
          host::ReadMaterial(*text, *options_.catalogue, {path, options_.imageFolders, isLater_});
      for (MaterialProblem& problem : reading.problems) {
        if (problem.file.empty()) problem.file = path;
        AddProblem(place, std::move(problem));
      }
      problems_.AddUntold(reading.untold);
      if (reading.material) channel.graph = std::move(*reading.material);
    }
    return;
  }
  Fail(place, fmt::format("there is no file \"{}\"", Excerpt(name)));
}

void SceneReader::ReadGraphText(const Place& place, MaterialChannel& channel) {
  if (options_.catalogue == nullptr) return;
  const std::string_view text = TextOfValue(text_, place.json.offset);
  MaterialReading reading =
      host::ReadMaterial(text, *options_.catalogue, {file_, options_.imageFolders, isLater_});
  for (MaterialProblem& problem : reading.problems) {
    if (problem.file.empty()) {  // in this text: told by its place in the whole
      problem.pointer = place.pointer + problem.pointer;
    }
    AddProblem(place, std::move(problem));
  }
  problems_.AddUntold(reading.untold);
  if (reading.material) channel.graph = std::move(*reading.material);
}

}  // namespace sorvanix::host
