// What ends a test that would wait for its user for ever.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTimer>

namespace sorvanix::studio {

/// A modal dialog that nobody closes blocks its test. While this lives, all dialogs are cancelled
/// once that has taken far longer than any test does, and the test fails.
class Watchdog {
 public:
  Watchdog() {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      if (!std::exchange(hasBarked_, true)) ADD_FAILURE() << "nobody closes the dialog";
      timer_.setInterval(kBetweenDialogs);
      Cancel();
    });
    timer_.start(kPatience);
  }

 private:
  static constexpr int kPatience = 60000, kBetweenDialogs = 50;  // ms

  static void Cancel() {
    if (QWidget* popup = QApplication::activePopupWidget()) popup->close();
    if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->reject();
  }

  QTimer timer_;
  bool hasBarked_ = false;
};

}  // namespace sorvanix::studio
