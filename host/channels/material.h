// A material's graph in memory: shaders with the parameters they are given, and what feeds their
// inputs.
#pragma once

#include <filesystem>
#include <string>
#include <variant>
#include <vector>

#include "host/services/containers.h"
#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

struct MaterialInput;

/// One shader of the graph. The descriptions belong to the catalogue, which must outlive it.
struct MaterialNode {
  struct Value {
    const ShaderParameter* parameter = nullptr;
    ParameterValue value;  // of the parameter's type
  };

  const ShaderDescription* shader = nullptr;
  std::vector<Value> values;  // in the catalogue's order; those not given keep their defaults
  std::vector<MaterialInput> inputs;  // in the catalogue's order; those not given stay empty
};

struct MaterialBitmap {
  std::string name;            // as material files spell it
  std::filesystem::path file;  // where it was found
};

struct MaterialInput {
  const ShaderInput* input = nullptr;
  std::variant<MaterialNode, MaterialBitmap> content;
};

/// The node as message MessageSetParameters takes it. An input is a container of its own: the
/// plug-in id and the parameters of the shader that feeds it, or id 0 and a bitmap's file.
Container ContainerOf(const MaterialNode& node);

/// A parameter's value as a material file spells it.
Json JsonOf(const ShaderParameter& parameter, const ParameterValue& value);

/// The node as a material file spells it, always in the same way: names rather than numbers, the
/// catalogue's order. Read again it gives an equal node.
Json JsonOf(const MaterialNode& node);

/// Whether a shader of the graph draws a new random number for every sample. Its picture depends on
/// the order of the samples and on all that the module drew since it was started; everything else
/// depends on the sample alone.
bool DrawsRandomNumbers(const MaterialNode& node);

}  // namespace sorvanix::host
