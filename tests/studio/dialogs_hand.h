// The mouse and the keyboard of a test's user.
#pragma once

#include <QPoint>
#include <QString>
#include <memory>

class QWidget;

namespace sorvanix::studio {

/// Places count from a widget's corner. What it does may come to pass later, in an event loop.
class Hand {
 public:
  virtual ~Hand() = default;

  virtual void Click(QWidget& widget, QPoint place) = 0;
  virtual void Press(QWidget& widget, QPoint place, Qt::KeyboardModifiers held) = 0;
  virtual void MoveTo(QWidget& widget, QPoint place) = 0;
  virtual void Release() = 0;
  /// The second press in a row at this place, and its release. Where none went before, a real mouse
  /// makes that one too.
  virtual void PressTwice(QWidget& widget, QPoint place, Qt::KeyboardModifiers held) = 0;
  virtual void Wheel(QWidget& widget, QPoint place, int delta, Qt::KeyboardModifiers held) = 0;
  virtual void Key(QWidget& focused, Qt::Key key, Qt::KeyboardModifiers held = {},
                   int times = 1) = 0;
  /// Goes to a field and types in place of what stands there.
  virtual void TypeInto(QWidget& field, const QString& text) = 0;

  /// Whether all that it did has come to pass.
  virtual bool IsSettled() = 0;
};

/// A real one on an X server, by xdotool; elsewhere one of Qt's own.
std::unique_ptr<Hand> MakeHand();
bool IsHandReal();

}  // namespace sorvanix::studio
