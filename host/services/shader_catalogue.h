// What the program knows about each shader: names, inputs, parameters with limits and choices.
//
// Read from "Resources/shaders.json", which the module's own tables are the source of. Everything
// that speaks of shaders to people takes its words from here.
#pragma once

#include <sorvanix/types.h>

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <variant>
#include <vector>

namespace sorvanix::host {

/// One of the values that an integer parameter is meant to have.
struct ParameterChoice {
  std::int32_t value = 0;
  std::string name;     ///< in files and scripts
  std::string label;    ///< in dialogs
  bool random = false;  ///< every sample draws a new random number
};

/// One colour of a ramp, at a place of 0..1.
struct RampKnot {
  float position = 0;
  Vector colour = {};
  float bias = 0.5f;  ///< where the span to the next knot is half way through
};
using Ramp = std::vector<RampKnot>;

enum class ParameterType { Integer, Real, Bool, Vector, Text, Ramp };

using ParameterValue = std::variant<std::int32_t, float, bool, Vector, std::string, Ramp>;

/// Where the containers of the messages hold a ramp: knot i has its values under these keys plus i
/// times the stride.
struct RampKeys {
  std::int32_t count = 0;  ///< of the number of knots
  std::int32_t colour = 0, position = 0, bias = 0;
  std::int32_t stride = 0;
  std::int32_t interpolation = 0;  ///< of the parameter that chooses the curve between knots
  std::int32_t knots = 0;          ///< how many there may be
};

struct ShaderParameter {
  std::int32_t key = 0;  ///< in the containers of the messages; 0 for a ramp
  std::string name;
  std::string label;
  std::string help;
  ParameterType type = ParameterType::Integer;
  ParameterValue initial;  ///< the alternative that `type` says
  /// What the dialog limits the value to; files may hold others.
  std::optional<double> minimum, maximum, step;
  std::string unit;  ///< "percent", "degrees", ..., empty for none
  std::vector<ParameterChoice> choices;
  std::int32_t describe = 0;  ///< a DescribeType: the shader's own word for the type
  RampKeys ramp;              ///< of a ramp alone

  const ParameterChoice* FindChoice(std::string_view choice) const noexcept;
};

/// An input takes another shader or a bitmap.
struct ShaderInput {
  std::int32_t key = 0;
  std::string name;
  std::string label;
  std::string help;
};

struct ShaderDescription {
  std::int32_t id = 0;
  std::string name;
  std::string title;     ///< as registered with the host
  std::string category;  ///< "generator", "surface" or "filter"
  std::string summary;
  std::vector<ShaderInput> inputs;
  std::vector<ShaderParameter> parameters;
  std::string json;  ///< the whole entry as JSON text

  const ShaderInput* FindInput(std::string_view input) const noexcept;
  const ShaderParameter* FindParameter(std::string_view parameter) const noexcept;
  const ShaderParameter* FindParameter(std::int32_t key) const noexcept;
};

class ShaderCatalogue {
 public:
  /// Reads the text of a catalogue. The text is taken as a whole or not at all: an unknown or
  /// missing name, a wrong type or a repeated id is an error of one line with its place.
  static tl::expected<ShaderCatalogue, std::string> Parse(std::string_view text);
  /// Reads a file; the error begins with its name.
  static tl::expected<ShaderCatalogue, std::string> Load(const std::filesystem::path& file);

  const std::vector<ShaderDescription>& Shaders() const noexcept { return shaders_; }
  const ShaderDescription* Find(std::int32_t id) const noexcept;
  const ShaderDescription* Find(std::string_view name) const noexcept;

 private:
  std::vector<ShaderDescription> shaders_;
};

}  // namespace sorvanix::host
