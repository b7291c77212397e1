// Fuzzes the shaders' dialogs: the first byte chooses the shader, the others are a user. What
// begins with '[' is the text of a list of events, as "sorvanix edit" plays it. Anything else is
// parameters to begin with, and then gadgets, values, keys and moves of the mouse by their numbers,
// which go further than any user could: NaN, texts without end, commands that no gadget sends.
#include <sorvanix/ids.h>

#include <algorithm>

#include "fuzz/dialog_user.h"
#include "fuzz/shader_host.h"
#include "host/dialogs/headless_dialogs.h"
#include "host/services/messages.h"

namespace sorvanix::fuzz {

namespace {

using host::Shader;

std::vector<host::StreamValue> Saved(const Shader& shader) {
  host::Stream stream;
  shader.Write(stream);
  return stream.Values();
}

// Without what a preview notes of itself, which depends on how far it came.
std::vector<host::StreamValue> SavedParameters(Shader& shader) {
  auto another = LoadedModule().Create(shader.PluginId(), shader.Channel());
  SORVANIX_EXPECT(another.has_value());
  another->SetParameters(shader.Parameters());
  return Saved(*another);
}

struct Played {
  std::vector<host::StreamValue> block;
  std::size_t changes = 0;
  bool isRepeatable = true;  // nothing was drawn at random
};

bool Edit(Shader& shader, host::DialogService& service) {
  const auto before = Saved(shader);
  const host::ThreadDialogService serving(service);
  const bool confirmed = shader.Edit();
  if (!confirmed) SORVANIX_EXPECT(Saved(shader) == before);
  return confirmed;
}

// --- a list of events ---

bool IsRandom(const host::DialogEvent& event) {
  const auto* key = std::get_if<host::KeyEvent>(&event.what);
  return key != nullptr && DrawsAtRandom(key->code, key->qualifier);
}

// Previews that are waited for and ticks take long, and many find nothing that a few would not.
bool TakesLong(const std::vector<host::DialogEvent>& events) {
  constexpr int kMost = 8;
  int count = 0;
  for (const host::DialogEvent& event : events) {
    const auto* tick = std::get_if<host::TickEvent>(&event.what);
    count += tick != nullptr ? tick->count : 0;
    count += std::holds_alternative<host::WaitEvent>(event.what) ? 1 : 0;
    if (count > kMost) return true;
  }
  return false;
}

bool LooksAtPictures(const host::DialogEvent& event) {
  return std::holds_alternative<host::WaitEvent>(event.what) ||
         std::holds_alternative<host::SaveEvent>(event.what);
}

// Plays a list as the program does, but without the previews.
class WithoutPictures final : public host::DialogService {
 public:
  explicit WithoutPictures(host::HeadlessDialogs& dialogs) : dialogs_(dialogs) {}

  void RunModal(host::Dialog& dialog, std::int32_t x, std::int32_t y) override {
    PrepareSmallAreas(dialog);
    dialogs_.RunModal(dialog, x, y);
  }
  std::optional<Vector> ChooseColour(const Vector& shown) override {
    return dialogs_.ChooseColour(shown);
  }
  bool OpenInViewer(const std::filesystem::path& file) override {
    return dialogs_.OpenInViewer(file);
  }
  std::optional<host::MousePlace> PollMouse(host::UserArea& area) override {
    return dialogs_.PollMouse(area);
  }
  bool ShowsPictures() const noexcept override { return false; }
  void GadgetChanged(host::Dialog& dialog, const host::Gadget& gadget) override {
    dialogs_.GadgetChanged(dialog, gadget);
  }

 private:
  host::HeadlessDialogs& dialogs_;
};

Played Play(Shader& shader, const std::vector<host::DialogEvent>& events) {
  host::HeadlessDialogs dialogs(events, Catalogue(), {"/dev/null/list.json", {}});
  WithoutPictures unseen(dialogs);
  const bool looks = std::any_of(events.begin(), events.end(), LooksAtPictures);
  const bool confirmed = looks ? Edit(shader, dialogs) : Edit(shader, unseen);
  dialogs.Finish();
  SORVANIX_EXPECT(dialogs.WasOpened() || !confirmed);
  return {.block = SavedParameters(shader),
          .changes = dialogs.Changes().size(),
          .isRepeatable = std::none_of(events.begin(), events.end(), IsRandom)};
}

void RunList(std::int32_t shaderId, std::string_view text) {
  const auto events = host::ParseJson(text).and_then(host::ReadDialogEvents);
  if (!events || TakesLong(*events)) return;
  auto shader = LoadedModule().Create(shaderId, ChannelColour);
  auto another = LoadedModule().Create(shaderId, ChannelColour);
  SORVANIX_EXPECT(shader && another);
  const Played first = Play(*shader, *events), second = Play(*another, *events);
  if (first.isRepeatable) {
    SORVANIX_EXPECT(first.block == second.block && first.changes == second.changes);
  }
  UseInEveryWay(*shader);
}

// --- by numbers ---

Played Play(Shader& shader, ByteSource bytes) {
  shader.SetParameters(TakeContainer(bytes));
  DialogUser user(bytes);
  Edit(shader, user);
  return {.block = user.ShowsPictures() ? SavedParameters(shader) : Saved(shader),
          .isRepeatable = !user.HasDrawnAtRandom()};
}

void RunNumbers(std::int32_t shaderId, ByteSource bytes) {
  constexpr std::int32_t kChannels[] = {ChannelColour, ChannelBump, ChannelStandalone};
  const std::int32_t channel = kChannels[bytes.Byte() % std::size(kChannels)];
  auto shader = LoadedModule().Create(shaderId, channel);
  auto another = LoadedModule().Create(shaderId, channel);
  SORVANIX_EXPECT(shader && another);
  const Played first = Play(*shader, bytes), second = Play(*another, bytes);
  if (first.isRepeatable) SORVANIX_EXPECT(first.block == second.block);
  UseInEveryWay(*shader);
}

class NoMessages final : public host::MessageSink {
  void Show(std::string_view, std::int32_t) override {}
};

void Run(std::string_view data) {
  static NoMessages silence;
  host::SetMessageSink(&silence);
  if (data.empty()) return;
  const auto& shaders = LoadedModule().Shaders().All();
  const std::int32_t id = shaders[static_cast<unsigned char>(data.front()) % shaders.size()]->id;
  data.remove_prefix(1);
  if (data.starts_with('[')) {
    RunList(id, data);
  } else {
    RunNumbers(id, ByteSource(reinterpret_cast<const std::uint8_t*>(data.data()), data.size()));
  }
}

}  // namespace

}  // namespace sorvanix::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  sorvanix::fuzz::Run({reinterpret_cast<const char*>(data), size});
  return 0;
}
