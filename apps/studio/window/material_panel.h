// The document's materials with their thumbnails: choose, add, duplicate, rename, delete.
#pragma once

#include <QListWidget>
#include <QWidget>

#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class MaterialPanel : public QWidget {
  Q_OBJECT

 public:
  /// Shows buttons for the actions.
  MaterialPanel(Workshop& workshop, const QList<QAction*>& actions, QWidget* parent = nullptr);

  /// Lets the user type another name for the selected material.
  void EditName();

 private:
  void Fill();
  void ShowMaterial(int index);
  void Select(int index);

  Workshop& workshop_;
  QListWidget list_;
};

}  // namespace sorvanix::studio
