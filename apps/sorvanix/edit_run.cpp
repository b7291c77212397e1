#include "apps/sorvanix/edit_run.h"

#include <fmt/format.h>
#include <sorvanix/ids.h>

#include <algorithm>
#include <utility>

#include "apps/sorvanix/host_setup.h"
#include "apps/sorvanix/material_input.h"
#include "host/channels/material_change.h"
#include "host/channels/material_shader.h"
#include "host/dialogs/json_walk.h"
#include "host/services/filenames.h"
#include "host/services/messages.h"

namespace sorvanix::cli {

namespace {

using host::Json;

// What the module has to say, each thing once, until it is known what it means for the edit.
class Messages final : public host::MessageSink {
 public:
  Messages() : former_(host::SetMessageSink(this)) {}
  ~Messages() override { host::SetMessageSink(former_); }
  Messages(const Messages&) = delete;
  Messages& operator=(const Messages&) = delete;

  void Show(std::string_view text, std::int32_t) override {
    if (std::find(texts_.begin(), texts_.end(), text) == texts_.end()) texts_.emplace_back(text);
  }
  const std::vector<std::string>& Texts() const { return texts_; }

 private:
  host::MessageSink* former_;
  std::vector<std::string> texts_;
};

tl::unexpected<Failure> Invalid(std::string message) {
  return tl::unexpected(Failure{ExitCode::InvalidInput, std::move(message)});
}

struct Script {
  std::string file, text;
  std::vector<host::DialogEvent> events;

  std::string Describe(const host::JsonError& error) const {
    return host::DescribeJsonError(file, text, error);
  }
};

tl::expected<Script, Failure> LoadScript(const std::string& file) {
  auto text = host::ReadMaterialText(host::PathFromUtf8(file));
  if (!text) {
    return tl::unexpected(
        Failure{ExitCode::FileTrouble, fmt::format("{}: {}", file, text.error())});
  }
  Script script{file, *std::move(text), {}};
  auto events = host::ParseJson(script.text).and_then(host::ReadDialogEvents);
  if (!events) return Invalid(script.Describe(events.error()));
  script.events = *std::move(events);
  return script;
}

// As the file spells the material, which the reading of its graph does not keep.
tl::expected<Json, Failure> ReadAgain(const std::string& file) {
  const auto text = host::ReadMaterialText(host::PathFromUtf8(file));
  auto json = text ? host::ParseJson(*text) : tl::unexpected(host::JsonError{text.error()});
  if (json) return *std::move(json);
  return tl::unexpected(
      Failure{ExitCode::FileTrouble, fmt::format("{}: {}", file, json.error().message)});
}

// By the names of the material's own members.
std::vector<EditedValue> EditedValues(const Json& before, const Json& after) {
  std::vector<EditedValue> values;
  const auto note = [&](const std::string& name) {
    const Json* first = before.Find(name);
    const Json* second = after.Find(name);
    const Json was = first == nullptr ? Json() : *first, is = second == nullptr ? Json() : *second;
    if (host::WriteJson(was, -1) != host::WriteJson(is, -1)) values.push_back({name, was, is});
  };
  for (const auto& member : std::get<Json::Object>(after.value)) note(member.name);
  for (const auto& member : std::get<Json::Object>(before.value)) {
    if (after.Find(member.name) == nullptr) note(member.name);
  }
  return values;
}

// What the dialog made of the shader.
struct Played {
  host::Container before;
  host::Container after = host::Container();
  bool confirmed = false;
};

tl::expected<Played, Failure> Play(host::Shader& shader, host::HeadlessDialogs& dialogs,
                                   const std::string& materialFile, const Script& script,
                                   const Messages& messages) {
  Played played = {.before = shader.Parameters()};
  {
    const host::ThreadDialogService serving(dialogs);
    played.confirmed = shader.Edit();
  }
  dialogs.Finish();
  if (!dialogs.WasOpened()) {
    if (!messages.Texts().empty()) {
      const std::string texts = fmt::format("{}", fmt::join(messages.Texts(), "; "));
      return tl::unexpected(Failure{ExitCode::NoModule, texts});
    }
    return Invalid(fmt::format("{}: {} has no dialog", materialFile, shader.Name()));
  }
  if (dialogs.Error()) return Invalid(script.Describe(*dialogs.Error()));
  played.after = shader.Parameters();
  return played;
}

host::MaterialPlaces PlacesFor(const EditOptions& options) {
  host::MaterialPlaces places = {.file = host::PathFromUtf8(options.script), .imageFolders = {}};
  for (const std::string& folder : options.imageFolders) {
    places.imageFolders.push_back(host::PathFromUtf8(folder));
  }
  return places;
}

}  // namespace

tl::expected<Edited, Failure> RunEdit(const EditOptions& options,
                                      const std::filesystem::path& modulePath,
                                      const host::ShaderCatalogue& catalogue,
                                      const std::atomic<bool>& cancelled) {
  const std::filesystem::path file = host::PathFromUtf8(options.material);
  const MaterialInput input = LoadMaterial(file, catalogue, options.imageFolders);
  if (input.code != ExitCode::Done) return tl::unexpected(Failure{input.code, input.error});
  const host::MaterialNode& material = *input.reading.material;
  const auto original = ReadAgain(options.material);
  if (!original) return tl::unexpected(original.error());
  auto script = LoadScript(options.script);
  if (!script) return tl::unexpected(script.error());

  LoadedModule module;
  if (auto loaded = module.Load(modulePath); !loaded) return tl::unexpected(loaded.error());
  const Messages messages;
  auto shader = host::ImportShader(*module, material, ChannelColour);
  if (!shader) return tl::unexpected(Failure{ExitCode::NoModule, shader.error()});
  host::HeadlessDialogs dialogs(std::move(script->events), catalogue, PlacesFor(options));
  dialogs.CancelBy(cancelled);
  const auto played = Play(*shader, dialogs, options.material, *script, messages);
  if (!played) return tl::unexpected(played.error());

  const auto output = options.output.empty() ? file : host::PathFromUtf8(options.output);
  Edited edited;
  edited.confirmed = played->confirmed;
  edited.material =
      host::ChangedMaterial(*original, *material.shader, catalogue, played->before, played->after,
                            {file.parent_path(), output.parent_path()});
  edited.values = EditedValues(*original, edited.material);
  edited.changes = dialogs.Changes();
  edited.pictures = dialogs.Pictures();
  edited.viewed = dialogs.Viewed();
  for (const host::JsonError& failure : dialogs.Failures()) {
    edited.failures.push_back(script->Describe(failure));
  }
  for (const auto& warning : input.reading.Warnings()) {
    edited.warnings.push_back(Describe(file, warning));
  }
  edited.warnings.insert(edited.warnings.end(), messages.Texts().begin(), messages.Texts().end());
  return edited;
}

}  // namespace sorvanix::cli
