#include "tests/studio/dialogs_hand.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>
#include <optional>
#include <utility>

namespace sorvanix::studio {

namespace {

// Through the window, which finds out whose event it is, and which widget holds the mouse.
class QtHand : public Hand {
 public:
  void Press(QWidget& widget, QPoint place, Qt::KeyboardModifiers held) override {
    pressed_ = widget.window()->windowHandle();
    place_ = widget.mapTo(widget.window(), place);
    QTest::mousePress(pressed_, Qt::LeftButton, held, place_);
  }

  void MoveTo(QWidget& widget, QPoint place) override {
    place_ = widget.mapTo(widget.window(), place);
    QTest::mouseMove(widget.window()->windowHandle(), place_);
  }

  // Where the window is gone it is another's, as on a screen.
  void Release() override {
    if (pressed_ != nullptr) return QTest::mouseRelease(pressed_, Qt::LeftButton, {}, place_);
    QWindow other;
    other.show();
    QTest::mouseRelease(&other, Qt::LeftButton, {}, QPoint());
  }

  // QtTest has a double click with its first press alone, and no wheel.
  void PressTwice(QWidget& widget, QPoint place, Qt::KeyboardModifiers held) override {
    const QPointF local = place, global = widget.mapToGlobal(local);
    // The press may run a drag, which waits for the release.
    isReleased_ = false;
    QTimer::singleShot(0, &widget, [this, &widget, local, global, held] {
      isReleased_ = true;
      QMouseEvent release(QEvent::MouseButtonRelease, local, global, Qt::LeftButton, {}, held);
      QApplication::sendEvent(&widget, &release);
    });
    QMouseEvent press(QEvent::MouseButtonDblClick, local, global, Qt::LeftButton, Qt::LeftButton,
                      held);
    QApplication::sendEvent(&widget, &press);
  }

  void Wheel(QWidget& widget, QPoint place, int delta, Qt::KeyboardModifiers held) override {
    const QPointF local = place;
    QWheelEvent turn(local, widget.mapToGlobal(local), {}, {0, delta}, Qt::NoButton, held,
                     Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &turn);
  }

  void Key(QWidget& focused, Qt::Key key, Qt::KeyboardModifiers held, int times) override {
    for (int i = 0; i < times; ++i) QTest::keyClick(&focused, key, held);
  }

  void TypeInto(QWidget& field, const QString& text) override {
    field.setFocus();
    QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(&field, text);
  }

  // QtTest lets all waiting events happen after a press. Of a list that was closed one is that the
  // window is active again, which would make an end of the press.
  void Click(QWidget& widget, QPoint place) override {
    isReleased_ = false;
    QCoreApplication::processEvents();
    Press(widget, place, {});
    isReleased_ = true;
    Release();
  }

  bool IsSettled() override { return isReleased_; }

 private:
  QPointer<QWindow> pressed_;  // where the mouse button went down
  QPoint place_;
  bool isReleased_ = true;  // what is released at once
};

// xdotool's name of a key.
QString NameOf(Qt::Key key) {
  static const std::pair<Qt::Key, const char*> kNames[] = {
      {Qt::Key_Up, "Up"},         {Qt::Key_Down, "Down"}, {Qt::Key_Left, "Left"},
      {Qt::Key_Right, "Right"},   {Qt::Key_Home, "Home"}, {Qt::Key_PageUp, "Prior"},
      {Qt::Key_Return, "Return"}, {Qt::Key_Tab, "Tab"},   {Qt::Key_Space, "space"},
      {Qt::Key_Escape, "Escape"}};
  for (const auto& [named, name] : kNames) {
    if (key == named) return name;
  }
  return QString(QChar(static_cast<char16_t>(key))).toLower();
}

QStringList NamesOf(Qt::KeyboardModifiers modifiers) {
  static const std::pair<Qt::KeyboardModifier, const char*> kNames[] = {
      {Qt::ShiftModifier, "shift"},
      {Qt::ControlModifier, "ctrl"},
      {Qt::AltModifier, "alt"},
      {Qt::MetaModifier, "super"}};
  QStringList names;
  for (const auto& [modifier, name] : kNames) {
    if (modifiers.testFlag(modifier)) names << name;
  }
  return names;
}

// Words for xdotool. The server sends what it makes of them in their order, so that all of it has
// come once a key has that is pressed last and that nobody has a use for; unless another dialog
// came to the front, which the key may miss.
class XHand : public QObject, public Hand {
 public:
  // A list that rolls out lets the keys pass that are pressed meanwhile.
  XHand() {
    qApp->installEventFilter(this);
    QApplication::setEffectEnabled(Qt::UI_AnimateCombo, false);
  }

  void Press(QWidget& widget, QPoint place, Qt::KeyboardModifiers held) override {
    QApplication::setDoubleClickInterval(0);
    GoTo(widget, place);
    pressedAt_ = widget.mapToGlobal(place);
    Do(Holding(held, {"mousedown", "1"}));
  }

  void MoveTo(QWidget& widget, QPoint place) override { Do(WordsTo(widget, place)); }

  void Release() override { Do({"mouseup", "1"}); }

  void PressTwice(QWidget& widget, QPoint place, Qt::KeyboardModifiers held) override {
    constexpr int kEndless = 60000;
    QApplication::setDoubleClickInterval(kEndless);
    const bool isFirstMade = pressedAt_ == widget.mapToGlobal(place);
    GoTo(widget, place);
    QStringList words = {"click", "1"};
    if (!isFirstMade) words += words;
    Do(Holding(held, words));
    pressedAt_.reset();
  }

  void Wheel(QWidget& widget, QPoint place, int delta, Qt::KeyboardModifiers held) override {
    constexpr int kNotch = 120;
    GoTo(widget, place);
    QStringList words;
    for (int i = 0; i < std::abs(delta) / kNotch; ++i) words << "click" << (delta > 0 ? "4" : "5");
    Do(Holding(held, words));
  }

  void Key(QWidget&, Qt::Key key, Qt::KeyboardModifiers held, int times) override {
    if (times == 0) return;
    const QString name = (NamesOf(held) << NameOf(key)).join('+');
    QStringList words = {"key", "--delay", "2"};
    for (int i = 0; i < times; ++i) words << name;
    Do(words);
  }

  void TypeInto(QWidget& field, const QString& text) override {
    QApplication::setDoubleClickInterval(0);
    GoTo(field, {8, field.height() / 2});
    Do({"click", "1", "key", "ctrl+a", "type", "--delay", "2", "--args", "1", "--", text});
  }

  void Click(QWidget& widget, QPoint place) override {
    Press(widget, place, {});
    Release();
  }

  bool IsSettled() override { return isSettled_ || QApplication::activeModalWidget() != front_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::KeyPress && watched->isWindowType()) {
      isSettled_ = isSettled_ || static_cast<QKeyEvent*>(event)->key() == LastKey();
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  // One after the other, so that none is taken for the next.
  int LastKey() const { return Qt::Key_F5 + count_ % 5; }
  QString LastKeyName() const { return QString("F%1").arg(5 + count_ % 5); }

  static QStringList WordsTo(const QWidget& widget, QPoint place) {
    const QPoint screen = widget.mapToGlobal(place);
    return {"mousemove", QString::number(screen.x()), QString::number(screen.y())};
  }

  void GoTo(const QWidget& widget, QPoint place) { way_ = WordsTo(widget, place); }

  static QStringList Holding(Qt::KeyboardModifiers held, const QStringList& words) {
    QStringList all;
    for (const QString& name : NamesOf(held)) all << "keydown" << name;
    all += words;
    for (const QString& name : NamesOf(held)) all << "keyup" << name;
    return all;
  }

  void Do(const QStringList& words) {
    front_ = QApplication::activeModalWidget();
    isSettled_ = false;
    ++count_;
    const QStringList last = {"key", LastKeyName()};
    QProcess::execute("xdotool", std::exchange(way_, {}) + words + last);
  }

  QStringList way_;
  std::optional<QPoint> pressedAt_;
  const QWidget* front_ = nullptr;
  bool isSettled_ = true;
  int count_ = 0;
};

}  // namespace

bool IsHandReal() {
  return QGuiApplication::platformName() == "xcb" &&
         !QStandardPaths::findExecutable("xdotool").isEmpty();
}

std::unique_ptr<Hand> MakeHand() {
  if (IsHandReal()) return std::make_unique<XHand>();
  return std::make_unique<QtHand>();
}

}  // namespace sorvanix::studio
