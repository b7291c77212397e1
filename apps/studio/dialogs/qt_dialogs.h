// The dialogs of the module in windows: the host's dialog service with Qt Widgets.
#pragma once

#include <QObject>
#include <atomic>
#include <vector>

#include "apps/studio/dialogs/dialog_window.h"
#include "host/dialogs/dialog_service.h"

namespace sorvanix::studio {

class QtDialogs : public QObject, public host::DialogService {
 public:
  explicit QtDialogs(LinkSources sources) : sources_(std::move(sources)) {}

  void RunModal(host::Dialog& dialog, std::int32_t x, std::int32_t y) override;
  std::optional<Vector> ChooseColour(const Vector& shown) override;
  bool OpenInViewer(const std::filesystem::path& file) override;
  std::optional<host::MousePlace> PollMouse(host::UserArea& area) override;
  bool ShowsPictures() const noexcept override { return true; }

  void GadgetChanged(host::Dialog& dialog, const host::Gadget& gadget) override;
  void FocusChanged(host::Dialog& dialog, const host::Gadget& gadget) override;
  void TitleChanged(host::Dialog& dialog) override;
  void PictureChanged(host::UserArea& area) override;
  void TimerChanged(host::UserArea& area) override;
  void Closed(host::Dialog& dialog) override;
  void RedrawWanted() noexcept override;

 private:
  /// What a further window stands before.
  QWidget* Front() const;
  DialogWindow* WindowOf(const host::Dialog& dialog) const;
  AreaWidget* WidgetOf(host::UserArea& area) const;

  LinkSources sources_;
  std::vector<DialogWindow*> windows_;  // the innermost last
  // The gadget that a dialog wants to begin with.
  const host::Dialog* focused_ = nullptr;
  std::int32_t focus_ = 0;
  std::atomic<bool> drawsSoon_ = false;
};

}  // namespace sorvanix::studio
