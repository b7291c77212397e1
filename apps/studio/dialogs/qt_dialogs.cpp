#include "apps/studio/dialogs/qt_dialogs.h"

#include <QApplication>
#include <QDesktopServices>
#include <QScopeGuard>
#include <QUrl>
#include <algorithm>
#include <utility>

#include "apps/studio/dialogs/colour_view.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

void QtDialogs::RunModal(host::Dialog& dialog, std::int32_t x, std::int32_t y) {
  DialogWindow window(dialog, sources_, Front());
  windows_.push_back(&window);
  const auto leave = qScopeGuard([this] { windows_.pop_back(); });
  if (std::exchange(focused_, nullptr) == &dialog) window.Focus(focus_);
  if (x != -1 || y != -1) window.move(x, y);
  if (!dialog.IsClosed()) window.exec();
  dialog.Close(false);  // nothing new, unless the program is told to end meanwhile
}

std::optional<Vector> QtDialogs::ChooseColour(const Vector& shown) {
  return AskColour(shown, Front());
}

QWidget* QtDialogs::Front() const {
  return windows_.empty() ? QApplication::activeWindow() : windows_.back();
}

bool QtDialogs::OpenInViewer(const std::filesystem::path& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return false;
  return QDesktopServices::openUrl(
      QUrl::fromLocalFile(QString::fromStdString(host::Utf8FromPath(file))));
}

std::optional<host::MousePlace> QtDialogs::PollMouse(host::UserArea& area) {
  DrawWaiting();
  AreaWidget* widget = WidgetOf(area);
  return widget == nullptr ? std::nullopt : widget->Poll();
}

void QtDialogs::GadgetChanged(host::Dialog& dialog, const host::Gadget& gadget) {
  if (DialogWindow* window = WindowOf(dialog)) window->GadgetChanged(gadget.id);
}

void QtDialogs::FocusChanged(host::Dialog& dialog, const host::Gadget& gadget) {
  focused_ = &dialog;
  focus_ = gadget.id;
  if (DialogWindow* window = WindowOf(dialog)) window->Focus(gadget.id);
}

void QtDialogs::TitleChanged(host::Dialog& dialog) {
  if (DialogWindow* window = WindowOf(dialog)) window->TitleChanged();
}

void QtDialogs::PictureChanged(host::UserArea& area) {
  if (AreaWidget* widget = WidgetOf(area)) widget->update();
}

void QtDialogs::TimerChanged(host::UserArea& area) {
  if (AreaWidget* widget = WidgetOf(area)) widget->FollowTimer();
}

void QtDialogs::Closed(host::Dialog& dialog) {
  if (DialogWindow* window = WindowOf(dialog)) window->done(0);
}

// Many rows of a preview make one drawing.
void QtDialogs::RedrawWanted() noexcept {
  if (drawsSoon_.exchange(true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        drawsSoon_ = false;
        DrawWaiting();
      },
      Qt::QueuedConnection);
}

DialogWindow* QtDialogs::WindowOf(const host::Dialog& dialog) const {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto* each) { return &each->Shown() == &dialog; });
  return found == windows_.end() ? nullptr : *found;
}

AreaWidget* QtDialogs::WidgetOf(host::UserArea& area) const {
  const DialogWindow* window = WindowOf(area.Owner());
  return window == nullptr ? nullptr : window->Area(area);
}

}  // namespace sorvanix::studio
