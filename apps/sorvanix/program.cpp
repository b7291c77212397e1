#include "apps/sorvanix/program.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/sorvanix/report.h"
#include "apps/sorvanix/verb.h"
#include "host/channels/material_value.h"

namespace sorvanix::cli {

namespace {

// In the order of the help.
constexpr Verb kVerbs[] = {
    {"list", "Lists the shaders", DeclareList},
    {"describe", "Describes a shader and its parameters", DeclareDescribe},
    {"validate", "Checks material and scene files", DeclareValidate},
    {"schema", "Prints the JSON Schema of material files", DeclareSchema},
    {"bake", "Bakes materials into images", DeclareBake},
    {"render", "Renders a scene into an image", DeclareRender},
    {"edit", "Plays a list of events in a shader's dialog", DeclareEdit},
    {"convert", "Writes a scene as JSON or in its binary form", DeclareConvert},
    {"upgrade", "Rewrites scene files in today's form", DeclareUpgrade},
    {"info", "Tells what an image holds and how it was made", DeclareInfo},
};

constexpr const char* kFooter =
    "Results go to the standard output, progress and messages to the standard error stream.\n"
    "Exit codes: 0 done, 1 some outputs failed, 2 usage, 3 invalid input file, 4 the module could\n"
    "not be loaded or started, 5 reading or writing failed, 130 cancelled.";

bool IsVerb(std::string_view name) {
  for (const Verb& verb : kVerbs) {
    if (name == verb.name) return true;
  }
  return false;
}

// A first word that is no verb is most likely a slip of the keyboard.
std::string UnknownVerb(std::string_view word) {
  std::vector<std::string_view> names;
  for (const Verb& verb : kVerbs) names.emplace_back(verb.name);
  return host::UnknownName("verb", word, names);
}

// Nothing when there is a verb to run.
std::optional<ExitCode> Parse(CLI::App& app, int argumentCount, char** arguments) {
  if (argumentCount > 1 && arguments[1][0] != '-' && !IsVerb(arguments[1])) {
    Complain(UnknownVerb(arguments[1]));
    return ExitCode::Usage;
  }
  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::ParseError& error) {
    if (error.get_exit_code() == 0) {  // the help or the version was asked for
      app.exit(error);
      return ExitCode::Done;
    }
    Complain(error.what());
    return ExitCode::Usage;
  }
  return std::nullopt;
}

ExitCode Run(int argumentCount, char** arguments) {
  CLI::App app("Bakes and renders procedural materials without their host.", "sorvanix");
  app.set_version_flag("--version", kProgramName, "Print the version and exit");
  app.set_help_flag("-h,--help", "Print this help and exit");
  app.footer(kFooter);
  std::vector<std::pair<const CLI::App*, VerbAction>> actions;
  for (const Verb& verb : kVerbs) {
    CLI::App* part = app.add_subcommand(verb.name, verb.summary);
    actions.emplace_back(part, verb.declare(*part));
  }
  app.require_subcommand(0, 1);

  if (const auto parsed = Parse(app, argumentCount, arguments)) return *parsed;
  for (const auto& [part, action] : actions) {
    if (part->parsed()) return action();
  }
  Complain("a verb is missing; see sorvanix --help");
  return ExitCode::Usage;
}

}  // namespace

int RunProgram(int argumentCount, char** arguments) {
#ifdef SIGXFSZ
  // Beyond a limit on file sizes a write fails with an error, as on a full disk.
  std::signal(SIGXFSZ, SIG_IGN);
#endif
  ExitCode code = ExitCode::Usage;
  try {
    code = Run(argumentCount, arguments);
  } catch (const std::bad_alloc&) {
    Complain("memory is short");
    code = ExitCode::FileTrouble;
  } catch (const std::exception& error) {
    Complain(error.what());
    code = ExitCode::FileTrouble;
  }
  // A long text bypasses the buffer, so that its loss shows in the stream's state alone.
  const bool lost = std::fflush(stdout) != 0 || std::ferror(stdout) != 0;
  if (lost && code == ExitCode::Done) {
    Complain("the standard output cannot be written");
    code = ExitCode::FileTrouble;
  }
  return static_cast<int>(code);
}

}  // namespace sorvanix::cli
