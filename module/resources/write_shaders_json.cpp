// Writes Resources/shaders.json from the shaders' tables: the one description that host, command
// line, studio and manual read. Run by the build: write_shaders_json STRINGS FILE GADGETS, with the
// texts that hold the shaders' titles, and a file for the gadgets of the dialogs, which the tests
// compare with the layouts.
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <set>

#include "module/shaders/filters/bright_contrast_dialog.h"
#include "module/shaders/filters/colorizer_dialog.h"
#include "module/shaders/filters/distorter_dialog.h"
#include "module/shaders/filters/fusion_dialog.h"
#include "module/shaders/filters/hue_dialog.h"
#include "module/shaders/filters/posterizer_dialog.h"
#include "module/shaders/generators/gradient_dialog.h"
#include "module/shaders/generators/noise_2d_dialog.h"
#include "module/shaders/generators/noise_3d_dialog.h"
#include "module/shaders/generators/noise_dialog.h"
#include "module/shaders/generators/tiles_dialog.h"
#include "module/shaders/surface/banj_dialog.h"
#include "module/shaders/surface/falloff_dialog.h"
#include "module/shaders/surface/fresnel_dialog.h"
#include "module/shaders/surface/lumas_dialog.h"
#include "module/shaders/surface/projector_dialog.h"
#include "module/shaders/surface/proximal_dialog.h"
#include "module/shell/registry.h"

namespace {

using Json = nlohmann::ordered_json;
using sorvanix::EditorTable;
using sorvanix::Field;
using sorvanix::Ramp;
using sorvanix::RegistryRow;
using sorvanix::ShaderTable;
using sorvanix::Unit;
using sorvanix::ValueKind;

constexpr const char* kKindNames[] = {"int", "bool", "float", "vector", "string"};
constexpr const char* kUnitNames[] = {"", "percent", "degrees", "colour", "radians"};
constexpr const char* kCategoryNames[] = {"generator", "surface", "filter"};

// The dialogs of the shaders; Buffy has none.
const EditorTable* const kEditors[] = {
    &sorvanix::kBanjEditor,       &sorvanix::kBrightContrastEditor, &sorvanix::kColorizerEditor,
    &sorvanix::kDistorterEditor,  &sorvanix::kFalloffEditor,        &sorvanix::kFresnelEditor,
    &sorvanix::kFusionEditor,     &sorvanix::kGradientEditor,       &sorvanix::kHueEditor,
    &sorvanix::kLumasEditor,      &sorvanix::kNoise2DEditor,        &sorvanix::kNoise3DEditor,
    &sorvanix::kPosterizerEditor, &sorvanix::kProjectorEditor,      &sorvanix::kProximalEditor,
    &sorvanix::kTilesEditor,
};

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

Json ColourOf(const Vector& colour) {
  return {Shortest(colour.x), Shortest(colour.y), Shortest(colour.z)};
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
      return ColourOf(field.initial.real);
    case ValueKind::String:
      return "";
    default:
      return nullptr;
  }
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
    Json entry = {{"value", choice.value}, {"name", choice.name}, {"label", choice.label}};
    if (choice.random) entry["random"] = true;
    parameter["choices"].push_back(std::move(entry));
  }
  return parameter;
}

Json InputOf(const Field& field) {
  return {{"key", field.key}, {"name", field.name}, {"label", field.label}, {"help", field.help}};
}

// The key of the row for a member of the block's ramp.
std::int32_t RampMemberKey(const ShaderTable& table, std::size_t member) {
  for (const Field& field : table.fields) {
    if (field.offset == table.ramp.offset + member) return field.key;
  }
  return sorvanix::kNotExchanged;
}

// The knots and their number are one parameter of the ramp; its interpolation stays one of its own.
Json RampOf(const ShaderTable& table) {
  Json ramp = {{"type", "ramp"},
               {"name", "ramp"},
               {"label", table.ramp.label},
               {"help", table.ramp.help},
               {"colourKey", table.ramp.colourKey},
               {"positionKey", table.ramp.positionKey},
               {"biasKey", table.ramp.biasKey},
               {"countKey", RampMemberKey(table, offsetof(Ramp, count))},
               {"interpolationKey", RampMemberKey(table, offsetof(Ramp, interpolation))},
               {"knots", sorvanix::RampMaxKnots},
               {"keyStride", table.ramp.keyStride},
               {"default", Json::array()}};
  for (std::int32_t i = 0; i < table.ramp.initial->count; ++i) {
    const sorvanix::RampKnot& knot = table.ramp.initial->knots[i];
    ramp["default"].push_back({{"position", Shortest(knot.position)},
                               {"colour", ColourOf(knot.colour)},
                               {"bias", Shortest(knot.bias)}});
  }
  return ramp;
}

// Whether a row is the number of the ramp's knots, which its entry holds.
bool IsRampCount(const ShaderTable& table, const Field& field) {
  return table.ramp.given() && field.offset == table.ramp.offset + offsetof(Ramp, count);
}

// Every gadget that the code of a dialog knows.
Json DialogOf(const EditorTable& editor) {
  std::set<std::int32_t> ids = {editor.titleArea};
  if (editor.HasPreview()) ids.insert(editor.previewArea);
  for (const sorvanix::Gadget& gadget : editor.gadgets) ids.insert(gadget.id);
  for (const sorvanix::EnablingRule& rule : editor.enabling) {
    ids.insert(rule.gadgets.begin(), rule.gadgets.end());
  }
  ids.insert(editor.furtherGadgets.begin(), editor.furtherGadgets.end());
  Json dialog = {{"id", editor.dialogId}, {"titleArea", editor.titleArea}, {"gadgets", ids}};
  if (editor.HasPreview()) dialog["previewArea"] = editor.previewArea;
  return dialog;
}

// The title that the module registers the shader under.
Json TitleOf(const RegistryRow& row, const Json& strings) {
  if (row.nameStringId == sorvanix::kLiteralTitle) return row.literalTitle;
  return strings.at(std::to_string(row.nameStringId));
}

Json ShaderOf(const RegistryRow& row, const Json& strings) {
  const ShaderTable& table = *row.table;
  Json shader = {
      {"id", table.pluginId},           {"name", table.name},
      {"title", TitleOf(row, strings)}, {"category", NameOf(table.category, kCategoryNames)},
      {"summary", table.summary},       {"inputs", Json::array()},
      {"parameters", Json::array()}};
  for (const Field& field : table.fields) {
    if (field.key == sorvanix::kNotExchanged || IsRampCount(table, field)) continue;
    if (field.kind == ValueKind::Link) {
      shader["inputs"].push_back(InputOf(field));
    } else {
      shader["parameters"].push_back(ParameterOf(field));
    }
  }
  if (table.ramp.given()) shader["parameters"].push_back(RampOf(table));
  return shader;
}

bool Write(const Json& document, const char* name) {
  std::ofstream file(name);
  file << document.dump(2) << '\n';
  file.close();
  if (!file) std::fprintf(stderr, "write_shaders_json: cannot write %s\n", name);
  return !file.fail();
}

}  // namespace

int main(int argumentCount, char** arguments) {
  if (argumentCount != 4) {
    std::fprintf(stderr, "usage: write_shaders_json STRINGS FILE GADGETS\n");
    return 2;
  }
  std::ifstream texts(arguments[1]);
  const Json strings = Json::parse(texts);
  Json document = {{"format", "sorvanix-shaders"}, {"version", 1}, {"shaders", Json::array()}};
  for (const RegistryRow& row : sorvanix::ShaderRegistry()) {
    document["shaders"].push_back(ShaderOf(row, strings));
  }
  Json dialogs = Json::object();
  for (const EditorTable* editor : kEditors) dialogs[editor->shader->name] = DialogOf(*editor);
  return Write(document, arguments[2]) && Write(dialogs, arguments[3]) ? 0 : 5;
}
