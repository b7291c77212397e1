#include "host/services/shader_catalogue.h"

#include <fmt/format.h>

#include <algorithm>

#include "host/services/catalogue_reader.h"
#include "host/services/filenames.h"
#include "host/services/text_file.h"

namespace sorvanix::host {

namespace {

// The element that `matches`, or null.
template <class Element, class Predicate>
const Element* FindIn(const std::vector<Element>& elements, Predicate matches) noexcept {
  const auto found = std::find_if(elements.begin(), elements.end(), matches);
  return found == elements.end() ? nullptr : &*found;
}

auto Named(std::string_view name) {
  return [name](const auto& element) { return element.name == name; };
}

}  // namespace

const ParameterChoice* ShaderParameter::FindChoice(std::string_view choice) const noexcept {
  return FindIn(choices, Named(choice));
}

const ShaderInput* ShaderDescription::FindInput(std::string_view input) const noexcept {
  return FindIn(inputs, Named(input));
}

const ShaderParameter* ShaderDescription::FindParameter(std::string_view parameter) const noexcept {
  return FindIn(parameters, Named(parameter));
}

const ShaderParameter* ShaderDescription::FindParameter(std::int32_t key) const noexcept {
  return FindIn(parameters, [key](const auto& parameter) { return parameter.key == key; });
}

const ShaderDescription* ShaderCatalogue::Find(std::int32_t id) const noexcept {
  return FindIn(shaders_, [id](const auto& shader) { return shader.id == id; });
}

const ShaderDescription* ShaderCatalogue::Find(std::string_view name) const noexcept {
  return FindIn(shaders_, Named(name));
}

tl::expected<ShaderCatalogue, std::string> ShaderCatalogue::Parse(std::string_view text) {
  auto shaders = ReadCatalogue(text);
  if (!shaders) return tl::unexpected(std::move(shaders).error());
  ShaderCatalogue catalogue;
  catalogue.shaders_ = *std::move(shaders);
  return catalogue;
}

tl::expected<ShaderCatalogue, std::string> ShaderCatalogue::Load(
    const std::filesystem::path& file) {
  const std::optional<std::string> text = ReadTextFile(file);
  if (!text) return tl::unexpected(fmt::format("{}: cannot be read", Utf8FromPath(file)));
  return Parse(*text).map_error(
      [&](const std::string& error) { return fmt::format("{}:{}", Utf8FromPath(file), error); });
}

}  // namespace sorvanix::host
