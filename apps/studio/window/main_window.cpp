#include "apps/studio/window/main_window.h"

#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDockWidget>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QMenuBar>
#include <QMessageBox>
#include <QSettings>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QUrl>
#include <QVBoxLayout>

#include "apps/studio/window/about.h"
#include "apps/studio/window/channel_bar.h"
#include "apps/studio/window/drag_data.h"
#include "apps/studio/window/export_dialog.h"
#include "apps/studio/window/graph_tree.h"
#include "apps/studio/window/icons.h"
#include "apps/studio/window/panel_parts.h"
#include "apps/studio/window/theme.h"
#include "host/scene/scene_file.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

constexpr const char *kGeometryKey = "windowGeometry", *kPanelsKey = "windowPanels";
constexpr int kMessageTime = 8000;  // ms in the status bar

QString TextOf(const std::filesystem::path& path) {
  return QString::fromStdString(host::Utf8FromPath(path));
}

}  // namespace

MainWindow::MainWindow(Workshop& workshop, ShaderEditor& editor)
    : workshop_(workshop),
      editor_(editor),
      files_(workshop, this),
      graph_(workshop, this),
      undo_(workshop.document.History().createUndoAction(this, tr("&Undo"))),
      redo_(workshop.document.History().createRedoAction(this, tr("&Redo"))),
      add_(IconOf(Symbol::Add), tr("&Add")),
      duplicate_(IconOf(Symbol::Duplicate), tr("&Duplicate")),
      rename_(IconOf(Symbol::Edit), tr("Re&name")),
      delete_(IconOf(Symbol::Delete), tr("De&lete")),
      up_(tr("Move &Up")),
      down_(tr("Move Do&wn")),
      loadMesh_(IconOf(Symbol::Mesh), tr("Load &Mesh\u2026")),
      play_(IconOf(Symbol::Play), tr("&Play")),
      export_(IconOf(Symbol::Export), tr("&Export Bake\u2026")) {
  setAcceptDrops(true);
  setDockNestingEnabled(true);
  MakeActions();
  views_ = new ViewPanel(workshop, &loadMesh_, &play_);
  setCentralWidget(views_);
  MakeDocks();
  MakeMenus();
  MakeToolBar();
  const auto tell = [this](const QString& text) { statusBar()->showMessage(text, kMessageTime); };
  connect(&workshop.commands, &Commands::Complained, this, tell);
  connect(&files_, &DocumentActions::Told, this, tell);
  connect(&workshop.document, &Document::FileChanged, this, &MainWindow::ShowTitle);
  connect(&workshop.document.History(), &QUndoStack::cleanChanged, this, &MainWindow::ShowTitle);
  ShowTitle();
  statusBar()->showMessage(tr("Drag a shader or a preset onto a channel."), kMessageTime);
}

void MainWindow::MakeActions() {
  undo_->setIcon(IconOf(Symbol::Undo));
  undo_->setShortcut(QKeySequence::Undo);
  redo_->setIcon(IconOf(Symbol::Redo));
  redo_->setShortcut(QKeySequence::Redo);
  add_.setShortcut(tr("Ctrl+Shift+N"));
  duplicate_.setShortcut(tr("Ctrl+D"));
  rename_.setShortcut(tr("Ctrl+R"));
  // Elsewhere the key deletes other things: a shader, a letter.
  delete_.setShortcut(QKeySequence::Delete);
  delete_.setShortcutContext(Qt::WidgetWithChildrenShortcut);
  up_.setShortcut(tr("Ctrl+Up"));
  down_.setShortcut(tr("Ctrl+Down"));
  play_.setShortcut(tr("Ctrl+Space"));
  play_.setCheckable(true);
  export_.setShortcut(tr("Ctrl+Shift+E"));

  Commands& commands = workshop_.commands;
  connect(&add_, &QAction::triggered, &commands, &Commands::AddMaterial);
  connect(&duplicate_, &QAction::triggered, &commands, &Commands::DuplicateMaterial);
  connect(&delete_, &QAction::triggered, &commands, &Commands::RemoveMaterial);
  connect(&up_, &QAction::triggered, &commands, [&commands] { commands.MoveMaterial(-1); });
  connect(&down_, &QAction::triggered, &commands, [&commands] { commands.MoveMaterial(1); });
  connect(&rename_, &QAction::triggered, this, [this] { materials_->EditName(); });
  connect(&loadMesh_, &QAction::triggered, this, &MainWindow::LoadMesh);
  connect(&export_, &QAction::triggered, this, &MainWindow::Export);
  connect(&graph_, &GraphActions::EditWanted, this, &MainWindow::EditShader);
  connect(&play_, &QAction::toggled, this, [this](bool plays) {
    play_.setIcon(IconOf(plays ? Symbol::Pause : Symbol::Play));
    workshop_.view.SetPlaying(plays);
  });
}

void MainWindow::MakeMenus() {
  QMenu* file = menuBar()->addMenu(tr("&File"));
  files_.FillMenu(*file);
  file->addSeparator();
  file->addAction(&export_);
  file->addSeparator();
  file->addAction(tr("&Quit"), QKeySequence::Quit, this, &QWidget::close);
  menuBar()->addMenu(tr("&Edit"))->addActions({undo_, redo_});
  menuBar()
      ->addMenu(tr("&Material"))
      ->addActions({&add_, &duplicate_, &rename_, &delete_, &up_, &down_});
  menuBar()->addMenu(graph_.Menu());
  QMenu* view = menuBar()->addMenu(tr("&View"));
  view->addAction(tr("On an &Object"), tr("Ctrl+1"), this, [this] { views_->ShowFlat(false); });
  view->addAction(tr("&Flat"), tr("Ctrl+2"), this, [this] { views_->ShowFlat(true); });
  view->addActions({&loadMesh_, &play_});
  view->addSeparator();
  for (QDockWidget* dock : findChildren<QDockWidget*>()) view->addAction(dock->toggleViewAction());
  view->addSeparator();
  MakeAppearanceMenu(*view->addMenu(tr("&Appearance")));
  QMenu* help = menuBar()->addMenu(tr("&Help"));
  help->addAction(tr("&Documentation"), QKeySequence::HelpContents, this, &MainWindow::ShowHelp);
  help->addAction(tr("&About sorvaNIX"), this, &MainWindow::ShowAbout);
}

void MainWindow::MakeAppearanceMenu(QMenu& menu) {
  auto* group = new QActionGroup(this);
  const QString titles[] = {tr("&System"), tr("&Light"), tr("&Dark")};
  for (const Appearance each : {Appearance::System, Appearance::Light, Appearance::Dark}) {
    QAction* action =
        menu.addAction(titles[static_cast<int>(each)], this, [each] { ChooseAppearance(each); });
    action->setCheckable(true);
    action->setChecked(each == ChosenAppearance());
    group->addAction(action);
  }
}

void MainWindow::MakeToolBar() {
  QToolBar* bar = addToolBar(tr("Main"));
  bar->setObjectName("main");
  bar->setMovable(false);
  bar->setIconSize({18, 18});
  bar->addActions({files_.New(), files_.Open(), files_.Save()});
  bar->addSeparator();
  bar->addActions({undo_, redo_});
  bar->addSeparator();
  bar->addAction(&export_);
}

QDockWidget* MainWindow::AddDock(const QString& title, QWidget* content, Qt::DockWidgetArea area) {
  auto* dock = new QDockWidget(title);
  dock->setObjectName(title);
  dock->setWidget(content);
  dock->setFeatures(QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetClosable);
  addDockWidget(area, dock);
  return dock;
}

void MainWindow::MakeDocks() {
  materials_ = new MaterialPanel(workshop_, {&add_, &duplicate_, &rename_, &delete_});
  auto* shaders =
      new Shelf(workshop_, "shader", tr("Shaders"), ShaderItems(workshop_.engine.Catalogue()));
  auto* presets = new Shelf(workshop_, "preset", tr("Presets"),
                            PresetItems(PresetFolders(), workshop_.engine.Catalogue()));
  for (Shelf* shelf : {shaders, presets}) {
    connect(shelf, &Shelf::Chosen, this, &MainWindow::TakeFromShelf);
  }
  auto* shelves = new QTabWidget;
  shelves->setDocumentMode(true);
  shelves->setAccessibleName(tr("Shelf"));
  shelves->addTab(shaders, tr("Sha&ders"));
  shelves->addTab(presets, tr("Prese&ts"));
  auto* channels = new QWidget;
  auto* layout = new QVBoxLayout(channels);
  layout->setContentsMargins(kPanelMargin, kPanelMargin, kPanelMargin, kPanelMargin);
  layout->setSpacing(kPanelSpacing);
  layout->addWidget(new GraphTree(workshop_, graph_), 1);
  auto* buttons = ButtonRow({graph_.Edit(), graph_.PlaceMenu()->menuAction(),
                             graph_.WrapMenu()->menuAction(), graph_.Remove()});
  layout->addLayout(buttons);
  layout->addWidget(new ChannelBar(workshop_));
  for (auto* button : channels->findChildren<QToolButton*>()) {
    button->setPopupMode(QToolButton::InstantPopup);
  }
  QDockWidget* list = AddDock(tr("Materials"), materials_, Qt::LeftDockWidgetArea);
  AddDock(tr("Shelf"), shelves, Qt::LeftDockWidgetArea);
  QDockWidget* tree = AddDock(tr("Channels"), channels, Qt::RightDockWidgetArea);
  resizeDocks({list, tree}, {312, 330}, Qt::Horizontal);
}

void MainWindow::ShowTitle() {
  setWindowTitle(tr("%1[*] \u2014 sorvaNIX Studio").arg(workshop_.document.Title()));
  setWindowModified(workshop_.document.IsModified());
}

void MainWindow::TakeFromShelf(const ShelfItem& item) {
  const GraphPlace& place = workshop_.selection.Place();
  if (item.shader.isEmpty()) {
    workshop_.commands.PlaceFile(place, item.file);
  } else {
    workshop_.commands.TakeShader(place, item.shader);
  }
}

void MainWindow::EditShader() {
  const Json* material = workshop_.selection.MaterialJson();
  if (material == nullptr) return;
  // What dialogs show of the document: their object lists and previews.
  const auto reading = host::ReadScene(workshop_.document.Text(), workshop_.document.File(),
                                       {.catalogue = &workshop_.engine.Catalogue()});
  workshop_.engine.Documents().SetActive(reading.scene.get());
  const GraphPlace place = workshop_.selection.Place();
  const auto edited = studio::EditShader(*material, place,
                                         {.catalogue = workshop_.engine.Catalogue(),
                                          .scene = workshop_.document.Scene(),
                                          .file = workshop_.document.File(),
                                          .editor = editor_});
  workshop_.engine.Documents().SetActive(nullptr);
  if (!edited) {
    statusBar()->showMessage(QString::fromStdString(edited.error()), kMessageTime);
  } else if (*edited) {
    workshop_.commands.PlaceEdited(place, (*edited)->graph, (*edited)->state);
  }
}

void MainWindow::LoadMesh() {
  const QString name =
      QFileDialog::getOpenFileName(this, tr("Load a Mesh"), TextOf(workshop_.document.Folder()),
                                   tr("Meshes (*.obj *.ply *.gltf *.glb);;All files (*)"));
  if (name.isEmpty()) return;
  auto mesh = LoadPreviewMesh(host::PathFromUtf8(name.toStdString()));
  if (mesh) return workshop_.view.SetObject(std::move(*mesh));
  QMessageBox::warning(this, tr("Load a Mesh"), QString::fromStdString(mesh.error()));
}

void MainWindow::Export() {
  if (workshop_.selection.MaterialJson() != nullptr) {
    ExportDialog(workshop_, this).exec();
  } else {
    statusBar()->showMessage(tr("There is no material."), kMessageTime);
  }
}

void MainWindow::ShowHelp() {
  const auto page = workshop_.engine.DocumentationPage();
  std::error_code error;
  if (std::filesystem::exists(page, error)) {
    QDesktopServices::openUrl(QUrl::fromLocalFile(TextOf(page)));
  } else {
    statusBar()->showMessage(tr("The documentation is not installed: %1").arg(TextOf(page)),
                             kMessageTime);
  }
}

void MainWindow::ShowAbout() { studio::ShowAbout(this); }

void MainWindow::RestoreLayout() {
  const QSettings settings;
  restoreGeometry(settings.value(kGeometryKey).toByteArray());
  restoreState(settings.value(kPanelsKey).toByteArray());
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->setAccepted(!asks_ || files_.MayLeave());
  if (!asks_ || !event->isAccepted()) return;
  QSettings settings;
  settings.setValue(kGeometryKey, saveGeometry());
  settings.setValue(kPanelsKey, saveState());
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event) {
  if (DraggedFile(*event->mimeData())) event->acceptProposedAction();
}

void MainWindow::dropEvent(QDropEvent* event) {
  const auto files = DraggedFiles(*event->mimeData());
  event->acceptProposedAction();
  // Later: until then the program that the files come from waits, and boxes may open.
  QMetaObject::invokeMethod(
      this,
      [this, files] {
        for (const auto& file : files) files_.OpenFile(file);
      },
      Qt::QueuedConnection);
}

}  // namespace sorvanix::studio
