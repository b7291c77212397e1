// sorvanix schema: the JSON Schema of material files.
#include <CLI/App.hpp>
#include <memory>
#include <string>

#include "apps/sorvanix/module_place.h"
#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"
#include "host/channels/material_schema.h"

namespace sorvanix::cli {

VerbAction DeclareSchema(CLI::App& app) {
  const auto module = std::make_shared<std::string>();
  AddModuleOption(app, *module);
  return [module] {
    const auto catalogue = FindCatalogue(*module);
    if (!catalogue) {
      Complain(catalogue.error());
      return ExitCode::NoModule;
    }
    Print(host::WriteJson(MaterialSchema(*catalogue)) + '\n');
    return ExitCode::Done;
  };
}

}  // namespace sorvanix::cli
