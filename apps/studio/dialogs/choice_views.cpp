// What is chosen from a few: check boxes, lists and tabs.
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QTabWidget>
#include <QTimer>
#include <QWheelEvent>
#include <algorithm>

#include "apps/studio/dialogs/gadget_kinds.h"

namespace sorvanix::studio {

namespace {

class CheckView : public GadgetView {
 public:
  explicit CheckView(const ShownGadget& gadget)
      : GadgetView(new QCheckBox(QString::fromStdString(gadget.Element().label)), gadget) {
    connect(Box(), &QCheckBox::clicked, this, [this](bool isOn) { Shown().Set(isOn); });
  }

 private:
  QCheckBox* Box() const { return static_cast<QCheckBox*>(Widget()); }
  void Show(const host::Gadget& gadget) override {
    Box()->setChecked(gadget.Integer().value_or(0) != 0);
  }
};

// Where an entry of a value stands; -1 when there is none.
int IndexOf(const host::Gadget& gadget) {
  const auto& entries = gadget.entries;
  const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) {
    return entry.value == gadget.Integer();
  });
  return found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
}

// A wheel that turns over it on its way elsewhere changes nothing. Qt closes the list before the
// key that closes it arrives; it would go on to the dialog, and Enter would confirm that.
class ChoiceBox : public QComboBox {
 public:
  ChoiceBox() { setFocusPolicy(Qt::StrongFocus); }

  void hidePopup() override {
    QComboBox::hidePopup();
    closesNow_ = true;
    QTimer::singleShot(0, this, [this] { closesNow_ = false; });
  }

 protected:
  void keyPressEvent(QKeyEvent* event) override {
    const int key = event->key();
    const bool closes = key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
    if (!(closesNow_ && closes)) QComboBox::keyPressEvent(event);
  }
  void wheelEvent(QWheelEvent* event) override {
    if (hasFocus()) return QComboBox::wheelEvent(event);
    event->ignore();
  }

 private:
  bool closesNow_ = false;
};

class ChoiceView : public GadgetView {
 public:
  explicit ChoiceView(const ShownGadget& gadget) : GadgetView(new ChoiceBox, gadget) {
    constexpr int kMostRows = 30;
    Box()->setMaxVisibleItems(kMostRows);
    for (const host::ChoiceEntry& entry : gadget.Element().entries) {
      Box()->addItem(QString::fromStdString(entry.label), entry.value);
    }
    connect(Box(), &QComboBox::activated, this,
            [this](int index) { Shown().Set(Box()->itemData(index).toInt()); });
  }

 private:
  QComboBox* Box() const { return static_cast<QComboBox*>(Widget()); }
  void Show(const host::Gadget& gadget) override { Box()->setCurrentIndex(IndexOf(gadget)); }
};

class TabsView : public GadgetView {
 public:
  TabsView(const ShownGadget& gadget, QTabWidget* tabs) : GadgetView(tabs, gadget) {
    connect(tabs, &QTabWidget::currentChanged, this, [this](int index) {
      const auto& pages = Shown().Element().entries;
      if (index >= 0) Shown().Set(pages[static_cast<std::size_t>(index)].value);
    });
  }

 private:
  void Show(const host::Gadget& gadget) override {
    auto* tabs = static_cast<QTabWidget*>(Widget());
    const QSignalBlocker quiet(tabs);
    if (const int index = IndexOf(gadget); index >= 0) tabs->setCurrentIndex(index);
  }
};

}  // namespace

GadgetView* MakeCheckView(const ShownGadget& gadget) { return new CheckView(gadget); }
GadgetView* MakeChoiceView(const ShownGadget& gadget) { return new ChoiceView(gadget); }
GadgetView* MakeTabsView(const ShownGadget& gadget, QTabWidget* tabs) {
  return new TabsView(gadget, tabs);
}

}  // namespace sorvanix::studio
