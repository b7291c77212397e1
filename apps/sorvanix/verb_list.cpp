// sorvanix list: the shaders with their ids.
#include <fmt/format.h>

#include <CLI/App.hpp>
#include <algorithm>
#include <memory>

#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"
#include "host/services/json.h"

namespace sorvanix::cli {

namespace {

using host::Json;
using host::ShaderDescription;

struct ListOptions {
  std::string module;
  bool json = false;
};

std::string AsJson(const std::vector<ShaderDescription>& shaders) {
  Json::Array array;
  for (const ShaderDescription& shader : shaders) {
    array.push_back(Json(Json::Object{{"id", Json(std::int64_t{shader.id})},
                                      {"name", Json(shader.name)},
                                      {"category", Json(shader.category)},
                                      {"summary", Json(shader.summary)}}));
  }
  return host::WriteJson(Json(std::move(array))) + '\n';
}

std::string AsTable(const std::vector<ShaderDescription>& shaders) {
  std::size_t nameWidth = 0;
  std::size_t categoryWidth = 0;
  for (const ShaderDescription& shader : shaders) {
    nameWidth = std::max(nameWidth, shader.name.size());
    categoryWidth = std::max(categoryWidth, shader.category.size());
  }
  std::string table;
  for (const ShaderDescription& shader : shaders) {
    table += fmt::format("{:7}  {:<{}}  {:<{}}  {}\n", shader.id, shader.name, nameWidth,
                         shader.category, categoryWidth, shader.summary);
  }
  return table;
}

ExitCode List(const ListOptions& options) {
  const auto catalogue = FindCatalogue(options.module);
  if (!catalogue) {
    Complain(catalogue.error());
    return ExitCode::NoModule;
  }
  Print(options.json ? AsJson(catalogue->Shaders()) : AsTable(catalogue->Shaders()));
  return ExitCode::Done;
}

}  // namespace

VerbAction DeclareList(CLI::App& app) {
  const auto options = std::make_shared<ListOptions>();
  app.add_flag("--json", options->json, "Print a JSON array of id, name, category and summary");
  AddModuleOption(app, options->module);
  return [options] { return List(*options); };
}

}  // namespace sorvanix::cli
