// Fields of a scene file: a name in the file, a member in memory, and what it may hold.
//
// One row says all of it, for reading and for writing. Values are spelled as in material files.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

struct FieldRule {
  std::optional<double> least = std::nullopt, greatest = std::nullopt;  ///< beyond is an error
  bool isColour = false;                                                ///< also "#rrggbb"
  std::vector<ParameterChoice> choices = {};  ///< an integer or enumeration has names
};

template <class Record>
struct SceneField {
  ShaderParameter parameter;  ///< name, type and choices
  FieldRule rule;
  std::function<ParameterValue(const Record&)> get;
  std::function<void(Record&, const ParameterValue&)> set;
};

template <class Record>
using SceneFields = std::vector<SceneField<Record>>;

template <class Value>
constexpr ParameterType TypeOfField() {
  if constexpr (std::is_same_v<Value, bool>) return ParameterType::Bool;
  if constexpr (std::is_same_v<Value, float>) return ParameterType::Real;
  if constexpr (std::is_same_v<Value, Vector>) return ParameterType::Vector;
  if constexpr (std::is_same_v<Value, std::string>) return ParameterType::Text;
  return ParameterType::Integer;
}

/// A field that `access` finds in a record, constant or not.
template <class Record, class Access>
SceneField<Record> FieldAt(std::string name, Access access, FieldRule rule = {}) {
  using Value = std::remove_cvref_t<decltype(access(std::declval<Record&>()))>;
  constexpr bool isEnum = std::is_enum_v<Value>;
  using Stored = std::conditional_t<isEnum, std::int32_t, Value>;
  SceneField<Record> field;
  field.parameter.name = std::move(name);
  field.parameter.type = TypeOfField<Value>();
  field.parameter.choices = rule.choices;
  if (rule.isColour) field.parameter.unit = "colour";
  field.rule = std::move(rule);
  field.get = [access](const Record& record) -> ParameterValue {
    return static_cast<Stored>(access(record));
  };
  field.set = [access](Record& record, const ParameterValue& value) {
    access(record) = static_cast<Value>(std::get<Stored>(value));
  };
  return field;
}

template <class Record, class Value>
SceneField<Record> Field(std::string name, Value Record::*member, FieldRule rule = {}) {
  const auto access = [member](auto& record) -> auto& { return record.*member; };
  return FieldAt<Record>(std::move(name), access, std::move(rule));
}

/// Choices numbered from 0.
inline std::vector<ParameterChoice> Choices(std::initializer_list<const char*> names) {
  std::vector<ParameterChoice> choices;
  for (const char* name : names) {
    choices.push_back({static_cast<std::int32_t>(choices.size()), name, {}});
  }
  return choices;
}

}  // namespace sorvanix::host
