// sorvanix describe: one shader and its parameters.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <algorithm>
#include <charconv>
#include <memory>

#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"
#include "host/channels/material_value.h"
#include "host/channels/nearest_name.h"

namespace sorvanix::cli {

namespace {

using host::ParameterChoice;
using host::ShaderCatalogue;
using host::ShaderDescription;
using host::ShaderInput;
using host::ShaderParameter;

struct DescribeOptions {
  std::string shader;
  std::string module;
  bool json = false;
};

const ShaderDescription* FindShader(const ShaderCatalogue& catalogue, const std::string& wanted) {
  std::int32_t id = 0;
  const char* const end = wanted.data() + wanted.size();
  const auto parsed = std::from_chars(wanted.data(), end, id);
  const bool isNumber = parsed.ec == std::errc() && parsed.ptr == end;
  for (const ShaderDescription& shader : catalogue.Shaders()) {
    if (isNumber ? shader.id == id : host::SameIgnoringCase(shader.name, wanted)) return &shader;
  }
  return nullptr;
}

std::string UnknownShader(const ShaderCatalogue& catalogue, const std::string& wanted) {
  std::vector<std::string_view> names;
  for (const ShaderDescription& shader : catalogue.Shaders()) names.push_back(shader.name);
  return host::UnknownName("shader", wanted, names);
}

const char* NameOf(host::ParameterType type) {
  constexpr const char* kNames[] = {"int", "float", "bool", "vector", "string", "ramp"};
  return kNames[static_cast<std::size_t>(type)];
}

std::string TextOf(const ShaderParameter& parameter) {
  struct Visitor {
    const ShaderParameter& parameter;
    std::string operator()(std::int32_t value) const {
      for (const ParameterChoice& choice : parameter.choices) {
        if (choice.value == value) return choice.name;
      }
      return std::to_string(value);
    }
    std::string operator()(float value) const { return fmt::format("{}", value); }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(const Vector& value) const {
      return fmt::format("[{}, {}, {}]", value.x, value.y, value.z);
    }
    std::string operator()(const std::string& value) const { return '"' + value + '"'; }
    std::string operator()(const host::Ramp& value) const {
      return fmt::format("{} of up to {} knots", value.size(), parameter.ramp.knots);
    }
  };
  return std::visit(Visitor{parameter}, parameter.initial);
}

std::string LimitsOf(const ShaderParameter& parameter) {
  const auto bound = [](const std::optional<double>& limit) {
    return limit ? fmt::format("{}", *limit) : std::string();
  };
  if (!parameter.minimum && !parameter.maximum) return {};
  return bound(parameter.minimum) + " .. " + bound(parameter.maximum);
}

std::string ParagraphOf(const ShaderParameter& parameter) {
  std::string text = fmt::format("  {}  {}, default {}", parameter.name, NameOf(parameter.type),
                                 TextOf(parameter));
  const std::string limits = LimitsOf(parameter);
  if (!limits.empty()) text += ", " + limits;
  if (!parameter.unit.empty()) text += fmt::format(" ({})", parameter.unit);
  text += fmt::format("\n      {}: {}\n", parameter.label, parameter.help);
  for (const ParameterChoice& choice : parameter.choices) {
    text += fmt::format("      {:>4}  {}\n", choice.value, choice.name);
  }
  return text;
}

std::string AsText(const ShaderDescription& shader) {
  std::string text =
      fmt::format("{} ({}, {})\n{}\n", shader.name, shader.id, shader.category, shader.summary);
  if (!shader.inputs.empty()) text += "\nInputs:\n";
  for (const ShaderInput& input : shader.inputs) {
    text += fmt::format("  {}\n      {}: {}\n", input.name, input.label, input.help);
  }
  if (!shader.parameters.empty()) text += "\nParameters:\n";
  for (const ShaderParameter& parameter : shader.parameters) text += ParagraphOf(parameter);
  return text;
}

ExitCode Describe(const DescribeOptions& options) {
  const auto catalogue = FindCatalogue(options.module);
  if (!catalogue) {
    Complain(catalogue.error());
    return ExitCode::NoModule;
  }
  const ShaderDescription* shader = FindShader(*catalogue, options.shader);
  if (shader == nullptr) {
    Complain(UnknownShader(*catalogue, options.shader));
    return ExitCode::Usage;
  }
  Print(options.json ? shader->json + '\n' : AsText(*shader));
  return ExitCode::Done;
}

}  // namespace

VerbAction DeclareDescribe(CLI::App& app) {
  const auto options = std::make_shared<DescribeOptions>();
  app.add_option("shader", options->shader, "Its name, in any case, or its id")->required();
  app.add_flag("--json", options->json, "Print the shader's entry of shaders.json");
  AddModuleOption(app, options->module);
  return [options] { return Describe(*options); };
}

}  // namespace sorvanix::cli
