// The window: what it consists of, and where that stands.
#pragma once

#include <QMainWindow>

#include "apps/studio/document/shader_editing.h"
#include "apps/studio/window/document_actions.h"
#include "apps/studio/window/graph_actions.h"
#include "apps/studio/window/material_panel.h"
#include "apps/studio/window/shelf.h"
#include "apps/studio/window/view_panel.h"
#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  /// Both must outlive it. The editor opens the dialogs of shaders.
  MainWindow(Workshop& workshop, ShaderEditor& editor);

  DocumentActions& Files() { return files_; }
  ViewPanel& Views() { return *views_; }
  /// Opens the dialog of the shader at the selected place; what it changed is one step.
  void EditShader();
  /// Size, place and panels as they were when the window was last closed.
  void RestoreLayout();
  /// Leaving the window neither asks nor keeps its layout; for scripts.
  void NeverAsk() { asks_ = false; }

  QSize sizeHint() const override { return {1320, 820}; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void MakeActions();
  void MakeMenus();
  void MakeToolBar();
  void MakeDocks();
  QDockWidget* AddDock(const QString& title, QWidget* content, Qt::DockWidgetArea area);
  void MakeAppearanceMenu(QMenu& view);
  void ShowTitle();
  void LoadMesh();
  void Export();
  void ShowHelp();
  void ShowAbout();
  void TakeFromShelf(const ShelfItem& item);

  Workshop& workshop_;
  ShaderEditor& editor_;
  bool asks_ = true;
  DocumentActions files_;
  GraphActions graph_;
  QAction *undo_, *redo_;
  QAction add_, duplicate_, rename_, delete_, up_, down_, loadMesh_, play_, export_;
  ViewPanel* views_ = nullptr;
  MaterialPanel* materials_ = nullptr;
};

}  // namespace sorvanix::studio
