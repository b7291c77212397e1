// A ramp out of a material file: a list of knots.
//
//     [ { "position": 0, "colour": "#102040" }, { "position": 1, "colour": [1, 1, 1], "bias": 0.3 }
//     ]
#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// What a knot holds, described in the way of a shader's parameters: position, colour, bias.
std::span<const ShaderParameter> KnotParameters();
/// Whether a knot must have the value; bias has a default.
bool IsRequired(const ShaderParameter& knotParameter);

struct RampProblem {
  bool isError = true;             // else a warning: the value is taken as it is
  std::vector<std::string> below;  // the names on the way from the ramp to the place
  const Json* place = nullptr;
  std::string message;
};

/// The knots in the order of their positions. It counts only when no error was added to `problems`.
Ramp ReadRamp(const ShaderParameter& parameter, const Json& json,
              std::vector<RampProblem>& problems);

}  // namespace sorvanix::host
