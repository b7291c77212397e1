#include "host/channels/graph_spelling.h"

#include <sorvanix/ids.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "host/channels/material_ramp.h"
#include "host/channels/material_value.h"
#include "host/services/filenames.h"
#include "host/services/streams.h"

namespace sorvanix::host {

namespace {

namespace fs = std::filesystem;

Ramp RampIn(const Container& parameters, const RampKeys& keys) {
  const Word count = std::clamp<Word>(parameters.GetInt(keys.count), 0, keys.knots);
  Ramp ramp;
  for (std::int32_t i = 0; i < count; ++i) {
    const std::int32_t offset = i * keys.stride;
    ramp.push_back({.position = parameters.GetFloat(keys.position + offset),
                    .colour = parameters.GetVector(keys.colour + offset),
                    .bias = parameters.GetFloat(keys.bias + offset)});
  }
  return ramp;
}

bool CanBeRead(const ShaderParameter& parameter, const Json& told) {
  if (parameter.type != ParameterType::Ramp) return ReadParameterValue(parameter, told).has_value();
  std::vector<RampProblem> problems;
  ReadRamp(parameter, told, problems);
  return std::none_of(problems.begin(), problems.end(),
                      [](const RampProblem& problem) { return problem.isError; });
}

Json SpelledBitmap(const Filename* filename, const fs::path& folder) {
  if (filename == nullptr) return {};
  const fs::path file = PathFromUtf8(filename->path);
  std::error_code error;
  return fs::is_regular_file(file, error) ? Json(NameFrom(folder, file)) : Json();
}

bool IsOutside(const fs::path& relative) {
  return relative.empty() || relative.begin()->native() == fs::path("..").native();
}

}  // namespace

ParameterValue ValueIn(const Container& parameters, const ShaderParameter& parameter) {
  switch (parameter.type) {
    case ParameterType::Integer:
      return static_cast<std::int32_t>(
          std::clamp<Word>(parameters.GetInt(parameter.key), INT32_MIN, INT32_MAX));
    case ParameterType::Real:
      return parameters.GetFloat(parameter.key);
    case ParameterType::Bool:
      return parameters.GetBool(parameter.key);
    case ParameterType::Vector:
      return parameters.GetVector(parameter.key);
    case ParameterType::Text: {
      const Text* text = parameters.GetText(parameter.key);
      return text == nullptr ? std::string() : text->text;
    }
    case ParameterType::Ramp:
      return RampIn(parameters, parameter.ramp);
  }
  return {};
}

bool AreAlike(const ShaderParameter& parameter, const ParameterValue& first,
              const ParameterValue& second) {
  return WriteJson(JsonOf(parameter, first), -1) == WriteJson(JsonOf(parameter, second), -1);
}

std::string NameFrom(const fs::path& folder, const fs::path& file) {
  std::error_code error;
  const auto plain = [&](const fs::path& path) {
    return fs::absolute(path, error).lexically_normal();
  };
  const auto canonical = [&](const fs::path& path) {
    const fs::path found = fs::weakly_canonical(path, error);
    return error ? plain(path) : found;
  };
  const fs::path base = folder.empty() ? fs::path(".") : folder;
  fs::path target = plain(file);
  fs::path relative = target.lexically_relative(plain(base / ""));
  if (IsOutside(relative)) {
    target = canonical(file);
    relative = target.lexically_relative(canonical(base));
  }
  const std::u8string name = (relative.empty() ? target : relative).generic_u8string();
  return std::string(name.begin(), name.end());
}

Json SpelledLink(const Container& link, const ShaderCatalogue& catalogue, const fs::path& folder) {
  const Word id = link.GetInt(KeyLinkPluginId, StreamLink::kEmpty);
  if (id == StreamLink::kBitmap) return SpelledBitmap(link.GetFilename(KeyLinkFilename), folder);
  const ShaderDescription* shader = catalogue.Find(static_cast<std::int32_t>(id));
  const Container* parameters = link.GetContainer(KeyLinkParameters);
  if (shader == nullptr || parameters == nullptr) return {};
  Json::Object members = {{"shader", Json(shader->name)}};
  for (const ShaderParameter& parameter : shader->parameters) {
    const ParameterValue value = ValueIn(*parameters, parameter);
    Json told = JsonOf(parameter, value);
    if (AreAlike(parameter, value, parameter.initial) || !CanBeRead(parameter, told)) continue;
    members.push_back({parameter.name, std::move(told)});
  }
  for (const ShaderInput& input : shader->inputs) {
    const Container* inner = parameters->GetContainer(input.key);
    Json told = inner == nullptr ? Json() : SpelledLink(*inner, catalogue, folder);
    if (std::holds_alternative<std::nullptr_t>(told.value)) continue;
    members.push_back({input.name, std::move(told)});
  }
  return Json(std::move(members));
}

}  // namespace sorvanix::host
