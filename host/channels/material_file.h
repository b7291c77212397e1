// Material files: a graph of shaders written as JSON, checked against the shader catalogue.
//
//     { "shader": "2D Noise", "noiseType": "CellEdgeType", "octaves": 5, "colorLow": [0, 0, 0.5] }
//
// "shader" is a shader's name or plug-in id; the other names are its parameters and inputs. Numbers
// that stand for choices may be written by the choice's name. Vectors are lists of three numbers,
// colours also "#rrggbb". An input is an object of the same form. "$schema", at the top, is for
// editors of JSON and ignored.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/channels/material.h"

namespace sorvanix::host {

/// Something wrong, or doubtful, at one place of a material file.
struct MaterialProblem {
  bool isError = true;    // else a warning: the value is taken as it is
  std::string pointer;    // RFC 6901; empty for the whole file
  TextPosition position;  // of the value
  std::string message;
};

/// "noise.json:3:14: /octaves: expected a number, found a text".
std::string Describe(const std::filesystem::path& file, const MaterialProblem& problem);

struct MaterialReading {
  std::optional<MaterialNode> material;   // only when there are no errors
  std::vector<MaterialProblem> problems;  // in the order of the text

  std::vector<MaterialProblem> Errors() const;
  std::vector<MaterialProblem> Warnings() const;
};

/// Reads the text of a material file. All problems are told, not only the first. A value outside
/// the limits of the shader's dialog is a warning, since files may hold such.
MaterialReading ReadMaterial(std::string_view text, const ShaderCatalogue& catalogue);

}  // namespace sorvanix::host
