#include "host/channels/material_change.h"

#include <sorvanix/ids.h>

#include <algorithm>
#include <system_error>
#include <utility>

#include "host/channels/graph_spelling.h"
#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

namespace fs = std::filesystem;

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
  for (const ShaderInput& input : shader.inputs) {
    const Container* link = after.GetContainer(input.key);
    if (AreSame(link, before.GetContainer(input.key))) continue;
    Json content = link == nullptr ? Json() : SpelledLink(*link, catalogue, folders.after);
    if (content.value.index() == 0) {
      RemoveMember(changed, input.name);
    } else {
      SetMember(changed, input.name, std::move(content));
    }
  }
  return changed;
}

}  // namespace sorvanix::host
