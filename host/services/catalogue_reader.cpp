#include "host/services/catalogue_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <set>
#include <tuple>

#include "host/services/json.h"
#include "host/services/json_numbers.h"
#include "host/services/text_position.h"

namespace sorvanix::host {

namespace {

constexpr std::string_view kFormat = "sorvanix-shaders";
constexpr std::int32_t kVersion = 1;

// The file as a whole.
struct CatalogueFile {
  std::string format;
  std::int32_t version = 0;
  std::vector<ShaderDescription> shaders;
};

// A name of the file and the member that takes its value. The tables below are all that is known
// here of the format; the reader under them knows none of it.
template <class Struct, class Member>
struct Row {
  using Owner = Struct;
  std::string_view name;
  Member Struct::*member;
  bool required = true;
};
template <class Struct, class Member>
Row(const char*, Member Struct::*) -> Row<Struct, Member>;
template <class Struct, class Member>
constexpr Row<Struct, Member> Optional(std::string_view name, Member Struct::*member) {
  return {name, member, false};
}

constexpr auto RowsOf(const ParameterChoice&) {
  return std::tuple{Row{"value", &ParameterChoice::value}, Row{"name", &ParameterChoice::name},
                    Row{"label", &ParameterChoice::label},
                    Optional("random", &ParameterChoice::random)};
}
constexpr auto RowsOf(const ShaderInput&) {
  return std::tuple{Row{"key", &ShaderInput::key}, Row{"name", &ShaderInput::name},
                    Row{"label", &ShaderInput::label}, Optional("help", &ShaderInput::help)};
}
constexpr auto RowsOf(const ShaderParameter&) {
  return std::tuple{Row{"key", &ShaderParameter::key},
                    Row{"name", &ShaderParameter::name},
                    Row{"label", &ShaderParameter::label},
                    Optional("help", &ShaderParameter::help),
                    Row{"type", &ShaderParameter::type},
                    Row{"default", &ShaderParameter::initial},
                    Row{"describe", &ShaderParameter::describe},
                    Optional("minimum", &ShaderParameter::minimum),
                    Optional("maximum", &ShaderParameter::maximum),
                    Optional("step", &ShaderParameter::step),
                    Optional("unit", &ShaderParameter::unit),
                    Optional("choices", &ShaderParameter::choices)};
}
constexpr auto RowsOf(const RampKnot&) {
  return std::tuple{Row{"position", &RampKnot::position}, Row{"colour", &RampKnot::colour},
                    Row{"bias", &RampKnot::bias}};
}
constexpr auto RowsOf(const RampKeys&) {
  return std::tuple{
      Row{"countKey", &RampKeys::count},       Row{"colourKey", &RampKeys::colour},
      Row{"positionKey", &RampKeys::position}, Row{"biasKey", &RampKeys::bias},
      Row{"keyStride", &RampKeys::stride},     Row{"interpolationKey", &RampKeys::interpolation},
      Row{"knots", &RampKeys::knots}};
}
// The entry of a ramp: a parameter that has, in place of a key, those of its knots.
constexpr auto RowsOfRamp() {
  return std::tuple_cat(
      std::tuple{Row{"name", &ShaderParameter::name}, Row{"label", &ShaderParameter::label},
                 Optional("help", &ShaderParameter::help), Row{"type", &ShaderParameter::type},
                 Row{"default", &ShaderParameter::initial}},
      RowsOf(RampKeys()));
}
constexpr auto RowsOf(const ShaderDescription&) {
  return std::tuple{Row{"id", &ShaderDescription::id},
                    Row{"name", &ShaderDescription::name},
                    Row{"title", &ShaderDescription::title},
                    Row{"category", &ShaderDescription::category},
                    Row{"summary", &ShaderDescription::summary},
                    Row{"inputs", &ShaderDescription::inputs},
                    Row{"parameters", &ShaderDescription::parameters}};
}
constexpr auto RowsOf(const CatalogueFile&) {
  return std::tuple{Row{"format", &CatalogueFile::format}, Row{"version", &CatalogueFile::version},
                    Row{"shaders", &CatalogueFile::shaders}};
}

// The names of the types, in the order of ParameterType and of the alternatives of ParameterValue.
constexpr std::array<std::string_view, 6> kTypeNames = {"int",    "float",  "bool",
                                                        "vector", "string", "ramp"};

// Reads values of any type that the tables mention. The first thing that is wrong is kept, and the
// way to it is put together while the calls return.
class Reader {
 public:
  template <class Struct>
  bool Read(const Json& json, Struct& value) {
    return ReadRows(json, RowsOf(value), value) && Finish(json, value);
  }
  bool Read(const Json& json, ShaderParameter& value) {
    const Json* type = json.Find("type");
    const auto* name = type == nullptr ? nullptr : std::get_if<std::string>(&type->value);
    const bool isRamp = name != nullptr && *name == kTypeNames.back();
    return (isRamp ? ReadRows(json, RowsOfRamp(), value, value.ramp)
                   : ReadRows(json, RowsOf(value), value)) &&
           Finish(json, value);
  }

  bool Read(const Json& json, std::int32_t& value) {
    return Take(json, IntegerIn(json), value, "expected an integer");
  }
  bool Read(const Json& json, float& value) {
    return Take(json, FloatIn(json), value, "expected a number");
  }
  bool Read(const Json& json, Vector& value) {
    return Take(json, VectorIn(json), value, "expected three numbers");
  }
  bool Read(const Json& json, bool& value) {
    const auto* truth = std::get_if<bool>(&json.value);
    if (truth == nullptr) return Fail(json, "expected true or false");
    value = *truth;
    return true;
  }
  bool Read(const Json& json, std::string& value) {
    const auto* text = std::get_if<std::string>(&json.value);
    if (text == nullptr) return Fail(json, "expected a text");
    value = *text;
    return true;
  }
  bool Read(const Json& json, std::optional<double>& value) {
    if (const auto* integer = std::get_if<std::int64_t>(&json.value)) {
      value = static_cast<double>(*integer);
    } else if (const auto* real = std::get_if<double>(&json.value)) {
      value = *real;
    } else {
      return Fail(json, "expected a number");
    }
    return true;
  }
  bool Read(const Json& json, ParameterType& value) {
    std::string name;
    if (!Read(json, name)) return false;
    const auto found = std::find(kTypeNames.begin(), kTypeNames.end(), name);
    if (found == kTypeNames.end())
      return Fail(json, "expected int, float, bool, vector, string or ramp");
    value = static_cast<ParameterType>(found - kTypeNames.begin());
    return true;
  }
  // As the parameter's type has it, which is read before.
  bool Read(const Json& json, ParameterValue& value, ParameterType type) {
    switch (type) {
      case ParameterType::Integer:
        return Read(json, value.emplace<std::int32_t>());
      case ParameterType::Real:
        return Read(json, value.emplace<float>());
      case ParameterType::Bool:
        return Read(json, value.emplace<bool>());
      case ParameterType::Vector:
        return Read(json, value.emplace<Vector>());
      case ParameterType::Text:
        return Read(json, value.emplace<std::string>());
      case ParameterType::Ramp:
        return Read(json, value.emplace<Ramp>());
    }
    return false;
  }
  template <class Element>
  bool Read(const Json& json, std::vector<Element>& values) {
    const auto* elements = std::get_if<Json::Array>(&json.value);
    if (elements == nullptr) return Fail(json, "expected an array");
    values.resize(elements->size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      if (!Below(std::to_string(i), Read((*elements)[i], values[i]))) return false;
    }
    return true;
  }

  std::string ErrorIn(std::string_view text) const {
    const TextPosition position = PositionIn(text, offset_);
    const std::string_view separator = pointer_.empty() ? "" : ": ";
    return fmt::format("{}:{}: {}{}{}", position.line, position.column, pointer_, separator,
                       message_);
  }

 private:
  bool Fail(const Json& json, std::string message) {
    message_ = std::move(message);
    offset_ = json.offset;
    return false;
  }

  // Passes an answer on; of a failure it notes under which name it was met.
  bool Below(std::string_view name, bool succeeded) {
    if (!succeeded) pointer_.insert(0, fmt::format("/{}", name));
    return succeeded;
  }

  template <class Type>
  bool Take(const Json& json, const std::optional<Type>& found, Type& value, const char* expected) {
    if (!found) return Fail(json, expected);
    value = *found;
    return true;
  }

  // Rows of several structs that share one object.
  template <class Rows, class... Parts>
  bool ReadRows(const Json& json, const Rows& rows, Parts&... parts) {
    const auto* members = std::get_if<Json::Object>(&json.value);
    if (members == nullptr) return Fail(json, "expected an object");
    for (const JsonMember& member : *members) {
      if (!IsNamed(rows, member.name)) {
        return Below(member.name, Fail(member.value, "this name is unknown"));
      }
    }
    const auto read = [&](const auto& row) {
      using Owner = typename std::decay_t<decltype(row)>::Owner;
      return ReadRow(json, row, std::get<Owner&>(std::tie(parts...)));
    };
    return std::apply([&](const auto&... row) { return (read(row) && ...); }, rows);
  }

  template <class Rows>
  static bool IsNamed(const Rows& rows, std::string_view name) {
    return std::apply([&](const auto&... row) { return ((row.name == name) || ...); }, rows);
  }

  template <class Struct, class Member>
  bool ReadRow(const Json& json, const Row<Struct, Member>& row, Struct& value) {
    const Json* member = json.Find(row.name);
    if (member == nullptr) {
      return !row.required || Fail(json, fmt::format("\"{}\" is missing", row.name));
    }
    if constexpr (std::is_same_v<Member, ParameterValue>) {
      return Below(row.name, Read(*member, value.*row.member, value.type));
    } else {
      return Below(row.name, Read(*member, value.*row.member));
    }
  }

  // What no single row can tell: names and numbers that must differ, and the like.
  bool Finish(const Json& /*json*/, const ParameterChoice& /*choice*/) { return true; }
  bool Finish(const Json& /*json*/, const ShaderInput& /*input*/) { return true; }
  bool Finish(const Json& /*json*/, const RampKnot& /*knot*/) { return true; }
  bool Finish(const Json& json, const ShaderParameter& parameter) {
    return Differ(json, parameter.choices, &ParameterChoice::value, "value") &&
           Differ(json, parameter.choices, &ParameterChoice::name, "name");
  }
  bool Finish(const Json& json, ShaderDescription& shader) {
    shader.json = WriteJson(json);
    return Differ(json, shader.inputs, &ShaderInput::key, "key") &&
           Differ(json, shader.inputs, &ShaderInput::name, "name") &&
           Differ(json, shader.parameters, &ShaderParameter::key, "key") &&
           Differ(json, shader.parameters, &ShaderParameter::name, "name");
  }
  bool Finish(const Json& json, const CatalogueFile& file) {
    if (file.format != kFormat) return Fail(json, fmt::format("this is no {} file", kFormat));
    if (file.version != kVersion)
      return Fail(json, fmt::format("unknown version {}", file.version));
    return Differ(json, file.shaders, &ShaderDescription::id, "id") &&
           Differ(json, file.shaders, &ShaderDescription::name, "name");
  }

  template <class Element, class Member>
  bool Differ(const Json& json, const std::vector<Element>& elements, Member Element::*member,
              std::string_view name) {
    std::set<Member> seen;
    for (const Element& element : elements) {
      if (seen.insert(element.*member).second) continue;
      return Fail(json, fmt::format("{} {} stands here twice", name, element.*member));
    }
    return true;
  }

  std::string message_, pointer_;
  std::size_t offset_ = 0;
};

}  // namespace

tl::expected<std::vector<ShaderDescription>, std::string> ReadCatalogue(std::string_view text) {
  const auto json = ParseJson(text);
  if (!json) {
    const TextPosition position = PositionIn(text, json.error().offset);
    return tl::unexpected(
        fmt::format("{}:{}: {}", position.line, position.column, json.error().message));
  }
  CatalogueFile file;
  Reader reader;
  if (!reader.Read(*json, file)) return tl::unexpected(reader.ErrorIn(text));
  return std::move(file.shaders);
}

}  // namespace sorvanix::host
