#include "host/dialogs/link_content.h"

#include <sorvanix/ids.h>

#include <algorithm>

#include "host/channels/material.h"
#include "host/dialogs/preview_threads.h"

namespace sorvanix::host {

namespace {

// A shader that has an input, by which the content can be read as material files are.
const ShaderDescription* FindHolder(const ShaderCatalogue& catalogue) {
  const auto& shaders = catalogue.Shaders();
  const auto found = std::find_if(shaders.begin(), shaders.end(),
                                  [](const auto& shader) { return !shader.inputs.empty(); });
  return found == shaders.end() ? nullptr : &*found;
}

std::optional<JsonError> FirstError(const MaterialReading& reading, std::size_t prefix) {
  const auto errors = reading.Errors();
  if (errors.empty()) return std::nullopt;
  // In another file the pointer is that file's own, and tells nothing of the content's.
  const MaterialProblem& first = errors.front();
  if (!first.file.empty()) return JsonError{Describe({}, first)};
  return JsonError{first.message, 0, first.pointer.substr(std::min(prefix, first.pointer.size()))};
}

}  // namespace

std::optional<JsonError> FillLink(Link& link, const Json& content, const ShaderCatalogue& catalogue,
                                  const MaterialPlaces& places) {
  const ShaderDescription* holder = FindHolder(catalogue);
  if (holder == nullptr) return JsonError{"no shader has an input"};
  const ShaderInput& input = holder->inputs.front();
  const Json material(Json::Object{{"shader", Json(holder->name)}, {input.name, content}});
  const MaterialReading reading = ReadMaterial(WriteJson(material), catalogue, places);
  if (auto error = FirstError(reading, input.name.size() + 1)) return error;

  Container parameters = ContainerOf(*reading.material);
  Container empty;
  empty.Set(KeyLinkPluginId, Word{StreamLink::kEmpty});
  const Container* filled = parameters.GetContainer(input.key);
  Container description = filled == nullptr ? empty : *filled;
  StopPreviews();
  if (link.Message(MessageSetParameters, description) != 0) return std::nullopt;
  return JsonError{"its shader cannot be had"};
}

}  // namespace sorvanix::host
