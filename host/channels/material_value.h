// One parameter's value out of a material file.
#pragma once

#include <string>
#include <string_view>
#include <tl/expected.hpp>
#include <vector>

#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

struct ReadValue {
  ParameterValue value;
  std::string warning;  // empty, or why a dialog would not give this value
};

/// The value for a parameter of any type but a ramp (material_ramp.h); the error tells what was
/// expected, in one line without the place.
tl::expected<ReadValue, std::string> ReadParameterValue(const ShaderParameter& parameter,
                                                        const Json& json);

/// What stands in an error message for the kind of a value: "a number", "a text", ...
std::string_view KindOf(const Json& json);

/// "unknown shader "2D Nose"; did you mean "2D Noise"?"
std::string UnknownName(std::string_view what, std::string_view name,
                        const std::vector<std::string_view>& knownNames);

}  // namespace sorvanix::host
