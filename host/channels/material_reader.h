// The walk through the files of a material: JSON in, nodes and problems out.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "host/channels/material_file.h"
#include "host/channels/problem_list.h"

namespace sorvanix::host {

/// Reads one material. It recurses: into inputs and referred files down to kDeepestGraph shaders,
/// and no text nests deeper than the JSON parser allows.
class MaterialReader {
 public:
  MaterialReader(const ShaderCatalogue& catalogue, const MaterialPlaces& places)
      : catalogue_(catalogue), places_(places) {}

  MaterialReading Read(std::string_view text);

 private:
  using Content = std::variant<MaterialNode, MaterialBitmap>;

  // A file that is just being read.
  struct Source {
    std::string_view text;
    std::filesystem::path file;      // as messages name it; empty for the material itself
    std::filesystem::path folder;    // that names in it are relative to
    std::filesystem::path prefix;    // the way from the material's own folder to that folder
    std::filesystem::path identity;  // the same for all ways to name the file
    std::size_t number = 0;          // in the order of reading
  };
  MaterialNode ReadSource(Source source, std::size_t depth);
  MaterialNode ReadNode(const Json& json, const std::string& pointer, std::size_t depth);
  bool Enter(const Json& json, const std::string& pointer, std::size_t depth);
  const ShaderDescription* ReadShader(const Json& json, const std::string& pointer);
  void CheckName(const JsonMember& member, const ShaderDescription& shader,
                 const std::string& pointer);
  void ReadParameter(const ShaderParameter& parameter, const Json& given,
                     const std::string& pointer, MaterialNode& node);
  std::optional<Content> ReadInput(const Json& given, const std::string& pointer,
                                   std::size_t depth);
  std::optional<Content> ReadReference(const std::string& name, const Json& given,
                                       const std::string& pointer, std::size_t depth);
  std::optional<MaterialBitmap> FindBitmap(const std::string& name, const Json& given,
                                           const std::string& pointer);

  void Fail(const std::string& pointer, const Json& place, std::string message) {
    AddProblem(!places_.isLater, pointer, place.offset, std::move(message));
  }
  void AddProblem(bool isError, const std::string& pointer, std::size_t offset,
                  std::string message);

  const ShaderCatalogue& catalogue_;
  const MaterialPlaces& places_;
  std::vector<Source> open_;  // the innermost last
  ProblemList problems_;
  std::size_t sources_ = 0;
  int shaders_ = 0;
};

}  // namespace sorvanix::host
