// Dialogs of shaders: opened, edited by a list of events, and what became of the shader.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "apps/studio/dialogs/qt_dialogs.h"
#include "host/channels/material_file.h"
#include "host/channels/material_shader.h"
#include "host/dialogs/headless_dialogs.h"
#include "host/services/stream_json.h"
#include "tests/studio/dialogs_player.h"
#include "tests/studio/dialogs_watchdog.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {

/// What a dialog made of a shader.
struct EditedShader {
  bool confirmed = false;
  std::string block;  ///< all that the shader stores, as text
  std::string trouble;
};

class DialogsTest : public StudioTest {
 protected:
  /// The list, which waits for the preview before it ends: whether that is up to date is stored
  /// too.
  static std::vector<host::DialogEvent> Events(const std::string& list) {
    auto events = host::ParseJson(list).and_then(host::ReadDialogEvents).value();
    events.insert(events.end() - 1, {.what = host::WaitEvent(), .pointer = "the wait at the end"});
    return events;
  }

  host::Shader MakeShader(const std::string& graph) const {
    const auto reading = host::ReadMaterial(graph, Catalogue());
    return std::move(*host::MakeShader(SharedEngine()->Module(), *reading.material, 0));
  }

  static EditedShader Edit(host::Shader& shader, host::DialogService& service) {
    const host::ThreadDialogService serving(service);
    const Watchdog watchdog;
    EditedShader edited;
    edited.confirmed = shader.Edit();
    host::Stream stream;
    shader.Write(stream);
    edited.block = OneLine(host::StreamToJson(stream.Values()));
    return edited;
  }

  /// By a list, without a window.
  EditedShader EditHeadless(const std::string& graph, const std::string& list) const {
    host::HeadlessDialogs dialogs(Events(list), Catalogue(), {});
    host::Shader shader = MakeShader(graph);
    EditedShader edited = Edit(shader, dialogs);
    dialogs.Finish();
    if (dialogs.Error()) {
      edited.trouble = dialogs.Error()->pointer + ": " + dialogs.Error()->message;
    }
    return edited;
  }

  /// By mouse and keys.
  EditedShader EditInWindow(const std::string& graph, const std::string& list) const {
    QtDialogs dialogs(Sources());
    DialogPlayer player(Events(list));
    host::Shader shader = MakeShader(graph);
    EditedShader edited = Edit(shader, dialogs);
    if (!player.Failures().empty()) edited.trouble = player.Failures().front();
    if (edited.trouble.empty() && !player.IsDone()) edited.trouble = "the dialog closed too early";
    return edited;
  }

  LinkSources Sources() const {
    return {.catalogue = Catalogue(), .places = [] { return host::MaterialPlaces(); }};
  }
};

/// The shaders that have dialogs.
inline std::vector<std::string> ShadersWithDialogs() {
  return {"2D Noise",        "3D Noise",  "Tiles",    "Gradient",  "Falloff", "Fresnel",
          "Lumas",           "Banj",      "Proximal", "Projector", "Fusion",  "Distorter",
          "Bright/Contrast", "Colorizer", "Hue",      "Posterizer"};
}

}  // namespace sorvanix::studio
