// Words: labels, texts, names of files, and buttons.
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

#include "apps/studio/dialogs/gadget_kinds.h"

namespace sorvanix::studio {

namespace {

QString TextOf(const host::Gadget& gadget) {
  const auto* text = std::get_if<std::string>(&gadget.value);
  return text != nullptr ? QString::fromStdString(*text) : QString();
}

class LabelView : public GadgetView {
 public:
  explicit LabelView(const ShownGadget& gadget)
      : GadgetView(new QLabel(QString::fromStdString(gadget.Element().label)), gadget) {}

 private:
  void Show(const host::Gadget& gadget) override {
    static_cast<QLabel*>(Widget())->setText(TextOf(gadget));
  }
};

class TextView : public GadgetView {
 public:
  explicit TextView(const ShownGadget& gadget) : TextView(gadget, new QLineEdit) {}

 protected:
  // In a widget with more than the edit.
  TextView(const ShownGadget& gadget, QLineEdit* edit, QWidget* widget = nullptr)
      : GadgetView(widget == nullptr ? edit : widget, gadget), edit_(edit) {
    connect(edit, &QLineEdit::editingFinished, this, [this] { Take(edit_->text()); });
  }

  void Take(const QString& text) {
    if (text != TextOf(Shown().State())) Shown().Set(text.toStdString());
  }
  QLineEdit* Edit() const { return edit_; }

 private:
  void Show(const host::Gadget& gadget) override { edit_->setText(TextOf(gadget)); }

  QLineEdit* edit_;
};

class FilenameView : public TextView {
 public:
  explicit FilenameView(const ShownGadget& gadget) : TextView(gadget, new QLineEdit, new QWidget) {
    auto* choose = new QToolButton;
    choose->setText(QStringLiteral("\u2026"));
    auto* row = new QHBoxLayout(Widget());
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(Edit());
    row->addWidget(choose);
    Widget()->setFocusProxy(Edit());
    connect(choose, &QToolButton::clicked, this, [this] {
      const QString file =
          QFileDialog::getOpenFileName(Widget()->window(), QString(), Edit()->text());
      if (!file.isEmpty()) Take(file);
    });
  }
};

class ButtonView : public GadgetView {
 public:
  explicit ButtonView(const ShownGadget& gadget)
      : GadgetView(new QPushButton(QString::fromStdString(gadget.Element().label)), gadget) {
    connect(static_cast<QPushButton*>(Widget()), &QPushButton::clicked, this,
            [this] { Shown().Set(true); });
  }

 private:
  void Show(const host::Gadget&) override {}
};

}  // namespace

GadgetView* MakeLabelView(const ShownGadget& gadget) { return new LabelView(gadget); }
GadgetView* MakeTextView(const ShownGadget& gadget) { return new TextView(gadget); }
GadgetView* MakeFilenameView(const ShownGadget& gadget) { return new FilenameView(gadget); }
GadgetView* MakeButtonView(const ShownGadget& gadget) { return new ButtonView(gadget); }

}  // namespace sorvanix::studio
