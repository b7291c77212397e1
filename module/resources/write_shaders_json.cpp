// Writes Resources/shaders.json from the shaders' tables: the one description that host, command
// line, studio and manual read. Run by the build: write_shaders_json FILE.
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

#include "module/shell/registry.h"

namespace {

using Json = nlohmann::ordered_json;
using sorvanix::Field;
using sorvanix::RegistryRow;
using sorvanix::ShaderTable;
using sorvanix::Unit;
using sorvanix::ValueKind;

constexpr const char* kKindNames[] = {"int", "bool", "float", "vector"};
constexpr const char* kUnitNames[] = {"", "percent", "degrees", "colour"};
constexpr const char* kCategoryNames[] = {"generator", "surface", "filter"};

template <class Enum, std::size_t count>
const char* NameOf(Enum value, const char* const (&names)[count]) {
  return names[static_cast<std::size_t>(value)];
}

// The shortest decimal that reads back as the same float: 0.1f is written 0.1.
Json Shortest(float value) {
  char text[32];
  for (int digits = 1; digits <= 9; ++digits) {
    std::snprintf(text, sizeof text, "%.*g", digits, static_cast<double>(value));
    if (std::strtof(text, nullptr) == value) break;
  }
  return std::strtod(text, nullptr);
}

Json DefaultOf(const Field& field) {
  switch (field.kind) {
    case ValueKind::Int:
      return field.initial.integer;
    case ValueKind::Bool:
      return field.initial.integer != 0;
    case ValueKind::Float:
      return Shortest(field.initial.real.x);
    case ValueKind::Vector:
      return {Shortest(field.initial.real.x), Shortest(field.initial.real.y),
              Shortest(field.initial.real.z)};
  }
  return nullptr;
}

Json ParameterOf(const Field& field) {
  Json parameter = {{"key", field.key},
                    {"name", field.name},
                    {"label", field.label},
                    {"help", field.help},
                    {"type", NameOf(field.kind, kKindNames)},
                    {"default", DefaultOf(field)},
                    {"describe", field.describeAs}};
  if (field.limits.given()) {
    if (std::isfinite(field.limits.minimum)) parameter["minimum"] = field.limits.minimum;
    if (std::isfinite(field.limits.maximum)) parameter["maximum"] = field.limits.maximum;
    parameter["step"] = field.limits.step;
  }
  if (field.unit != Unit::None) parameter["unit"] = NameOf(field.unit, kUnitNames);
  for (const sorvanix::Choice& choice : field.choices) {
    parameter["choices"].push_back(
        {{"value", choice.value}, {"name", choice.name}, {"label", choice.label}});
  }
  return parameter;
}

Json ShaderOf(const RegistryRow& row) {
  const ShaderTable& table = *row.table;
  Json shader = {{"id", table.pluginId},
                 {"name", table.name},
                 {"title", std::string("sorvaNIX ") + table.name},
                 {"category", NameOf(table.category, kCategoryNames)},
                 {"summary", table.summary},
                 {"inputs", Json::array()},
                 {"parameters", Json::array()}};
  for (const Field& field : table.fields) {
    if (field.key != sorvanix::kNotExchanged) shader["parameters"].push_back(ParameterOf(field));
  }
  return shader;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 2) {
    std::fprintf(stderr, "usage: write_shaders_json FILE\n");
    return 2;
  }
  Json document = {{"format", "sorvanix-shaders"}, {"version", 1}, {"shaders", Json::array()}};
  for (const RegistryRow& row : sorvanix::ShaderRegistry()) {
    if (row.table != nullptr) document["shaders"].push_back(ShaderOf(row));
  }
  std::ofstream file(arguments[1]);
  file << document.dump(2) << '\n';
  file.close();
  if (!file) {
    std::fprintf(stderr, "write_shaders_json: cannot write %s\n", arguments[1]);
    return 5;
  }
  return 0;
}
