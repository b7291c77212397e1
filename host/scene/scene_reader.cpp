#include "host/scene/scene_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/channels/material_value.h"
#include "host/scene/document_file.h"

namespace sorvanix::host {
namespace {

/// What is wrong with a number by the field's rule; empty for nothing.
std::string BeyondLimits(double number, const FieldRule& rule) {
  if (rule.least && number < *rule.least) {
    return fmt::format("{} is below the least value, {}", number, *rule.least);
  }
  if (rule.greatest && number > *rule.greatest) {
    return fmt::format("{} is above the greatest value, {}", number, *rule.greatest);
  }
  return {};
}

}  // namespace

SceneReading SceneReader::Read() {
  const auto json = ParseJson(text_);
  if (json) {
    scene_ = std::make_unique<Scene>();
    scene_->file = file_;
    scene_->imageFolders = options_.imageFolders;
    ReadScene({*json, {}});
  } else {
    Json place;
    place.offset = json.error().offset;
    Fail({place, json.error().pointer}, json.error().message);
  }
  if (problems_.HasErrors()) scene_ = nullptr;
  problems_.Place(0, text_);
  return {.scene = std::move(scene_), .problems = problems_.Take(), .untold = problems_.Untold()};
}

void SceneReader::ReadScene(const Place& place) {
  if (Members(place, "a scene") == nullptr || !CheckFormat(place)) return;
  std::vector<std::string_view> names = {"format", "version",   "$schema",
                                         "camera", "materials", "objects"};
  AddNames(FieldsOfScenes(), names);
  ReadFields(place, FieldsOfScenes(), *scene_);
  if (const Json* camera = Find(place, "camera")) ReadCamera(Below(place, "camera", *camera));
  ReadMaterials(place);
  ForEach(place, "objects", [&](const Place& item) { ReadObject(item, scene_->root); });
  scene_->kept = CheckNames(place, "part of a scene", names);
}

bool SceneReader::CheckFormat(const Place& place) {
  const Json* format = Find(place, "format");
  const auto* name = format != nullptr ? std::get_if<std::string>(&format->value) : nullptr;
  if (name == nullptr || *name != kSceneFormat) {
    Fail(place, fmt::format("\"format\" must be \"{}\"", kSceneFormat));
    return false;
  }
  const Json* version = Find(place, "version");
  const auto* number = version != nullptr ? std::get_if<std::int64_t>(&version->value) : nullptr;
  if (number == nullptr || *number < 1) {
    Fail(version != nullptr ? Below(place, "version", *version) : place,
         fmt::format("\"version\" must be {}", kSceneVersion));
    return false;
  }
  scene_->version = *number;
  isLater_ = *number > kSceneVersion;
  if (isLater_) {
    Warn(Below(place, "version", *version),
         "the scene is of a later program; what is not known here is kept as it is");
  }
  return true;
}

void SceneReader::ReadCamera(const Place& place) {
  if (!IsObject(place, "a camera")) return;
  std::vector<std::string_view> names = {"target"};
  AddNames(FieldsOfCameras(), names);
  ReadFields(place, FieldsOfCameras(), scene_->camera);
  ReadTarget(place, scene_->camera.transform);
  scene_->camera.kept = CheckNames(place, "field of a camera", names);
}

void SceneReader::ReadTarget(const Place& place, Transform& transform) {
  const Json* given = Find(place, "target");
  if (given == nullptr) return;
  const Place below = Below(place, "target", *given);
  if (Find(place, "rotation") != nullptr) {
    Fail(below, "\"target\" and \"rotation\" exclude one another");
    return;
  }
  ShaderParameter parameter;
  parameter.type = ParameterType::Vector;
  if (const auto value = ReadValue(below, parameter, {})) {
    const auto& target = std::get<Vector>(*value);
    transform.rotation =
        AnglesTowards({target.x - transform.position.x, target.y - transform.position.y,
                       target.z - transform.position.z});
  }
}

const Json::Object* SceneReader::Members(const Place& place, std::string_view what) {
  const auto* members = std::get_if<Json::Object>(&place.json.value);
  if (members == nullptr) {
    Fail(place, fmt::format("expected an object, {}, found {}", what, KindOf(place.json)));
  }
  return members;
}

bool SceneReader::IsObject(const Place& place, std::string_view what) {
  if (std::holds_alternative<Json::Object>(place.json.value)) return true;
  Refuse(place, fmt::format("expected an object, {}, found {}", what, KindOf(place.json)));
  return false;
}

SceneReader::Place SceneReader::Below(const Place& place, std::string_view name, const Json& json) {
  return {json, PointerBelow(place.pointer, name)};
}

std::optional<ParameterValue> SceneReader::ReadValue(const Place& place,
                                                     const ShaderParameter& parameter,
                                                     const FieldRule& rule) {
  auto value = ReadParameterValue(parameter, place.json);
  std::string problem;
  if (!value) {
    problem = value.error();
  } else if (!value->warning.empty()) {  // none of the choices
    problem = value->warning;
  } else if (const auto* real = std::get_if<float>(&value->value)) {
    problem = BeyondLimits(*real, rule);
  } else if (const auto* integer = std::get_if<std::int32_t>(&value->value)) {
    problem = BeyondLimits(*integer, rule);
  }
  if (problem.empty()) return std::move(value->value);
  Refuse(place, std::move(problem));
  return std::nullopt;
}

KeptMembers SceneReader::CheckNames(const Place& place, std::string_view what,
                                    const std::vector<std::string_view>& names) {
  KeptMembers members;
  bool allKnown = true;
  for (const JsonMember& member : std::get<Json::Object>(place.json.value)) {
    const Place below = Below(place, member.name, member.value);
    const bool isKnown = std::find(names.begin(), names.end(), member.name) != names.end();
    if (!isKnown) Refuse(below, UnknownName(what, member.name, names));
    // "$schema" is for editors: known, and of no use here.
    const bool isTaken = isKnown && member.name != "$schema" && !refused_.contains(below.pointer);
    members.push_back({member.name, isTaken ? std::nullopt : std::optional(member.value)});
    allKnown = allKnown && isTaken;
  }
  return allKnown ? KeptMembers() : members;
}

void SceneReader::Fail(const Place& place, std::string message) {
  AddProblem(place,
             {.file = {}, .pointer = place.pointer, .position = {}, .message = std::move(message)});
}

void SceneReader::Warn(const Place& place, std::string message) {
  AddProblem(place, {.isError = false,
                     .file = {},
                     .pointer = place.pointer,
                     .position = {},
                     .message = std::move(message)});
}

void SceneReader::Refuse(const Place& place, std::string message) {
  if (!isLater_) return Fail(place, std::move(message));
  refused_.insert(place.pointer);
  Warn(place, std::move(message));
}

void SceneReader::AddProblem(const Place& place, SceneProblem problem) {
  const bool isElsewhere = !problem.file.empty();
  problems_.Add(0, place.json.offset, std::move(problem), isElsewhere);
}

SceneReading ReadScene(std::string_view text, const std::filesystem::path& file,
                       const SceneReadingOptions& options) {
  return SceneReader(text, file, options).Read();
}

SceneReading LoadScene(const std::filesystem::path& file, const SceneReadingOptions& options) {
  const auto text = ReadDocument(file);
  if (text) return ReadScene(*text, file, options);
  SceneReading reading;
  reading.problems.push_back({.file = {}, .pointer = {}, .position = {}, .message = text.error()});
  return reading;
}

}  // namespace sorvanix::host
