#include "apps/studio/window/graph_tree.h"

#include <QDragMoveEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

#include "apps/studio/document/scene_edit.h"
#include "host/scene/scene_format.h"

namespace sorvanix::studio {

namespace {

constexpr int kPlaceRole = Qt::UserRole;
constexpr int kRowHeight = 26;

GraphPlace PlaceOf(const QTreeWidgetItem& item) {
  GraphPlace place;
  QStringList names = item.data(0, kPlaceRole).toStringList();
  place.channel = names.takeFirst().toStdString();
  for (const QString& name : names) place.inputs.push_back(name.toStdString());
  return place;
}

void SetPlace(QTreeWidgetItem& item, const GraphPlace& place) {
  QStringList names = {QString::fromStdString(place.channel)};
  for (const std::string& input : place.inputs) names << QString::fromStdString(input);
  item.setData(0, kPlaceRole, names);
}

}  // namespace

GraphTree::GraphTree(Workshop& workshop, GraphActions& actions, QWidget* parent)
    : QTreeWidget(parent), workshop_(workshop), actions_(actions) {
  setColumnCount(2);
  setHeaderLabels({tr("Place"), tr("Shader")});
  header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
  header()->setStretchLastSection(true);
  setIndentation(20);
  setUniformRowHeights(true);
  setExpandsOnDoubleClick(false);
  setAccessibleName(tr("Channels"));
  setDragDropMode(QAbstractItemView::DragDrop);
  setDefaultDropAction(Qt::MoveAction);
  setDropIndicatorShown(true);
  addActions(actions_.OfFocus());
  setContextMenuPolicy(Qt::CustomContextMenu);
  connect(this, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { actions_.Menu()->popup(viewport()->mapToGlobal(at)); });
  connect(this, &QTreeWidget::itemDoubleClicked, this, [this] { actions_.Edit()->trigger(); });
  connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
    if (item != nullptr && !filling_) workshop_.selection.SetPlace(PlaceOf(*item));
  });
  connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* item) {
    if (filling_) return;
    const QString channel = QString::fromStdString(PlaceOf(*item).channel);
    const bool on = item->checkState(0) == Qt::Checked;
    // Later: the tree is filled anew by it.
    QMetaObject::invokeMethod(
        this, [this, channel, on] { workshop_.commands.SwitchChannel(channel, on); },
        Qt::QueuedConnection);
  });
  connect(&workshop.selection, &Selection::MaterialSelected, this, &GraphTree::Fill);
  connect(&workshop.selection, &Selection::PlaceSelected, this, &GraphTree::SelectPlace);
  connect(&workshop.document, &Document::MaterialChanged, this, &GraphTree::Fill);
  connect(&workshop.document, &Document::FileChanged, this, &GraphTree::Fill);  // names of files
  Fill();
}

void GraphTree::Fill() {
  const QScopedValueRollback<bool> fill(filling_, true);
  clear();
  const Json* material = workshop_.selection.MaterialJson();
  if (material == nullptr) return;
  for (std::size_t i = 0; i < host::kChannelNames.size(); ++i) {
    const std::string channel(host::kChannelNames[i]);
    auto* item = new QTreeWidgetItem(this, {ChannelTitle(i)});
    item->setCheckState(0, IsChannelOn(*material, channel) ? Qt::Checked : Qt::Unchecked);
    FillBelow(item, *material, {.channel = channel, .inputs = {}});
  }
  expandAll();
  SelectPlace();
}

void GraphTree::FillBelow(QTreeWidgetItem* item, const Json& material, const GraphPlace& place) {
  SetPlace(*item, place);
  item->setSizeHint(1, {0, kRowHeight});
  const Json* graph = FindGraph(material, place);
  const auto* shader = FindShader(material, place, workshop_.engine.Catalogue());
  if (shader == nullptr) {
    const auto* file = graph != nullptr ? std::get_if<std::string>(&graph->value) : nullptr;
    item->setForeground(1, palette().placeholderText());
    if (file != nullptr) {
      item->setText(1, QString::fromStdString(*file));
      item->setToolTip(1, file->ends_with(".json")
                              ? tr("A file: Embed File makes its graph editable")
                              : tr("A bitmap"));
    } else if (graph != nullptr) {
      const QString name = QString::fromStdString(TextMember(*graph, "shader"));
      item->setText(1, tr("%1 (unknown)").arg(name));
      item->setToolTip(1, tr("A shader of a later version; it is kept as it is"));
    } else {
      item->setText(1, QString("\u2013"));
    }
    return;
  }
  item->setText(1, QString::fromStdString(shader->name));
  item->setToolTip(1, QString::fromStdString(shader->summary));
  for (const host::ShaderInput& input : shader->inputs) {
    auto* below = new QTreeWidgetItem(item, {QString::fromStdString(input.label)});
    below->setToolTip(0, QString::fromStdString(input.help));
    FillBelow(below, material, place.Below(input.name));
  }
}

void GraphTree::SelectPlace() {
  const QScopedValueRollback<bool> select(filling_, true);
  QTreeWidgetItem* nearest = nullptr;
  for (QTreeWidgetItemIterator it(this); *it != nullptr; ++it) {
    if (PlaceOf(**it).Holds(workshop_.selection.Place())) nearest = *it;
  }
  setCurrentItem(nearest);
  // What was selected may be gone; then the shader that had it is.
  if (nearest != nullptr) workshop_.selection.SetPlace(PlaceOf(*nearest));
}

void GraphTree::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    return actions_.Edit()->trigger();
  }
  // In whichever column the cursor is.
  QTreeWidgetItem* item = currentItem();
  if (event->key() == Qt::Key_Space && item != nullptr && item->parent() == nullptr) {
    item->setCheckState(0, item->checkState(0) == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    return;
  }
  QTreeWidget::keyPressEvent(event);
}

QMimeData* GraphTree::mimeData(const QList<QTreeWidgetItem*>& items) const {
  return items.isEmpty() ? nullptr : DragOfPlace(PlaceOf(*items.front()));
}

void GraphTree::dragEnterEvent(QDragEnterEvent* event) {
  const auto file = DraggedFile(*event->mimeData());
  if (file && IsSceneFile(*file)) return event->ignore();  // the window opens those
  QTreeWidget::dragEnterEvent(event);
}

// Only onto rows: there is nothing between places.
void GraphTree::dragMoveEvent(QDragMoveEvent* event) {
  QTreeWidget::dragMoveEvent(event);
  if (itemAt(event->position().toPoint()) == nullptr || dropIndicatorPosition() != OnItem) {
    event->ignore();
  }
}

// Not the tree widget's own, which moves rows by itself, whether or not the shader may go there.
void GraphTree::dropEvent(QDropEvent* event) { QTreeView::dropEvent(event); }

bool GraphTree::dropMimeData(QTreeWidgetItem* parent, int, const QMimeData* data,
                             Qt::DropAction action) {
  if (parent == nullptr) return false;
  const GraphPlace place = PlaceOf(*parent);
  const auto shader = DraggedShader(*data);
  const auto from = DraggedPlace(*data);
  const auto file = DraggedFile(*data);
  // Later: the tree, which is just busy with the drop, is filled anew by it.
  const auto later = [this](auto work) {
    QMetaObject::invokeMethod(this, work, Qt::QueuedConnection);
  };
  if (shader) {
    later([=, this] {
      workshop_.selection.SetPlace(place);
      workshop_.commands.TakeShader(place, *shader);
    });
  }
  if (from && action == Qt::CopyAction) {
    later([=, this] { workshop_.commands.Copy(*from, place); });
  } else if (from) {
    later([=, this] { workshop_.commands.Move(*from, place); });
  }
  if (file) later([=, this] { workshop_.commands.PlaceFile(place, *file); });
  // What is moved is moved by the command, not by the tree.
  return false;
}

}  // namespace sorvanix::studio
