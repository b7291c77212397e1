#include "tests/studio/dialogs_player.h"

#include <sorvanix/ids.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QWheelEvent>
#include <QWindow>
#include <cmath>
#include <utility>

#include "apps/studio/dialogs/area_widget.h"
#include "apps/studio/dialogs/colour_view.h"
#include "apps/studio/dialogs/number_field.h"
#include "host/dialogs/gadget_spelling.h"
#include "host/dialogs/preview_threads.h"

namespace sorvanix::studio {

namespace {

using host::DialogEvent;
using host::Gadget;
using host::GadgetValue;
using host::MouseAction;

Qt::KeyboardModifiers ModifiersOf(std::int32_t qualifier) {
  Qt::KeyboardModifiers modifiers;
  modifiers.setFlag(Qt::ShiftModifier, (qualifier & QualifierShift) != 0);
  modifiers.setFlag(Qt::ControlModifier, (qualifier & QualifierControl) != 0);
  modifiers.setFlag(Qt::AltModifier, (qualifier & QualifierAlt) != 0);
  modifiers.setFlag(Qt::MetaModifier, (qualifier & QualifierCommand) != 0);
  return modifiers;
}

Qt::Key KeyOf(std::int32_t code) {
  switch (code) {
    case KeyUp:
      return Qt::Key_Up;
    case KeyDown:
      return Qt::Key_Down;
    case KeyRight:
      return Qt::Key_Right;
    case KeyLeft:
      return Qt::Key_Left;
    case KeyEscape:
      return Qt::Key_Escape;
    default:
      return static_cast<Qt::Key>(code);
  }
}

void PressKeys(QWidget& widget, Qt::Key key, int times = 1) {
  for (int i = 0; i < times; ++i) QTest::keyClick(&widget, key);
}

void Type(QWidget& field, const QString& text) {
  field.setFocus();
  QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(&field, text);
  QTest::keyClick(&field, Qt::Key_Tab);
}

void ClickTab(QTabWidget& tabs, int index) {
  QTest::mouseClick(tabs.tabBar(), Qt::LeftButton, {}, tabs.tabBar()->tabRect(index).center());
}

QAction* FindAction(const QMenu& menu, const QString& text) {
  for (QAction* action : menu.actions()) {
    if (action->text() == text) return action;
    if (action->menu() == nullptr) continue;
    if (QAction* found = FindAction(*action->menu(), text)) return found;
  }
  return nullptr;
}

// As a user types it.
QString TextOf(const host::Json& json) {
  return QString::fromStdString(host::WriteJson(json, -1)).remove('"');
}

}  // namespace

QWidget* WidgetOf(const QWidget& window, std::int32_t gadget) {
  return window.findChild<QWidget*>(QString::number(gadget));
}

// One operation for each kind of event.
struct DialogPlayer::Plays {
  DialogPlayer& player;
  DialogWindow& window;
  const DialogEvent& event;

  void Fail(const std::string& why) const { player.Fail(event, why); }

  void operator()(const host::SetEvent& set) const {
    QWidget* widget = WidgetOf(window, set.gadget);
    const Gadget* gadget = window.Shown().Find(set.gadget);
    if (widget == nullptr || !widget->isVisible()) return Fail("nobody can see the gadget");
    if (!widget->isEnabled()) return Fail("the gadget is disabled");
    if (gadget->kind == host::ElementKind::Link) return ChooseInput(*widget, set.value);
    const auto value = host::TypedValue(*gadget, set.value);
    if (!value) return Fail(value.error());
    if (auto* number = qobject_cast<NumberField*>(widget)) return Type(*number, TextOf(set.value));
    if (auto* text = qobject_cast<QLineEdit*>(widget)) return Type(*text, TextOf(set.value));
    if (auto* slider = qobject_cast<QSlider*>(widget)) return Slide(*slider, *gadget, set.value);
    if (auto* list = qobject_cast<QComboBox*>(widget)) {
      return Choose(*list, std::get<std::int32_t>(*value));
    }
    if (auto* check = qobject_cast<QCheckBox*>(widget)) {
      if (check->isChecked() != std::get<bool>(*value)) PressKeys(*check, Qt::Key_Space);
      return;
    }
    if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
      return ShowPage(*tabs, *gadget, std::get<std::int32_t>(*value));
    }
    if (auto* button = qobject_cast<QPushButton*>(widget)) {
      player.PlaySoon();  // it may open another dialog
      return QTest::mouseClick(button, Qt::LeftButton);
    }
    if (auto* swatch = qobject_cast<QToolButton*>(widget)) {
      return ChooseColour(*swatch, std::get<Vector>(*value));
    }
    Fail("a gadget of an unknown kind");
  }

  static void Slide(QSlider& slider, const Gadget& gadget, const host::Json& shown) {
    const auto* whole = std::get_if<std::int64_t>(&shown.value);
    const double number =
        whole != nullptr ? static_cast<double>(*whole) : std::get<double>(shown.value);
    const double share =
        (number / gadget.Scale() - gadget.minimum) / (gadget.maximum - gadget.minimum);
    slider.setFocus();
    PressKeys(slider, Qt::Key_Home);
    PressKeys(slider, Qt::Key_Right, static_cast<int>(std::lround(share * slider.maximum())));
  }

  static void Choose(QComboBox& list, std::int32_t value) {
    list.setFocus();
    PressKeys(list, Qt::Key_Space);  // opens it
    PressKeys(*list.view(), Qt::Key_Home);
    PressKeys(*list.view(), Qt::Key_Down, list.findData(value));
    PressKeys(*list.view(), Qt::Key_Return);
  }

  static void ShowPage(QTabWidget& tabs, const Gadget& gadget, std::int32_t page) {
    for (std::size_t i = 0; i < gadget.entries.size(); ++i) {
      if (gadget.entries[i].value == page) ClickTab(tabs, static_cast<int>(i));
    }
  }

  // The chooser runs inside the click.
  static void ChooseColour(QToolButton& swatch, const Vector& colour) {
    QTimer::singleShot(0, &swatch, [colour] {
      auto* chooser = qobject_cast<QColorDialog*>(QApplication::activeModalWidget());
      if (chooser == nullptr) return;
      chooser->setCurrentColor(ColourOf(colour));
      PressKeys(*chooser, Qt::Key_Return);
    });
    QTest::mouseClick(&swatch, Qt::LeftButton);
  }

  void ChooseInput(QWidget& link, const host::Json& content) const {
    const host::Json* shader = content.Find("shader");
    const QString name = shader != nullptr ? TextOf(*shader) : QStringLiteral("&Clear");
    QAction* action = FindAction(*link.findChild<QToolButton*>()->menu(), name);
    if (action == nullptr) return Fail("the menu does not have it");
    action->trigger();
  }

  void operator()(const host::KeyEvent& key) const {
    window.setFocus();
    QTest::keyClick(&window, KeyOf(key.code), ModifiersOf(key.qualifier));
  }

  // Through the window, which finds out whose event it is, and which widget holds the mouse.
  void operator()(const host::MouseEvent& mouse) const {
    QWidget* area = WidgetOf(window, mouse.area);
    if (mouse.action == MouseAction::Up) return Release(mouse, area);
    if (area == nullptr) return Fail("no such area");
    if (mouse.place) {
      player.mouse_ = area->mapTo(&window, QPoint(mouse.place->x, mouse.place->y));
    }
    const auto modifiers = ModifiersOf(mouse.place ? mouse.place->qualifier : 0);
    QWindow* const screen = window.windowHandle();
    switch (mouse.action) {
      case MouseAction::Down:
        player.pressed_ = screen;
        player.PlaySoon();  // a drag, or another dialog, runs inside the press
        return QTest::mousePress(screen, Qt::LeftButton, modifiers, player.mouse_);
      case MouseAction::Move:
        return QTest::mouseMove(screen, player.mouse_);
      default:
        return SendTo(*area, mouse, modifiers);
    }
  }

  // It belongs to its press, also when that opened or closed a dialog.
  void Release(const host::MouseEvent& mouse, const QWidget* area) const {
    if (area != nullptr && mouse.place) {
      player.mouse_ = area->mapTo(&window, QPoint(mouse.place->x, mouse.place->y));
    }
    if (player.pressed_ == nullptr) return;
    QTest::mouseRelease(player.pressed_, Qt::LeftButton, {}, player.mouse_);
  }

  // QtTest has a double click with its first press alone, and no wheel.
  void SendTo(QWidget& area, const host::MouseEvent& mouse, Qt::KeyboardModifiers modifiers) const {
    const QPointF place(mouse.place->x, mouse.place->y);
    const QPointF global = area.mapToGlobal(place);
    if (mouse.action == MouseAction::Double) {
      player.PlaySoon();
      QMouseEvent press(QEvent::MouseButtonDblClick, place, global, Qt::LeftButton, Qt::LeftButton,
                        modifiers);
      QApplication::sendEvent(&area, &press);
    } else {
      QWheelEvent turn(place, global, {}, {0, mouse.delta}, Qt::NoButton, modifiers,
                       Qt::NoScrollPhase, false);
      QApplication::sendEvent(&area, &turn);
    }
  }

  void operator()(const host::ColourEvent& answer) const { player.waitingColour_ = &answer; }

  void operator()(const host::TickEvent& tick) const {
    constexpr int kLongestTick = 100;  // ms, of the module's areas
    QTest::qWait(kLongestTick * tick.count);
  }

  void operator()(const host::WaitEvent&) const {
    host::WaitForPreviews();
    QCoreApplication::processEvents();  // what they want drawn
  }

  void operator()(const host::SaveEvent&) const {}

  void operator()(const host::ExpectEvent& expect) const {
    const Gadget* gadget = window.Shown().Find(expect.gadget);
    const QWidget* widget = WidgetOf(window, expect.gadget);
    if (gadget == nullptr || widget == nullptr) return Fail("no such gadget");
    if (expect.value && !host::Shows(*gadget, *expect.value)) Fail("it shows something else");
    if (expect.enabled && *expect.enabled != widget->isEnabled()) Fail("enabled the other way");
  }

  void operator()(const host::CloseEvent& close) const {
    auto* buttons = window.findChild<QDialogButtonBox*>();
    if (buttons == nullptr) return PressKeys(window, Qt::Key_Escape);
    const auto button = close.confirmed ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel;
    QTest::mouseClick(buttons->button(button), Qt::LeftButton);
  }
};

DialogPlayer::DialogPlayer(std::vector<DialogEvent> events) : events_(std::move(events)) {
  PlaySoon();
}

void DialogPlayer::PlaySoon() {
  isBusy_ = false;
  QTimer::singleShot(0, this, [this] { PlayNext(); });
}

// Events of the window system are sent from an event loop, in which the next ones would be played.
void DialogPlayer::PlayNext() {
  QWidget* const modal = QApplication::activeModalWidget();
  if (isBusy_ || modal == nullptr || !modal->isVisible()) return;
  if (!modal->isActiveWindow()) return WaitFor(*modal);
  if (auto* chooser = qobject_cast<QColorDialog*>(modal)) {
    const auto* answer = std::exchange(waitingColour_, nullptr);
    if (answer == nullptr && next_ < events_.size()) {
      answer = std::get_if<host::ColourEvent>(&events_[next_++].what);
    }
    PlaySoon();
    return AnswerColour(*chooser, answer != nullptr ? *answer : host::ColourEvent{});
  }
  auto* window = dynamic_cast<DialogWindow*>(modal);
  if (window == nullptr) return;
  if (!failures_.empty() || IsDone()) {
    if (failures_.empty()) failures_.push_back("the list ends while a dialog is open");
    PlaySoon();
    return window->reject();
  }
  const std::size_t playing = next_++;
  isBusy_ = true;
  Play(*window, events_[playing]);
  if (std::exchange(isBusy_, false)) PlaySoon();
}

// A window gets the keyboard some time after it is shown.
void DialogPlayer::WaitFor(QWidget& window) {
  window.activateWindow();
  QTimer::singleShot(5, this, [this] { PlayNext(); });
}

void DialogPlayer::Play(DialogWindow& window, const DialogEvent& event) {
  std::visit(Plays{*this, window, event}, event.what);
}

void DialogPlayer::AnswerColour(QColorDialog& chooser, const host::ColourEvent& answer) {
  if (!answer.colour) return PressKeys(chooser, Qt::Key_Escape);
  chooser.setCurrentColor(ColourOf(*answer.colour));
  PressKeys(chooser, Qt::Key_Return);
}

void DialogPlayer::Fail(const DialogEvent& event, const std::string& why) {
  failures_.push_back(event.pointer + ": " + why);
}

}  // namespace sorvanix::studio
