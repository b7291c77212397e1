#include "host/channels/material_schema.h"

#include <fmt/format.h>

#include <limits>
#include <string>
#include <utility>

#include "host/channels/material.h"
#include "host/channels/material_ramp.h"

namespace sorvanix::host {

namespace {

using Object = Json::Object;
using Array = Json::Array;

Json JsonText(std::string text) { return Json(std::move(text)); }
Json JsonNumber(std::int64_t number) { return Json(number); }

Json Reference(const std::string& definition) {
  // A pointer inside a URL: a blank is spelled %20.
  std::string escaped;
  for (const char c : definition) escaped += c == ' ' ? "%20" : (c == '/' ? "~1" : std::string{c});
  return Json(Object{{"$ref", JsonText("#/$defs/" + escaped)}});
}

Json AnyOf(Array alternatives) { return Json(Object{{"anyOf", Json(std::move(alternatives))}}); }

Json WholeNumber() {
  using Limits = std::numeric_limits<std::int32_t>;
  return Json(Object{{"type", JsonText("integer")},
                     {"minimum", JsonNumber(Limits::min())},
                     {"maximum", JsonNumber(Limits::max())}});
}

// A number that fits 32 bits.
Json RealNumber() {
  constexpr double kLargest = std::numeric_limits<float>::max();
  return Json(Object{
      {"type", JsonText("number")}, {"minimum", Json(-kLargest)}, {"maximum", Json(kLargest)}});
}

Json ListOf(Json items, std::int64_t least, std::int64_t most) {
  return Json(Object{{"type", JsonText("array")},
                     {"items", std::move(items)},
                     {"minItems", JsonNumber(least)},
                     {"maxItems", JsonNumber(most)}});
}

Json ChoiceOf(const std::vector<ParameterChoice>& choices) {
  Array names;
  for (const ParameterChoice& choice : choices) names.push_back(JsonText(choice.name));
  return Json(Object{{"enum", Json(std::move(names))}});
}

Json PropertyOf(const ShaderParameter& parameter);

Json KnotSchema() {
  Object properties;
  Array required;
  for (const ShaderParameter& part : KnotParameters()) {
    properties.push_back({part.name, PropertyOf(part)});
    if (IsRequired(part)) required.push_back(JsonText(part.name));
  }
  return Json(Object{{"type", JsonText("object")},
                     {"properties", Json(std::move(properties))},
                     {"required", Json(std::move(required))},
                     {"additionalProperties", Json(false)}});
}

Json TypeOf(const ShaderParameter& parameter) {
  switch (parameter.type) {
    case ParameterType::Integer:
      if (parameter.choices.empty()) return WholeNumber();
      return AnyOf({ChoiceOf(parameter.choices), WholeNumber()});
    case ParameterType::Real:
      return RealNumber();
    case ParameterType::Bool:
      return Json(Object{{"type", JsonText("boolean")}});
    case ParameterType::Vector:
      return parameter.unit == "colour" ? Reference("colour") : Reference("vector");
    case ParameterType::Text:
      return Json(Object{{"type", JsonText("string")}});
    case ParameterType::Ramp:
      return ListOf(Reference("knot"), 1, parameter.ramp.knots);
  }
  return Json(true);
}

std::string DescriptionOf(const ShaderParameter& parameter) {
  std::string text = parameter.help;
  if (parameter.minimum && parameter.maximum) {
    text += fmt::format(" Dialogs give {} to {}.", *parameter.minimum, *parameter.maximum);
  }
  return text;
}

Json PropertyOf(const ShaderParameter& parameter) {
  Json property = TypeOf(parameter);
  auto& members = std::get<Object>(property.value);
  members.push_back({"title", JsonText(parameter.label)});
  const std::string description = DescriptionOf(parameter);
  if (!description.empty()) members.push_back({"description", JsonText(description)});
  members.push_back({"default", JsonOf(parameter, parameter.initial)});
  return property;
}

Json PropertyOf(const ShaderInput& input) {
  Json property = Reference("input");
  auto& members = std::get<Object>(property.value);
  members.push_back({"title", JsonText(input.label)});
  if (!input.help.empty()) members.push_back({"description", JsonText(input.help)});
  return property;
}

Json NamesOf(const ShaderDescription& shader) {
  return Json(Object{{"enum", Json(Array{JsonText(shader.name), JsonNumber(shader.id)})}});
}

// The properties that one shader has, and no others.
Json ShaderSchema(const ShaderDescription& shader) {
  Object properties = {{"$schema", Json(true)}, {"shader", Json(true)}};
  for (const ShaderParameter& parameter : shader.parameters) {
    properties.push_back({parameter.name, PropertyOf(parameter)});
  }
  for (const ShaderInput& input : shader.inputs) {
    properties.push_back({input.name, PropertyOf(input)});
  }
  return Json(Object{{"title", JsonText(shader.name)},
                     {"description", JsonText(shader.summary)},
                     {"properties", Json(std::move(properties))},
                     {"additionalProperties", Json(false)}});
}

// Any shader: its name chooses the schema that its other properties keep to.
Json AnyShaderSchema(const ShaderCatalogue& catalogue) {
  Array names, rules;
  for (const ShaderDescription& shader : catalogue.Shaders()) {
    names.push_back(NamesOf(shader));
    const Json condition(Object{{"properties", Json(Object{{"shader", NamesOf(shader)}})},
                                {"required", Json(Array{JsonText("shader")})}});
    rules.push_back(Json(Object{{"if", condition}, {"then", Reference(shader.name)}}));
  }
  Json name = AnyOf(std::move(names));
  std::get<Object>(name.value)
      .push_back({"description", JsonText("A shader by its name or its plug-in id.")});
  return Json(Object{{"type", JsonText("object")},
                     {"properties", Json(Object{{"shader", std::move(name)}})},
                     {"required", Json(Array{JsonText("shader")})},
                     {"allOf", Json(std::move(rules))}});
}

Json InputSchema() {
  const Json file(
      Object{{"type", JsonText("string")},
             {"minLength", JsonNumber(1)},
             {"description", JsonText("A bitmap, or another material file (.json); the name "
                                      "is relative to the file that it stands in.")}});
  // "$schema" is for the top of a file alone.
  const Json shader(Object{{"$ref", JsonText("#/$defs/shader")},
                           {"properties", Json(Object{{"$schema", Json(false)}})}});
  return AnyOf({Json(Object{{"type", JsonText("null")}}), file, shader});
}

Json ColourSchema() {
  const Json hex(Object{{"type", JsonText("string")}, {"pattern", JsonText("^#[0-9A-Fa-f]{6}$")}});
  return AnyOf({Reference("vector"), hex});
}

}  // namespace

Json MaterialSchema(const ShaderCatalogue& catalogue) {
  Object definitions = {{"shader", AnyShaderSchema(catalogue)},
                        {"input", InputSchema()},
                        {"vector", ListOf(RealNumber(), 3, 3)},
                        {"colour", ColourSchema()},
                        {"knot", KnotSchema()}};
  for (const ShaderDescription& shader : catalogue.Shaders()) {
    definitions.push_back({shader.name, ShaderSchema(shader)});
  }
  return Json(Object{{"$schema", JsonText("https://json-schema.org/draft/2020-12/schema")},
                     {"title", JsonText("sorvaNIX material")},
                     {"description", JsonText("A graph of procedural shaders.")},
                     {"$ref", JsonText("#/$defs/shader")},
                     {"$defs", Json(std::move(definitions))}});
}

}  // namespace sorvanix::host
