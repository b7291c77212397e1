#include "host/channels/material_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "host/channels/material_value.h"
#include "host/channels/nearest_name.h"
#include "host/services/filenames.h"

namespace sorvanix::host {

namespace {

// The pointer to a member of what `pointer` points to, escaped as RFC 6901 tells.
std::string Extended(const std::string& pointer, std::string_view name) {
  std::string extended = pointer + '/';
  for (const char c : name) {
    if (c == '~') {
      extended += "~0";
    } else if (c == '/') {
      extended += "~1";
    } else {
      extended += c;
    }
  }
  return extended;
}

// A parser's message may end with what it read last: long, broken over lines, or no text at all.
std::string WithoutExcerpt(std::string message) {
  message.resize(std::min(message.find("; last read"), message.size()));
  return message;
}

// Walks the tree. It may recurse: the parser limits the depth.
class MaterialReader {
 public:
  MaterialReader(std::string_view text, const ShaderCatalogue& catalogue)
      : text_(text), catalogue_(catalogue) {}

  MaterialReading Read() {
    MaterialReading reading;
    const auto json = ParseJson(text_);
    if (!json) {
      AddProblem(true, {}, json.error().offset, WithoutExcerpt(json.error().message));
    } else {
      MaterialNode node = ReadNode(*json, {});
      if (!failed_) reading.material = std::move(node);
    }
    std::stable_sort(problems_.begin(), problems_.end(), [](const auto& first, const auto& second) {
      const auto place = [](const MaterialProblem& problem) {
        return std::pair(problem.position.line, problem.position.column);
      };
      return place(first) < place(second);
    });
    reading.problems = std::move(problems_);
    return reading;
  }

 private:
  void AddProblem(bool isError, const std::string& pointer, std::size_t offset,
                  std::string message) {
    failed_ = failed_ || isError;
    problems_.push_back({isError, pointer, PositionIn(text_, offset), std::move(message)});
  }
  void Fail(const std::string& pointer, const Json& place, std::string message) {
    AddProblem(true, pointer, place.offset, std::move(message));
  }

  // What it answers counts only when nothing failed.
  MaterialNode ReadNode(const Json& json, const std::string& pointer) {
    MaterialNode node;
    const auto* members = std::get_if<Json::Object>(&json.value);
    if (members == nullptr) {
      Fail(pointer, json, fmt::format("expected an object, a shader, found {}", KindOf(json)));
      return node;
    }
    node.shader = ReadShader(json, pointer);
    if (node.shader == nullptr) return node;
    for (const JsonMember& member : *members) CheckName(member, *node.shader, pointer);
    for (const ShaderParameter& parameter : node.shader->parameters) {
      if (const Json* given = json.Find(parameter.name)) {
        ReadParameter(parameter, *given, Extended(pointer, parameter.name), node);
      }
    }
    for (const ShaderInput& input : node.shader->inputs) {
      if (const Json* given = json.Find(input.name)) {
        node.inputs.push_back({&input, ReadNode(*given, Extended(pointer, input.name))});
      }
    }
    return node;
  }

  const ShaderDescription* ReadShader(const Json& json, const std::string& pointer) {
    const Json* given = json.Find("shader");
    if (given == nullptr) {
      Fail(pointer, json, "\"shader\" is missing: the name or the id of a shader");
      return nullptr;
    }
    const std::string place = Extended(pointer, "shader");
    if (const auto* name = std::get_if<std::string>(&given->value)) {
      const ShaderDescription* shader = catalogue_.Find(*name);
      if (shader == nullptr) Fail(place, *given, UnknownShader(*name));
      return shader;
    }
    if (const auto* id = std::get_if<std::int64_t>(&given->value)) {
      for (const ShaderDescription& shader : catalogue_.Shaders()) {
        if (shader.id == *id) return &shader;
      }
      Fail(place, *given, fmt::format("there is no shader with the id {}", *id));
      return nullptr;
    }
    Fail(place, *given, fmt::format("expected a shader's name or id, found {}", KindOf(*given)));
    return nullptr;
  }

  std::string UnknownShader(const std::string& name) const {
    std::vector<std::string_view> names;
    for (const ShaderDescription& shader : catalogue_.Shaders()) names.push_back(shader.name);
    return UnknownName("shader", name, names);
  }

  void CheckName(const JsonMember& member, const ShaderDescription& shader,
                 const std::string& pointer) {
    if (member.name == "shader" || (member.name == "$schema" && pointer.empty())) return;
    if (shader.FindParameter(member.name) != nullptr) return;
    if (shader.FindInput(member.name) != nullptr) return;
    std::vector<std::string_view> names;
    for (const ShaderParameter& parameter : shader.parameters) names.push_back(parameter.name);
    for (const ShaderInput& input : shader.inputs) names.push_back(input.name);
    Fail(Extended(pointer, member.name), member.value,
         UnknownName(fmt::format("parameter of {}", shader.name), member.name, names));
  }

  void ReadParameter(const ShaderParameter& parameter, const Json& given,
                     const std::string& pointer, MaterialNode& node) {
    auto value = ReadParameterValue(parameter, given);
    if (!value) {
      Fail(pointer, given, value.error());
      return;
    }
    if (!value->warning.empty()) AddProblem(false, pointer, given.offset, value->warning);
    node.values.push_back({&parameter, std::move(value->value)});
  }

  std::string_view text_;
  const ShaderCatalogue& catalogue_;
  std::vector<MaterialProblem> problems_;
  bool failed_ = false;
};

std::vector<MaterialProblem> Select(const std::vector<MaterialProblem>& problems, bool errors) {
  std::vector<MaterialProblem> selected;
  std::copy_if(problems.begin(), problems.end(), std::back_inserter(selected),
               [errors](const MaterialProblem& problem) { return problem.isError == errors; });
  return selected;
}

}  // namespace

std::string Describe(const std::filesystem::path& file, const MaterialProblem& problem) {
  return fmt::format("{}:{}:{}: {}{}{}", Utf8FromPath(file), problem.position.line,
                     problem.position.column, problem.pointer, problem.pointer.empty() ? "" : ": ",
                     problem.message);
}

std::vector<MaterialProblem> MaterialReading::Errors() const { return Select(problems, true); }

std::vector<MaterialProblem> MaterialReading::Warnings() const { return Select(problems, false); }

MaterialReading ReadMaterial(std::string_view text, const ShaderCatalogue& catalogue) {
  return MaterialReader(text, catalogue).Read();
}

}  // namespace sorvanix::host
