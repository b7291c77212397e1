#include "host/channels/material_change.h"

#include <sorvanix/ids.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "host/services/filenames.h"

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

// As material files name a file from a folder.
std::string NameFrom(const fs::path& folder, const fs::path& file) {
  std::error_code error;
  const fs::path base = fs::weakly_canonical(folder.empty() ? fs::path(".") : folder, error);
  const fs::path target = fs::weakly_canonical(file, error);
  const fs::path relative = target.lexically_relative(base);
  const std::u8string name = (relative.empty() ? target : relative).generic_u8string();
  return std::string(name.begin(), name.end());
}

void SetMember(Json& object, const std::string& name, Json value) {
  auto& members = std::get<Json::Object>(object.value);
  const auto found = std::find_if(members.begin(), members.end(),
                                  [&](const JsonMember& member) { return member.name == name; });
  if (found != members.end()) {
    found->value = std::move(value);
  } else {
    members.push_back({name, std::move(value)});
  }
}

void RemoveMember(Json& object, const std::string& name) {
  std::erase_if(std::get<Json::Object>(object.value),
                [&](const JsonMember& member) { return member.name == name; });
}

// Writes what links hold, as material files do.
class LinkWriter {
 public:
  LinkWriter(const ShaderCatalogue& catalogue, const fs::path& folder)
      : catalogue_(catalogue), folder_(folder) {}

  /// Null for an empty link, and for a shader that the catalogue does not know.
  Json JsonOfLink(const Container* link) const {
    if (link == nullptr || link->Find(KeyLinkPluginId) == nullptr) return Json();
    const Word id = link->GetInt(KeyLinkPluginId);
    if (const Filename* file = link->GetFilename(KeyLinkFilename); id == 0 && file != nullptr) {
      return Json(NameFrom(folder_, PathFromUtf8(file->path)));
    }
    const ShaderDescription* shader = catalogue_.Find(static_cast<std::int32_t>(id));
    const Container* parameters = link->GetContainer(KeyLinkParameters);
    if (shader == nullptr || parameters == nullptr) return Json();
    Json node(Json::Object{{"shader", Json(shader->name)}});
    for (const ShaderParameter& parameter : shader->parameters) {
      const ParameterValue value = ValueIn(*parameters, parameter);
      if (AreAlike(parameter, value, parameter.initial)) continue;
      SetMember(node, parameter.name, JsonOf(parameter, value));
    }
    for (const ShaderInput& input : shader->inputs) {
      Json inner = JsonOfLink(parameters->GetContainer(input.key));
      if (inner.value.index() != 0) SetMember(node, input.name, std::move(inner));
    }
    return node;
  }

 private:
  const ShaderCatalogue& catalogue_;
  const fs::path& folder_;
};

const ShaderDescription* ShaderOf(const Json& node, const ShaderCatalogue& catalogue) {
  const Json* given = node.Find("shader");
  if (given == nullptr) return nullptr;
  if (const auto* name = std::get_if<std::string>(&given->value)) return catalogue.Find(*name);
  const auto* id = std::get_if<std::int64_t>(&given->value);
  return id == nullptr ? nullptr : catalogue.Find(static_cast<std::int32_t>(*id));
}

// Files that are found in another way, in a folder of images, keep their names.
void MoveReferences(Json& node, const ShaderCatalogue& catalogue, const MaterialFolders& folders) {
  const ShaderDescription* shader = ShaderOf(node, catalogue);
  if (shader == nullptr) return;
  for (JsonMember& member : std::get<Json::Object>(node.value)) {
    if (shader->FindInput(member.name) == nullptr) continue;
    if (auto* name = std::get_if<std::string>(&member.value.value)) {
      const fs::path file = folders.before / PathFromUtf8(*name);
      std::error_code error;
      if (fs::is_regular_file(file, error)) *name = NameFrom(folders.after, file);
    } else if (std::holds_alternative<Json::Object>(member.value.value)) {
      MoveReferences(member.value, catalogue, folders);
    }
  }
}

bool AreSame(const Container* first, const Container* second) {
  if (first == nullptr || second == nullptr) return first == second;
  return *first == *second;
}

bool IsSameFolder(const MaterialFolders& folders) {
  return NameFrom(folders.before, folders.after.empty() ? fs::path(".") : folders.after) == ".";
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

Json ChangedMaterial(const Json& material, const ShaderDescription& shader,
                     const ShaderCatalogue& catalogue, const Container& before,
                     const Container& after, const MaterialFolders& folders) {
  Json changed = material;
  if (!IsSameFolder(folders)) MoveReferences(changed, catalogue, folders);
  for (const ShaderParameter& parameter : shader.parameters) {
    const ParameterValue value = ValueIn(after, parameter);
    if (AreAlike(parameter, value, ValueIn(before, parameter))) continue;
    SetMember(changed, parameter.name, JsonOf(parameter, value));
  }
  const LinkWriter writer(catalogue, folders.after);
  for (const ShaderInput& input : shader.inputs) {
    const Container* link = after.GetContainer(input.key);
    if (AreSame(link, before.GetContainer(input.key))) continue;
    Json content = writer.JsonOfLink(link);
    if (content.value.index() == 0) {
      RemoveMember(changed, input.name);
    } else {
      SetMember(changed, input.name, std::move(content));
    }
  }
  return changed;
}

}  // namespace sorvanix::host
