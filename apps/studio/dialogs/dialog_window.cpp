#include "apps/studio/dialogs/dialog_window.h"

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/studio/dialogs/key_codes.h"
#include "apps/studio/dialogs/number_field.h"

namespace sorvanix::studio {

namespace {

constexpr int kMargin = 10;
constexpr int kSpacing = 10;

bool TakesText(const QObject* widget) {
  return qobject_cast<const QLineEdit*>(widget) != nullptr ||
         qobject_cast<const NumberField*>(widget) != nullptr;
}

}  // namespace

DialogWindow::DialogWindow(host::Dialog& dialog, const LinkSources& sources, QWidget* parent)
    : QDialog(parent), dialog_(dialog) {
  setObjectName(QString::number(dialog.Layout()->id));
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(kMargin, kMargin, kMargin, kMargin);
  column->setSpacing(kSpacing);
  column->addWidget(LayoutBuilder(dialog, sources, views_, areas_).Build(dialog.Layout()->root), 1);
  if (!dialog.Layout()->ownButtons) {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    column->addWidget(buttons);
  }
  for (const auto& [id, view] : views_) view->Update();
  for (QWidget* widget : findChildren<QWidget*>()) widget->installEventFilter(this);
  TitleChanged();
}

AreaWidget* DialogWindow::Area(const host::UserArea& area) const {
  const auto found = areas_.find(&area);
  return found == areas_.end() ? nullptr : found->second;
}

void DialogWindow::GadgetChanged(std::int32_t id) {
  if (const auto found = views_.find(id); found != views_.end()) found->second->Update();
}

void DialogWindow::TitleChanged() { setWindowTitle(QString::fromStdString(dialog_.Title())); }

// The button that a dialog begins with is Enter's, wherever the user goes then.
void DialogWindow::Focus(std::int32_t id) {
  const auto found = views_.find(id);
  if (found == views_.end()) return;
  QWidget* widget = found->second->Widget();
  if (auto* button = qobject_cast<QPushButton*>(widget)) button->setDefault(true);
  widget->setFocus();
}

// A number that is still being typed counts.
void DialogWindow::accept() {
  if (QWidget* edited = focusWidget(); edited != nullptr && TakesText(edited)) edited->clearFocus();
  dialog_.Close(true);
}

// The release of a drag is nobody's once another dialog stands before this one.
bool DialogWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowBlocked) {
    for (const auto& [id, area] : areas_) area->LetGo();
  }
  return QDialog::event(event);
}

bool DialogWindow::IsDragged() const {
  return std::any_of(areas_.begin(), areas_.end(),
                     [](const auto& area) { return area.second->IsHeld(); });
}

bool DialogWindow::TakeKey(const QKeyEvent& event) {
  if (IsDragged()) return true;
  const auto code = KeyCodeOf(event);
  return code && dialog_.PressKey(*code, QualifierOf(event.modifiers()));
}

// Enter is the default button's. Escape has closed the dialog, or the module has a use for it.
void DialogWindow::keyPressEvent(QKeyEvent* event) {
  if (TakeKey(*event) || event->key() == Qt::Key_Escape) return;
  QDialog::keyPressEvent(event);
}

// Buttons, lists and sliders take arrows whatever is held with them; here those with a qualifier
// are the dialog's first. In a text they move the cursor, and an open menu keeps its own.
bool DialogWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && !TakesText(watched)) {
    const auto& key = static_cast<const QKeyEvent&>(*event);
    const bool isInside = static_cast<const QWidget*>(watched)->window() == this;
    if (isInside && QualifierOf(key.modifiers()) != 0 && TakeKey(key)) return true;
  }
  return QDialog::eventFilter(watched, event);
}

}  // namespace sorvanix::studio
