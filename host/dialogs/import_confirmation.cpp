#include "host/dialogs/import_confirmation.h"

#include <atomic>
#include <cassert>
#include <utility>

#include "host/dialogs/dialog.h"
#include "host/dialogs/dialog_service.h"
#include "host/services/messages.h"

namespace sorvanix::host {

namespace {

constinit std::atomic<bool> importsAreConfirmed = false;
constinit thread_local bool isSuspended = false;

class ConfirmingDialogs final : public DialogService {
 public:
  void RunModal(Dialog& dialog, std::int32_t, std::int32_t) override { dialog.Close(true); }
  std::optional<Vector> ChooseColour(const Vector&) override { return std::nullopt; }
  bool OpenInViewer(const std::filesystem::path&) override { return false; }
  std::optional<MousePlace> PollMouse(UserArea&) override { return std::nullopt; }
  bool ShowsPictures() const noexcept override { return false; }
};

}  // namespace

ConfirmedImports::ConfirmedImports() noexcept {
  [[maybe_unused]] const bool were = importsAreConfirmed.exchange(true);
  assert(!were && "one at a time");
}

ConfirmedImports::~ConfirmedImports() { importsAreConfirmed = false; }

UnconfirmedImport::UnconfirmedImport() noexcept : former_(std::exchange(isSuspended, true)) {}

UnconfirmedImport::~UnconfirmedImport() { isSuspended = former_; }

void ConfirmImport(Shader& shader) {
  if (!importsAreConfirmed || isSuspended) return;
  ConfirmingDialogs dialogs;
  const ThreadDialogService confirming(dialogs);
  const MessagesOnce once;
  shader.Edit();
}

}  // namespace sorvanix::host
