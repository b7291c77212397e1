// What shows one gadget of a dialog and hands on what the user does with it. The state and the
// rules of a gadget are the host's (host/dialogs/gadget.h); views hold nothing of their own.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <utility>

#include "host/channels/material_file.h"
#include "host/dialogs/dialog.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::studio {

/// Where links take from what the user puts into them.
struct LinkSources {
  const host::ShaderCatalogue& catalogue;
  std::function<host::MaterialPlaces()> places;  ///< of the document, as it is now
};

/// A gadget of an open dialog, as views see it. The dialog must outlive it.
class ShownGadget {
 public:
  ShownGadget(host::Dialog& dialog, const host::LayoutElement& element)
      : dialog_(&dialog), element_(&element) {}

  host::Dialog& Dialog() const { return *dialog_; }
  const host::LayoutElement& Element() const { return *element_; }
  const host::Gadget& State() const { return *dialog_->Find(element_->id); }

  /// The user gave it this value. A window that goes away takes the focus from its fields, but what
  /// stands in them comes too late.
  void Set(host::GadgetValue value, bool dragging = false) const {
    if (!dialog_->IsClosed())
      dialog_->Set(*dialog_->Find(element_->id), std::move(value), dragging);
  }
  /// The user changed what the link shows.
  void LinkChanged() const {
    if (!dialog_->IsClosed()) dialog_->ChangeLink(State());
  }

 private:
  host::Dialog* dialog_;
  const host::LayoutElement* element_;
};

/// Goes with its widget.
class GadgetView : public QObject {
 public:
  GadgetView(QWidget* widget, const ShownGadget& gadget)
      : QObject(widget), widget_(widget), gadget_(gadget) {}

  QWidget* Widget() const { return widget_; }
  /// The label that stands beside it, which is enabled with it.
  void SetLabel(QWidget* label) { label_ = label; }
  /// Shows the gadget's state.
  void Update();

 protected:
  const ShownGadget& Shown() const { return gadget_; }
  virtual void Show(const host::Gadget& gadget) = 0;

 private:
  QWidget* widget_;
  QPointer<QWidget> label_;
  ShownGadget gadget_;
};

/// The view of a gadget of any kind but tabs and areas.
GadgetView* MakeGadgetView(const ShownGadget& gadget, const LinkSources& sources);

}  // namespace sorvanix::studio
