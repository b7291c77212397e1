#include "host/channels/material_ramp.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <utility>

#include "host/channels/material_value.h"

namespace sorvanix::host {

namespace {

enum KnotPart { kPosition, kColour, kBias };  // in the order of KnotParameters

ShaderParameter Part(const char* name, const char* label, const char* help, ParameterType type,
                     ParameterValue initial) {
  ShaderParameter part;
  part.name = name;
  part.label = label;
  part.help = help;
  part.type = type;
  part.initial = std::move(initial);
  if (type == ParameterType::Real) {
    part.minimum = 0;
    part.maximum = 1;
  } else {
    part.unit = "colour";
  }
  return part;
}

class RampReader {
 public:
  explicit RampReader(std::vector<RampProblem>& problems) : problems_(problems) {}

  RampKnot ReadKnot(const Json& json, const std::string& index) {
    const auto* members = std::get_if<Json::Object>(&json.value);
    if (members == nullptr) {
      Fail({index}, json, fmt::format("expected an object, a knot, found {}", KindOf(json)));
      return {};
    }
    for (const JsonMember& member : *members) CheckName(member, index);
    const auto value = [&](KnotPart part) { return ReadPart(json, index, KnotParameters()[part]); };
    return {.position = std::get<float>(value(kPosition)),
            .colour = std::get<Vector>(value(kColour)),
            .bias = std::get<float>(value(kBias))};
  }

  void Fail(std::vector<std::string> below, const Json& place, std::string message) {
    problems_.push_back({true, std::move(below), &place, std::move(message)});
  }
  void Warn(std::vector<std::string> below, const Json& place, std::string message) {
    problems_.push_back({false, std::move(below), &place, std::move(message)});
  }

 private:
  void CheckName(const JsonMember& member, const std::string& index) {
    std::vector<std::string_view> names;
    for (const ShaderParameter& part : KnotParameters()) names.push_back(part.name);
    if (std::find(names.begin(), names.end(), member.name) != names.end()) return;
    Fail({index, member.name}, member.value, UnknownName("part of a knot", member.name, names));
  }

  ParameterValue ReadPart(const Json& knot, const std::string& index, const ShaderParameter& part) {
    const Json* given = knot.Find(part.name);
    if (given == nullptr) {
      if (IsRequired(part)) Fail({index}, knot, fmt::format("\"{}\" is missing", part.name));
      return part.initial;
    }
    const auto value = ReadParameterValue(part, *given);
    if (!value) {
      Fail({index, part.name}, *given, value.error());
      return part.initial;
    }
    if (!value->warning.empty()) Warn({index, part.name}, *given, value->warning);
    return value->value;
  }

  std::vector<RampProblem>& problems_;
};

bool IsBefore(const RampKnot& first, const RampKnot& second) {
  return first.position < second.position;
}

}  // namespace

std::span<const ShaderParameter> KnotParameters() {
  using enum ParameterType;
  static const std::array<ShaderParameter, 3> parts = {
      Part("position", "Position", "The place of the knot on the ramp.", Real, 0.0f),
      Part("colour", "Colour", "The colour at the knot.", Vector, ::Vector{}),
      Part("bias", "Bias", "Where the span to the next knot is half way through.", Real, 0.5f)};
  return parts;
}

bool IsRequired(const ShaderParameter& knotParameter) {
  return &knotParameter != &KnotParameters()[kBias];
}

Ramp ReadRamp(const ShaderParameter& parameter, const Json& json,
              std::vector<RampProblem>& problems) {
  RampReader reader(problems);
  Ramp ramp;
  const auto* list = std::get_if<Json::Array>(&json.value);
  const auto most = static_cast<std::size_t>(parameter.ramp.knots);
  if (list == nullptr) {
    reader.Fail({}, json, fmt::format("expected a list of knots, found {}", KindOf(json)));
  } else if (list->empty() || list->size() > most) {
    reader.Fail({}, json, fmt::format("expected 1 to {} knots, found {}", most, list->size()));
  } else {
    for (std::size_t i = 0; i < list->size(); ++i) {
      ramp.push_back(reader.ReadKnot((*list)[i], std::to_string(i)));
    }
    if (!std::is_sorted(ramp.begin(), ramp.end(), IsBefore)) {
      reader.Warn({}, json, "the knots do not stand in the order of their positions; now they do");
      std::stable_sort(ramp.begin(), ramp.end(), IsBefore);
    }
  }
  return ramp;
}

}  // namespace sorvanix::host
