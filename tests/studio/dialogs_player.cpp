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
#include <QPushButton>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QTimer>
#include <QToolButton>
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
  Hand& hand = *player.hand_;

  void Fail(const std::string& why) const { player.Fail(event, why); }

  void operator()(const host::SetEvent& set) const {
    QWidget* widget = WidgetOf(window, set.gadget);
    const Gadget* gadget = window.Shown().Find(set.gadget);
    if (widget == nullptr || !widget->isVisible()) return Fail("nobody can see the gadget");
    if (!widget->isEnabled()) return Fail("the gadget is disabled");
    if (gadget->kind == host::ElementKind::Link) return ChooseInput(*widget, set.value);
    const auto value = host::TypedValue(*gadget, set.value);
    if (!value) return Fail(value.error());
    if (qobject_cast<NumberField*>(widget) != nullptr ||
        qobject_cast<QLineEdit*>(widget) != nullptr) {
      hand.TypeInto(*widget, TextOf(set.value));
      return hand.Key(*widget, Qt::Key_Tab);
    }
    if (auto* slider = qobject_cast<QSlider*>(widget)) return Slide(*slider, *gadget, set.value);
    if (auto* list = qobject_cast<QComboBox*>(widget)) {
      return Choose(*list, std::get<std::int32_t>(*value));
    }
    if (auto* check = qobject_cast<QCheckBox*>(widget)) {
      if (check->isChecked() != std::get<bool>(*value)) hand.Click(*check, LeftOf(*check));
      return;
    }
    if (auto* tabs = qobject_cast<QTabWidget*>(widget)) {
      return ShowPage(*tabs, *gadget, std::get<std::int32_t>(*value));
    }
    if (auto* button = qobject_cast<QPushButton*>(widget)) {
      return ClickForAnotherDialog(*button);
    }
    if (auto* swatch = qobject_cast<QToolButton*>(widget)) {
      player.colour_ = host::ColourEvent{std::get<Vector>(*value)};
      return ClickForAnotherDialog(*swatch);
    }
    Fail("a gadget of an unknown kind");
  }

  // Which runs inside the click.
  void ClickForAnotherDialog(QWidget& button) const {
    player.PlaySoon();
    hand.Click(button, button.rect().center());
  }

  // Where the box of a check box is, and the text of a field begins.
  static QPoint LeftOf(const QWidget& widget) { return {8, widget.height() / 2}; }

  void Slide(QSlider& slider, const Gadget& gadget, const host::Json& shown) const {
    const auto* whole = std::get_if<std::int64_t>(&shown.value);
    const double number =
        whole != nullptr ? static_cast<double>(*whole) : std::get<double>(shown.value);
    const double share =
        (number / gadget.Scale() - gadget.minimum) / (gadget.maximum - gadget.minimum);
    const int place = static_cast<int>(std::lround(share * slider.maximum()));
    slider.setFocus();
    hand.Key(slider, Qt::Key_Home);
    hand.Key(slider, Qt::Key_PageUp, {}, place / slider.pageStep());
    hand.Key(slider, Qt::Key_Right, {}, place % slider.pageStep());
  }

  void Choose(QComboBox& list, std::int32_t value) const {
    list.setFocus();
    hand.Key(list, Qt::Key_Space);  // opens it
    hand.Key(*list.view(), Qt::Key_Home);
    hand.Key(*list.view(), Qt::Key_Down, {}, list.findData(value));
    hand.Key(*list.view(), Qt::Key_Return);
  }

  void ShowPage(const QTabWidget& tabs, const Gadget& gadget, std::int32_t page) const {
    for (std::size_t i = 0; i < gadget.entries.size(); ++i) {
      const QRect tab = tabs.tabBar()->tabRect(static_cast<int>(i));
      if (gadget.entries[i].value == page) hand.Click(*tabs.tabBar(), tab.center());
    }
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
    hand.Key(window, KeyOf(key.code), ModifiersOf(key.qualifier));
  }

  void operator()(const host::MouseEvent& mouse) const {
    QWidget* area = WidgetOf(window, mouse.area);
    if (area == nullptr && mouse.action != MouseAction::Up) return Fail("no such area");
    const host::MousePlace given = mouse.place.value_or(host::MousePlace{});
    const QPoint place(given.x, given.y);
    const auto held = ModifiersOf(given.qualifier);
    switch (mouse.action) {
      case MouseAction::Down:
        player.PlaySoon();  // a drag, or another dialog, runs inside the press
        return hand.Press(*area, place, held);
      case MouseAction::Move:
        return hand.MoveTo(*area, place);
      case MouseAction::Up:  // it belongs to its press, also when that opened or closed a dialog
        if (area != nullptr && mouse.place) hand.MoveTo(*area, place);
        return hand.Release();
      case MouseAction::Double:
        player.PlaySoon();
        return hand.PressTwice(*area, place, held);
      case MouseAction::Wheel:
        return hand.Wheel(*area, place, mouse.delta, held);
    }
  }

  void operator()(const host::ColourEvent& answer) const { player.colour_ = answer; }

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
    if (buttons == nullptr) return hand.Key(window, Qt::Key_Escape);
    QPushButton* button =
        buttons->button(close.confirmed ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
    hand.Click(*button, button->rect().center());
  }
};

DialogPlayer::DialogPlayer(std::vector<DialogEvent> events)
    : events_(std::move(events)), hand_(MakeHand()) {
  PlaySoon();
}

void DialogPlayer::PlaySoon(int milliseconds) {
  isBusy_ = false;
  QTimer::singleShot(milliseconds, this, [this] { PlayNext(); });
}

// Events of the window system are sent from an event loop, in which the next ones would be played.
void DialogPlayer::PlayNext() {
  constexpr int kMoment = 3;  // ms
  if (isBusy_) return;
  QWidget* const modal = QApplication::activeModalWidget();
  if (modal == nullptr || !modal->isVisible() || !hand_->IsSettled()) return PlaySoon(kMoment);
  if (!modal->isActiveWindow()) {  // a window gets the keyboard some time after it is shown
    modal->activateWindow();
    return PlaySoon(kMoment);
  }
  if (auto* chooser = qobject_cast<QColorDialog*>(modal)) {
    if (!colour_ && !IsDone()) {
      const auto* answer = std::get_if<host::ColourEvent>(&events_[next_].what);
      if (answer == nullptr) Fail(events_[next_], "a colour is to be chosen");
      colour_ = answer != nullptr ? *answer : host::ColourEvent{};
      ++next_;
    }
    PlaySoon();
    const auto answer = std::exchange(colour_, std::nullopt);
    return AnswerColour(*chooser, answer.value_or(host::ColourEvent{}));
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

void DialogPlayer::Play(DialogWindow& window, const DialogEvent& event) {
  std::visit(Plays{*this, window, event}, event.what);
}

void DialogPlayer::AnswerColour(QColorDialog& chooser, const host::ColourEvent& answer) {
  if (answer.colour) chooser.setCurrentColor(ColourOf(*answer.colour));
  hand_->Key(chooser, answer.colour ? Qt::Key_Return : Qt::Key_Escape);
}

void DialogPlayer::Fail(const DialogEvent& event, const std::string& why) {
  failures_.push_back(event.pointer + ": " + why);
}

}  // namespace sorvanix::studio
