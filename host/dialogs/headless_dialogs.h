// Dialogs without windows: a list of events takes the place of the user.
#pragma once

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/channels/material_file.h"
#include "host/dialogs/dialog.h"
#include "host/dialogs/dialog_script.h"
#include "host/dialogs/dialog_service.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// A gadget shows something else than before, or changed between enabled and disabled.
struct DialogChange {
  std::string event;  ///< pointer to the event that brought it about
  std::int32_t dialog = 0, gadget = 0;
  Json value;  ///< as the user sees it
  bool enabled = true;
};

/// What an area showed.
struct SavedPicture {
  std::string file;  ///< as the event names it
  std::int32_t area = 0;
  Bitmap picture;
};

/// Plays a list of events in the dialogs that open while it is the current service. Events go to
/// the innermost open dialog. The first event that cannot be played cancels all dialogs;
/// expectations that fail do not.
class HeadlessDialogs final : public DialogService {
 public:
  /// The catalogue, and the places that files in links are looked for, serve links and must outlive
  /// the object.
  HeadlessDialogs(std::vector<DialogEvent> events, const ShaderCatalogue& catalogue,
                  MaterialPlaces places);

  void RunModal(Dialog& dialog, std::int32_t x, std::int32_t y) override;
  std::optional<Vector> ChooseColour(const Vector& shown) override;
  bool OpenInViewer(const std::filesystem::path& file) override;
  std::optional<MousePlace> PollMouse(UserArea& area) override;
  bool ShowsPictures() const noexcept override { return true; }
  void GadgetChanged(Dialog& dialog, const Gadget& gadget) override;

  /// From now on all dialogs are cancelled before the next event once the flag is raised.
  void CancelBy(const std::atomic<bool>& flag) noexcept { cancelled_ = &flag; }

  /// To be called once the outermost dialog has been: events that are left over are an error.
  void Finish();

  bool WasOpened() const noexcept { return wasOpened_; }
  /// Why the list could not be played to its end.
  const std::optional<JsonError>& Error() const noexcept { return error_; }
  /// Expectations that failed, each with its pointer.
  const std::vector<JsonError>& Failures() const noexcept { return failures_; }
  const std::vector<DialogChange>& Changes() const noexcept { return changes_; }
  const std::vector<SavedPicture>& Pictures() const noexcept { return pictures_; }
  const std::vector<std::filesystem::path>& Viewed() const noexcept { return viewed_; }

 private:
  struct Player;  // one operation for each kind of event
  using Shown = std::pair<std::string, bool>;

  void Play(Dialog& dialog, const DialogEvent& event);
  void Fail(const DialogEvent& event, std::string message, const std::string& below = {});
  void FailAtEnd(std::string message);
  Gadget* FindGadget(Dialog& dialog, const DialogEvent& event, std::int32_t id);
  UserArea* FindArea(Dialog& dialog, const DialogEvent& event, std::int32_t id);
  void NoteShown(Dialog& dialog);

  std::vector<DialogEvent> events_;
  const ShaderCatalogue& catalogue_;
  MaterialPlaces places_;
  const std::atomic<bool>* cancelled_ = nullptr;
  std::size_t next_ = 0;
  bool wasOpened_ = false;
  const DialogEvent* waitingColour_ = nullptr;  // an answer given before it was asked for
  std::optional<std::int32_t> held_;            // the area in which the mouse button is down
  MousePlace mouse_;
  std::map<std::pair<const Dialog*, std::int32_t>, Shown> shown_;

  std::optional<JsonError> error_;
  std::vector<JsonError> failures_;
  std::vector<DialogChange> changes_;
  std::vector<SavedPicture> pictures_;
  std::size_t pictureBytes_ = 0;
  std::vector<std::filesystem::path> viewed_;
};

}  // namespace sorvanix::host
