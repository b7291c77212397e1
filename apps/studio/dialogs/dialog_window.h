// A dialog of the module as a window.
#pragma once

#include <QDialog>

#include "apps/studio/dialogs/layout_builder.h"

namespace sorvanix::studio {

class DialogWindow : public QDialog {
 public:
  /// The dialog must be loaded and its areas prepared.
  DialogWindow(host::Dialog& dialog, const LinkSources& sources, QWidget* parent);

  host::Dialog& Shown() const { return dialog_; }
  AreaWidget* Area(const host::UserArea& area) const;

  // What the module changed.
  void GadgetChanged(std::int32_t id);
  void TitleChanged();
  void Focus(std::int32_t id);

  // How the user closes it.
  void accept() override;
  void reject() override { dialog_.Close(false); }

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool IsDragged() const;
  bool TakeKey(const QKeyEvent& event);

  host::Dialog& dialog_;
  LayoutBuilder::Views views_;
  LayoutBuilder::Areas areas_;
};

}  // namespace sorvanix::studio
