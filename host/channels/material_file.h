// Material files: a graph of shaders written as JSON, checked against the shader catalogue.
//
//     { "shader": "2D Noise", "noiseType": "CellEdgeType", "octaves": 5, "colorLow": [0, 0, 0.5] }
//
// "shader" is a shader's name or plug-in id; the other names are its parameters and inputs. Numbers
// that stand for choices may be written by the choice's name. Vectors are lists of three numbers,
// colours also "#rrggbb", ramps lists of knots. An input is an object of the same form, the name of
// another material file (.json), the name of a bitmap, or null for nothing; names are relative to
// the file that they stand in. "$schema", at the top, is for editors of JSON and ignored.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "host/channels/material.h"
#include "host/services/text_position.h"

namespace sorvanix::host {

/// Something wrong, or doubtful, at one place of a material file.
struct MaterialProblem {
  bool isError = true;         // else a warning: the value is taken as it is
  std::filesystem::path file;  // another material file that was referred to; empty for the own one
  std::string pointer;         // RFC 6901; empty for the whole file
  TextPosition position;       // of the value
  std::string message;
};

/// "noise.json:3:14: /octaves: expected a number, found a text". The problem's own file is told if
/// it has one, else `file`.
std::string Describe(const std::filesystem::path& file, const MaterialProblem& problem);

/// So many errors, and so many warnings, are told of one reading; the others are counted.
inline constexpr std::size_t kMostProblems = 100;
struct UntoldProblems {
  std::size_t errors = 0, warnings = 0;
};

struct MaterialReading {
  std::optional<MaterialNode> material;   // only when there are no errors
  std::vector<MaterialProblem> problems;  // in the order of the text
  UntoldProblems untold;

  std::vector<MaterialProblem> Errors() const;
  std::vector<MaterialProblem> Warnings() const;
};

/// Where the files are that a material refers to.
struct MaterialPlaces {
  std::filesystem::path file;                       // of the material itself; empty: where we are
  std::vector<std::filesystem::path> imageFolders;  // searched for bitmaps after the file's own
  // Of a later program: what is not known is a warning, and left out.
  bool isLater = false;
};

/// The most shaders that a graph may have. References can name one file many times, and a few small
/// files might describe more shaders than there is memory for.
inline constexpr int kMostShaders = 4096;

/// Reads the text of a material file and all files that it refers to, one inside the other down to
/// kDeepestGraph. Up to kMostProblems are told, not only the first. A value outside the limits of
/// the shader's dialog is a warning, since files may hold such. A reference that leads back to a
/// file that is just being read is an error, and so is a bitmap that cannot be opened.
MaterialReading ReadMaterial(std::string_view text, const ShaderCatalogue& catalogue,
                             const MaterialPlaces& places = {});

/// The text of a material file, or why there is none: one line without the file's name.
tl::expected<std::string, std::string> ReadMaterialText(const std::filesystem::path& file);

}  // namespace sorvanix::host
