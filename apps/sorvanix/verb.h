// What every verb of the command line offers to the program.
#pragma once

#include <functional>

#include "apps/sorvanix/exit_code.h"

namespace CLI {
class App;
}

namespace sorvanix::cli {

/// Runs a verb after its options were parsed.
using VerbAction = std::function<ExitCode()>;

/// A row of the table in program.cpp.
struct Verb {
  const char* name;
  const char* summary;
  /// Adds the verb's options to its part of the command line.
  VerbAction (*declare)(CLI::App& app);
};

VerbAction DeclareBake(CLI::App& app);
VerbAction DeclareConvert(CLI::App& app);
VerbAction DeclareDescribe(CLI::App& app);
VerbAction DeclareEdit(CLI::App& app);
VerbAction DeclareInfo(CLI::App& app);
VerbAction DeclareList(CLI::App& app);
VerbAction DeclareRender(CLI::App& app);
VerbAction DeclareSchema(CLI::App& app);
VerbAction DeclareUpgrade(CLI::App& app);
VerbAction DeclareValidate(CLI::App& app);

}  // namespace sorvanix::cli
