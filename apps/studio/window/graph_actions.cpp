#include "apps/studio/window/graph_actions.h"

#include <QClipboard>
#include <QFileDialog>
#include <QGuiApplication>
#include <array>
#include <utility>

#include "apps/studio/document/scene_edit.h"
#include "apps/studio/window/icons.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

constexpr std::array<std::pair<const char*, const char*>, 3> kCategories = {
    {{"generator", QT_TR_NOOP("&Generators")},
     {"surface", QT_TR_NOOP("&Surface")},
     {"filter", QT_TR_NOOP("&Filters")}}};

}  // namespace

GraphActions::GraphActions(Workshop& workshop, QWidget* parent)
    : QObject(parent),
      workshop_(workshop),
      menu_(tr("&Shader"), parent),
      place_(tr("&Place"), parent),
      wrap_(tr("&Wrap In"), parent),
      edit_(IconOf(Symbol::Edit), tr("&Edit\u2026")),
      file_(tr("Place &File\u2026")),
      embed_(tr("E&mbed File")),
      unwrap_(tr("&Unwrap")),
      cut_(tr("Cu&t")),
      copy_(tr("&Copy")),
      paste_(tr("P&aste")),
      remove_(IconOf(Symbol::Delete), tr("&Remove")) {
  edit_.setToolTip(tr("Open the dialog of the selected shader (Enter)"));
  edit_.setShortcut(tr("Ctrl+E"));
  remove_.setToolTip(tr("Empty the selected place (Del)"));
  cut_.setShortcut(QKeySequence::Cut);
  copy_.setShortcut(QKeySequence::Copy);
  paste_.setShortcut(QKeySequence::Paste);
  remove_.setShortcut(QKeySequence::Delete);
  for (QAction* action : OfFocus()) action->setShortcutContext(Qt::WidgetShortcut);
  file_.setShortcut(tr("Ctrl+Shift+O"));
  unwrap_.setShortcut(tr("Ctrl+Shift+U"));
  embed_.setToolTip(tr("Make the graph of this file part of the scene"));
  unwrap_.setToolTip(tr("Take the filter away and leave what it filters"));
  place_.setIcon(IconOf(Symbol::Add));
  wrap_.setIcon(IconOf(Symbol::Wrap));
  FillMenus();

  connect(&edit_, &QAction::triggered, this, &GraphActions::EditWanted);
  connect(&file_, &QAction::triggered, this, &GraphActions::ChooseFile);
  connect(&embed_, &QAction::triggered, this,
          [this] { workshop_.commands.Embed(workshop_.selection.Place()); });
  connect(&unwrap_, &QAction::triggered, this,
          [this] { workshop_.commands.Unwrap(workshop_.selection.Place()); });
  connect(&cut_, &QAction::triggered, this, [this] {
    Copy();
    remove_.trigger();
  });
  connect(&copy_, &QAction::triggered, this, &GraphActions::Copy);
  connect(&paste_, &QAction::triggered, this, &GraphActions::Paste);
  connect(&remove_, &QAction::triggered, this,
          [this] { workshop_.commands.Remove(workshop_.selection.Place()); });
  connect(&workshop.selection, &Selection::PlaceSelected, this, &GraphActions::Update);
  connect(&workshop.selection, &Selection::MaterialSelected, this, &GraphActions::Update);
  connect(&workshop.document, &Document::MaterialChanged, this, &GraphActions::Update);
  Update();
}

void GraphActions::FillMenus() {
  for (const auto& [category, title] : kCategories) {
    QMenu* const menu = place_.addMenu(tr(title));
    for (const host::ShaderDescription& shader : workshop_.engine.Catalogue().Shaders()) {
      const QString name = QString::fromStdString(shader.name);
      if (shader.category == category) {
        menu->addAction(name, this, [this, name] {
          workshop_.commands.ReplaceShader(workshop_.selection.Place(), name);
        });
      }
    }
  }
  for (const host::ShaderDescription& shader : workshop_.engine.Catalogue().Shaders()) {
    if (shader.inputs.empty()) continue;
    const QString name = QString::fromStdString(shader.name);
    wrap_.addAction(name, this,
                    [this, name] { workshop_.commands.Wrap(workshop_.selection.Place(), name); });
  }
  menu_.addAction(&edit_);
  menu_.addSeparator();
  menu_.addMenu(&place_);
  menu_.addAction(&file_);
  menu_.addMenu(&wrap_);
  menu_.addAction(&unwrap_);
  menu_.addAction(&embed_);
  menu_.addSeparator();
  menu_.addAction(&cut_);
  menu_.addAction(&copy_);
  menu_.addAction(&paste_);
  menu_.addAction(&remove_);
}

void GraphActions::ChooseFile() {
  const QString name = QFileDialog::getOpenFileName(
      menu_.parentWidget(), tr("Place a Material or a Bitmap"),
      QString::fromStdString(host::Utf8FromPath(workshop_.document.Folder())),
      tr("Materials and bitmaps (*.json *.png *.jpg *.jpeg *.tif *.tiff *.exr *.hdr *.tx);;"
         "All files (*)"));
  if (name.isEmpty()) return;
  workshop_.commands.PlaceFile(workshop_.selection.Place(), host::PathFromUtf8(name.toStdString()));
}

// As text, which every editor takes, and material files hold. Files are named as they can be found
// from everywhere.
void GraphActions::Copy() {
  if (const Json* graph = workshop_.selection.Graph()) {
    const Json whole =
        MoveGraph(*graph, {workshop_.engine.Catalogue(), workshop_.document.Folder(), {}});
    QGuiApplication::clipboard()->setText(QString::fromStdString(host::WriteJson(whole)));
  }
}

void GraphActions::Paste() {
  auto graph = host::ParseJson(QGuiApplication::clipboard()->text().toStdString());
  if (!graph || graph->Find("shader") == nullptr) {
    return Q_EMIT workshop_.commands.Complained(tr("The clipboard holds no graph."));
  }
  workshop_.commands.Paste(workshop_.selection.Place(), std::move(*graph));
}

void GraphActions::Update() {
  const Json* material = workshop_.selection.MaterialJson();
  const Json* graph = workshop_.selection.Graph();
  const auto* shader = graph != nullptr ? ShaderOf(*graph, workshop_.engine.Catalogue()) : nullptr;
  const auto* file = graph != nullptr ? std::get_if<std::string>(&graph->value) : nullptr;
  place_.setTitle(graph == nullptr ? tr("&Place") : tr("Re&place By"));
  place_.setEnabled(material != nullptr);
  file_.setEnabled(material != nullptr);
  paste_.setEnabled(material != nullptr);
  edit_.setEnabled(shader != nullptr);
  wrap_.setEnabled(graph != nullptr);
  unwrap_.setEnabled(shader != nullptr && !shader->inputs.empty());
  embed_.setEnabled(file != nullptr && file->ends_with(".json"));
  cut_.setEnabled(graph != nullptr);
  copy_.setEnabled(graph != nullptr);
  remove_.setEnabled(graph != nullptr);
}

}  // namespace sorvanix::studio
