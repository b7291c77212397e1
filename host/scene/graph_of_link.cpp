#include "host/scene/graph_of_link.h"

#include <sorvanix/ids.h>

#include <algorithm>
#include <optional>
#include <variant>

#include "host/channels/material.h"
#include "host/channels/material_ramp.h"
#include "host/channels/material_value.h"
#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

namespace fs = std::filesystem;

// Files take no numbers that are not finite, nor texts that JSON cannot hold.
bool CanBeRead(const ShaderParameter& parameter, const Json& told) {
  if (parameter.type != ParameterType::Ramp) return ReadParameterValue(parameter, told).has_value();
  std::vector<RampProblem> problems;
  ReadRamp(parameter, told, problems);
  return std::none_of(problems.begin(), problems.end(),
                      [](const RampProblem& problem) { return problem.isError; });
}

class GraphTeller {
 public:
  GraphTeller(const ShaderCatalogue& catalogue, const fs::path& folder)
      : catalogue_(catalogue), folder_(folder) {}

  // What message MessageGetParameters told of a link.
  Json Tell(const Container& link) const {
    const Word id = link.GetInt(KeyLinkPluginId, StreamLink::kEmpty);
    if (id == StreamLink::kBitmap) return TellBitmap(link.GetFilename(KeyLinkFilename));
    const ShaderDescription* shader = catalogue_.Find(static_cast<std::int32_t>(id));
    const Container* parameters = link.GetContainer(KeyLinkParameters);
    if (shader == nullptr || parameters == nullptr) return {};
    Json::Object members = {{"shader", Json(shader->name)}};
    for (const ShaderParameter& parameter : shader->parameters) {
      const auto value = ValueOf(parameter, *parameters);
      if (!value) continue;
      Json told = JsonOf(parameter, *value);
      if (!CanBeRead(parameter, told)) continue;
      if (WriteJson(told) == WriteJson(JsonOf(parameter, parameter.initial))) continue;
      members.push_back({parameter.name, std::move(told)});
    }
    for (const ShaderInput& input : shader->inputs) {
      const Container* inner = parameters->GetContainer(input.key);
      Json told = inner == nullptr ? Json() : Tell(*inner);
      if (std::holds_alternative<std::nullptr_t>(told.value)) continue;
      members.push_back({input.name, std::move(told)});
    }
    return Json(std::move(members));
  }

 private:
  Json TellBitmap(const Filename* filename) const {
    std::error_code error;
    if (filename == nullptr) return {};
    const fs::path file = PathFromUtf8(filename->path);
    if (!fs::is_regular_file(file, error)) return {};
    const fs::path relative = file.lexically_relative(folder_.empty() ? fs::path(".") : folder_);
    return Json(Utf8FromPath(relative.empty() ? file : relative));
  }

  static std::optional<ParameterValue> ValueOf(const ShaderParameter& parameter,
                                               const Container& parameters) {
    const std::int32_t key = parameter.key;
    switch (parameter.type) {
      case ParameterType::Integer:
        return static_cast<std::int32_t>(parameters.GetInt(key));
      case ParameterType::Real:
        return parameters.GetFloat(key);
      case ParameterType::Bool:
        return parameters.GetBool(key);
      case ParameterType::Vector:
        return parameters.GetVector(key);
      case ParameterType::Text: {
        const Text* text = parameters.GetText(key);
        return text == nullptr ? std::string() : text->text;
      }
      case ParameterType::Ramp:
        return RampOf(parameter.ramp, parameters);
    }
    return std::nullopt;
  }

  // Nothing without knots. Their order is the shader's, which a reader puts right.
  static std::optional<ParameterValue> RampOf(const RampKeys& keys, const Container& parameters) {
    const Word count = std::min(parameters.GetInt(keys.count), Word{keys.knots});
    if (count <= 0) return std::nullopt;
    Ramp ramp;
    for (std::int32_t i = 0; i < count; ++i) {
      const std::int32_t offset = i * keys.stride;
      ramp.push_back({.position = parameters.GetFloat(keys.position + offset),
                      .colour = parameters.GetVector(keys.colour + offset),
                      .bias = parameters.GetFloat(keys.bias + offset)});
    }
    return ramp;
  }

  const ShaderCatalogue& catalogue_;
  const fs::path& folder_;
};

}  // namespace

Json GraphOf(Link& link, const ShaderCatalogue& catalogue, const fs::path& folder) {
  if (link.HeldShader() == nullptr) return {};
  Container description;
  link.Message(MessageGetParameters, description);
  return GraphTeller(catalogue, folder).Tell(description);
}

}  // namespace sorvanix::host
