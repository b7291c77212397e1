// Plays a list of events in dialogs that are windows, by mouse and keyboard: what HeadlessDialogs
// does without windows.
#pragma once

#include <QObject>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "apps/studio/dialogs/dialog_window.h"
#include "host/dialogs/dialog_script.h"
#include "tests/studio/dialogs_hand.h"

class QColorDialog;

namespace sorvanix::studio {

/// Begins once an event loop runs; events go to the innermost dialog. What cannot be played is told
/// by Failures, and all dialogs are cancelled.
class DialogPlayer : public QObject {
 public:
  explicit DialogPlayer(std::vector<host::DialogEvent> events);

  const std::vector<std::string>& Failures() const { return failures_; }
  bool IsDone() const { return next_ == events_.size(); }

 private:
  struct Plays;

  void PlaySoon(int milliseconds = 0);
  void PlayNext();
  void Play(DialogWindow& window, const host::DialogEvent& event);
  void AnswerColour(QColorDialog& chooser, const host::ColourEvent& answer);
  void Fail(const host::DialogEvent& event, const std::string& why);

  std::vector<host::DialogEvent> events_;
  std::size_t next_ = 0;
  bool isBusy_ = false;
  std::optional<host::ColourEvent> colour_;  // an answer that waits for its question
  std::unique_ptr<Hand> hand_;
  std::vector<std::string> failures_;
};

/// A gadget's widget, or null.
QWidget* WidgetOf(const QWidget& window, std::int32_t gadget);

}  // namespace sorvanix::studio
