// Scripts that drive the studio, for tests and for pictures of it: a JSON list of steps.
//
//     [ { "open": "scene.json" }, { "material": 1 }, { "select": "colour/input" },
//       { "place": "Colorizer" }, { "wrap": "Hue" }, { "undo": 1 }, { "save": "out.json" },
//       { "wait": 10 }, { "screenshot": "out.png" } ]
#pragma once

#include <filesystem>
#include <string>
#include <tl/expected.hpp>

#include "apps/sorvanix/failure.h"
#include "apps/studio/window/main_window.h"

namespace sorvanix::studio {

/// Runs the steps of a file. Names of files in it are relative to where the program was started.
/// A failure tells where the step stands that failed: then the steps before it are done.
tl::expected<void, cli::Failure> RunScript(const std::filesystem::path& file, Workshop& workshop,
                                           MainWindow& window);

/// Waits until the view is final and thumbnails are painted, or for so many seconds; false then.
bool WaitUntilPainted(Workshop& workshop, MainWindow& window, double seconds);

/// A picture of a window and all in it, in pixels of the screen. The error is one line.
tl::expected<void, std::string> SaveScreenshot(QWidget& window, const std::filesystem::path& file);

}  // namespace sorvanix::studio
