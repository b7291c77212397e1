#include "host/channels/material_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <system_error>

#include "host/channels/material_reader.h"
#include "host/services/filenames.h"
#include "host/services/input_log.h"

namespace sorvanix::host {

namespace {

namespace fs = std::filesystem;

// No graph of shaders comes near this size; a device that never ends does.
constexpr std::size_t kLargestFile = std::size_t{64} << 20;

std::vector<MaterialProblem> Select(const std::vector<MaterialProblem>& problems, bool errors) {
  std::vector<MaterialProblem> selected;
  std::copy_if(problems.begin(), problems.end(), std::back_inserter(selected),
               [errors](const MaterialProblem& problem) { return problem.isError == errors; });
  return selected;
}

}  // namespace

std::string Describe(const fs::path& file, const MaterialProblem& problem) {
  return fmt::format("{}:{}:{}: {}{}{}", Utf8FromPath(problem.file.empty() ? file : problem.file),
                     problem.position.line, problem.position.column, problem.pointer,
                     problem.pointer.empty() ? "" : ": ", problem.message);
}

std::vector<MaterialProblem> MaterialReading::Errors() const { return Select(problems, true); }

std::vector<MaterialProblem> MaterialReading::Warnings() const { return Select(problems, false); }

MaterialReading ReadMaterial(std::string_view text, const ShaderCatalogue& catalogue,
                             const MaterialPlaces& places) {
  return MaterialReader(catalogue, places).Read(text);
}

tl::expected<std::string, std::string> ReadMaterialText(const fs::path& file) {
  InputLog::Note(file);
  std::error_code error;
  if (fs::is_directory(file, error)) return tl::unexpected<std::string>("it is a folder");
  if (!fs::exists(file, error)) return tl::unexpected<std::string>("there is no such file");
  std::ifstream stream(file, std::ios::binary);
  std::string text;
  char buffer[65536];
  while (stream.read(buffer, sizeof buffer) || stream.gcount() > 0) {
    text.append(buffer, static_cast<std::size_t>(stream.gcount()));
    if (text.size() > kLargestFile) return tl::unexpected<std::string>("it is larger than 64 MB");
  }
  if (!stream.eof()) return tl::unexpected<std::string>("it cannot be read");
  return text;
}

}  // namespace sorvanix::host
