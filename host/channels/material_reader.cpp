#include "host/channels/material_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "host/channels/channel_link.h"
#include "host/channels/material_ramp.h"
#include "host/channels/material_value.h"
#include "host/channels/nearest_name.h"
#include "host/channels/texture.h"
#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

namespace fs = std::filesystem;

std::string Quoted(std::string_view text) { return WriteJson(Json(Excerpt(text)), -1); }

bool NamesMaterial(const fs::path& file) {
  return SameIgnoringCase(Utf8FromPath(file.extension()), ".json");
}

fs::path IdentityOf(const fs::path& file) {
  std::error_code error;
  fs::path identity = fs::weakly_canonical(file, error);
  return error ? file : identity;
}

std::string FolderName(const fs::path& folder) {
  return folder.empty() ? "this folder" : Utf8FromPath(folder);
}

}  // namespace

MaterialReading MaterialReader::Read(std::string_view text) {
  MaterialReading reading;
  MaterialNode node =
      ReadSource({text, {}, places_.file.parent_path(), {}, IdentityOf(places_.file), sources_}, 0);
  if (!problems_.HasErrors() && node.shader != nullptr) reading.material = std::move(node);
  reading.problems = problems_.Take();
  reading.untold = problems_.Untold();
  return reading;
}

void MaterialReader::AddProblem(bool isError, const std::string& pointer, std::size_t offset,
                                std::string message) {
  const Source& source = open_.back();
  problems_.Add(source.number, offset,
                {isError, source.file, pointer, TextPosition(), std::move(message)});
}

MaterialNode MaterialReader::ReadSource(Source source, std::size_t depth) {
  const std::string_view text = source.text;
  ++sources_;
  open_.push_back(std::move(source));
  MaterialNode node;
  if (const auto json = ParseJson(text)) {
    node = ReadNode(*json, {}, depth);
  } else {
    AddProblem(true, json.error().pointer, json.error().offset, json.error().message);
  }
  problems_.Place(open_.back().number, text);
  open_.pop_back();
  return node;
}

// What it answers counts only when nothing failed.
MaterialNode MaterialReader::ReadNode(const Json& json, const std::string& pointer,
                                      std::size_t depth) {
  MaterialNode node;
  const auto* members = std::get_if<Json::Object>(&json.value);
  if (members == nullptr) {
    Fail(pointer, json, fmt::format("expected an object, a shader, found {}", KindOf(json)));
    return node;
  }
  if (!Enter(json, pointer, depth)) return node;
  node.shader = ReadShader(json, pointer);
  if (node.shader == nullptr) return node;
  for (const JsonMember& member : *members) CheckName(member, *node.shader, pointer);
  for (const ShaderParameter& parameter : node.shader->parameters) {
    if (const Json* given = json.Find(parameter.name)) {
      ReadParameter(parameter, *given, PointerBelow(pointer, parameter.name), node);
    }
  }
  for (const ShaderInput& input : node.shader->inputs) {
    const Json* given = json.Find(input.name);
    if (given == nullptr) continue;
    auto content = ReadInput(*given, PointerBelow(pointer, input.name), depth + 1);
    if (content) node.inputs.push_back({&input, *std::move(content)});
  }
  return node;
}

// Whether one more shader may stand here.
bool MaterialReader::Enter(const Json& json, const std::string& pointer, std::size_t depth) {
  if (depth > kDeepestGraph) {
    Fail(pointer, json,
         fmt::format("the graph is too deep: more than {} shaders stand one behind the other",
                     kDeepestGraph));
    return false;
  }
  ++shaders_;
  if (shaders_ == kMostShaders + 1) {
    Fail(pointer, json, fmt::format("the graph has more than {} shaders", kMostShaders));
  }
  return shaders_ <= kMostShaders;
}

const ShaderDescription* MaterialReader::ReadShader(const Json& json, const std::string& pointer) {
  const Json* given = json.Find("shader");
  if (given == nullptr) {
    Fail(pointer, json, "\"shader\" is missing: the name or the id of a shader");
    return nullptr;
  }
  const std::string place = PointerBelow(pointer, "shader");
  if (const auto* name = std::get_if<std::string>(&given->value)) {
    const ShaderDescription* shader = catalogue_.Find(*name);
    if (shader != nullptr) return shader;
    std::vector<std::string_view> names;
    for (const ShaderDescription& known : catalogue_.Shaders()) names.push_back(known.name);
    Fail(place, *given, UnknownName("shader", *name, names));
    return nullptr;
  }
  if (const auto* id = std::get_if<std::int64_t>(&given->value)) {
    for (const ShaderDescription& shader : catalogue_.Shaders()) {
      if (shader.id == *id) return &shader;
    }
    Fail(place, *given, fmt::format("there is no shader with the id {}", *id));
    return nullptr;
  }
  Fail(place, *given, fmt::format("expected a shader's name or id, found {}", KindOf(*given)));
  return nullptr;
}

void MaterialReader::CheckName(const JsonMember& member, const ShaderDescription& shader,
                               const std::string& pointer) {
  if (member.name == "shader" || (member.name == "$schema" && pointer.empty())) return;
  if (shader.FindParameter(member.name) != nullptr) return;
  if (shader.FindInput(member.name) != nullptr) return;
  std::vector<std::string_view> names;
  for (const ShaderParameter& parameter : shader.parameters) names.push_back(parameter.name);
  for (const ShaderInput& input : shader.inputs) names.push_back(input.name);
  Fail(PointerBelow(pointer, member.name), member.value,
       UnknownName(fmt::format("parameter of {}", shader.name), member.name, names));
}

void MaterialReader::ReadParameter(const ShaderParameter& parameter, const Json& given,
                                   const std::string& pointer, MaterialNode& node) {
  if (parameter.type == ParameterType::Ramp) {
    std::vector<RampProblem> problems;
    Ramp ramp = ReadRamp(parameter, given, problems);
    const bool isWhole = std::none_of(problems.begin(), problems.end(),
                                      [](const RampProblem& problem) { return problem.isError; });
    if (isWhole) node.values.push_back({&parameter, std::move(ramp)});
    for (RampProblem& problem : problems) {
      std::string place = pointer;
      for (const std::string& name : problem.below) place = PointerBelow(place, name);
      AddProblem(problem.isError && !places_.isLater, place, problem.place->offset,
                 std::move(problem.message));
    }
    return;
  }
  auto value = ReadParameterValue(parameter, given);
  if (!value) {
    Fail(pointer, given, value.error());
    return;
  }
  if (!value->warning.empty()) AddProblem(false, pointer, given.offset, value->warning);
  node.values.push_back({&parameter, std::move(value->value)});
}

// Nothing for an input that stays empty, and for one that failed.
std::optional<MaterialReader::Content> MaterialReader::ReadInput(const Json& given,
                                                                 const std::string& pointer,
                                                                 std::size_t depth) {
  if (std::holds_alternative<std::nullptr_t>(given.value)) return std::nullopt;
  if (const auto* name = std::get_if<std::string>(&given.value)) {
    if (const std::string_view wrong = WrongInFilename(*name); !wrong.empty()) {
      Fail(pointer, given, std::string(wrong));
      return std::nullopt;
    }
    return ReadReference(*name, given, pointer, depth);
  }
  if (std::holds_alternative<Json::Object>(given.value)) {
    MaterialNode node = ReadNode(given, pointer, depth);
    return node.shader == nullptr ? std::nullopt : std::optional<Content>(std::move(node));
  }
  Fail(pointer, given,
       fmt::format("expected a shader, the name of a file, or null, found {}", KindOf(given)));
  return std::nullopt;
}

std::optional<MaterialReader::Content> MaterialReader::ReadReference(const std::string& name,
                                                                     const Json& given,
                                                                     const std::string& pointer,
                                                                     std::size_t depth) {
  const fs::path written = PathFromUtf8(name);
  if (!NamesMaterial(written)) return FindBitmap(name, given, pointer);
  const fs::path file = open_.back().folder / written;
  Source source = {{},
                   file,
                   file.parent_path(),
                   (open_.back().prefix / written).parent_path(),
                   IdentityOf(file),
                   sources_};
  for (const Source& outer : open_) {
    if (outer.identity == source.identity) {
      Fail(pointer, given, fmt::format("{} makes a cycle: it stands inside itself", Quoted(name)));
      return std::nullopt;
    }
  }
  const auto text = ReadMaterialText(file);
  if (!text) {
    Fail(pointer, given, fmt::format("{}: {}", Utf8FromPath(file), text.error()));
    return std::nullopt;
  }
  source.text = *text;
  MaterialNode node = ReadSource(std::move(source), depth);
  return node.shader == nullptr ? std::nullopt : std::optional<Content>(std::move(node));
}

std::optional<MaterialBitmap> MaterialReader::FindBitmap(const std::string& name, const Json& given,
                                                         const std::string& pointer) {
  const fs::path written = PathFromUtf8(name);
  std::vector<fs::path> folders = {open_.back().folder};
  folders.insert(folders.end(), places_.imageFolders.begin(), places_.imageFolders.end());
  const auto folder = std::find_if(folders.begin(), folders.end(), [&](const fs::path& each) {
    std::error_code error;
    return fs::is_regular_file(each / written, error);
  });
  if (folder == folders.end()) {
    std::string searched;
    for (const fs::path& each : folders) {
      searched += (searched.empty() ? "" : " or ") + FolderName(each);
    }
    Fail(pointer, given, fmt::format("there is no bitmap {} in {}", Quoted(name), searched));
    return std::nullopt;
  }
  const fs::path file = *folder / written;
  if (const auto texture = LoadTexture(file); !texture) {
    Fail(pointer, given, texture.error());
    return std::nullopt;
  }
  // Beside the file that names it: then the way leads through that file's folder.
  const bool beside = folder == folders.begin();
  const fs::path spelled = beside ? (open_.back().prefix / written).lexically_normal() : written;
  const std::u8string generic = spelled.generic_u8string();
  return MaterialBitmap{std::string(generic.begin(), generic.end()), file};
}

}  // namespace sorvanix::host
