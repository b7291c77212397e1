// A user area in a window: shows what the module painted, and tells it of the mouse.
#pragma once

#include <QEventLoop>
#include <QTimer>
#include <QWidget>
#include <deque>
#include <optional>

#include "host/dialogs/dialog.h"

namespace sorvanix::studio {

class AreaWidget : public QWidget {
  Q_OBJECT

 public:
  /// The area must outlive it. One that spans takes all the width there is; the others keep the
  /// size that they asked for.
  AreaWidget(host::UserArea& area, bool spans);

  void FollowTimer();
  /// Waits for the mouse's next move while its button is held; nothing when it was released.
  std::optional<host::MousePlace> Poll();
  /// Whether the button is down.
  bool IsHeld() const { return held_; }
  /// Ends a drag whose release nobody will tell of: the dialog is gone, or behind another one.
  void LetGo();

  QSize sizeHint() const override { return asked_; }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  void Press(const QMouseEvent& event, bool isDouble);
  void MoveTo(const host::MousePlace& place);
  void WakePoll();

  host::UserArea& area_;
  QSize asked_;
  QTimer timer_;
  bool held_ = false;
  host::MousePlace last_;
  std::deque<host::MousePlace> moves_;  // that wait for a poll
  QEventLoop* polling_ = nullptr;
};

}  // namespace sorvanix::studio
