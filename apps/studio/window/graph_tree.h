// The channels of the selected material as a tree: each row is a place, and names what stands
// there.
#pragma once

#include <QTreeWidget>

#include "apps/studio/window/drag_data.h"
#include "apps/studio/window/graph_actions.h"
#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class GraphTree : public QTreeWidget {
  Q_OBJECT

 public:
  GraphTree(Workshop& workshop, GraphActions& actions, QWidget* parent = nullptr);

 protected:
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
  QStringList mimeTypes() const override { return DroppableTypes(); }
  Qt::DropActions supportedDropActions() const override { return Qt::MoveAction | Qt::CopyAction; }
  bool dropMimeData(QTreeWidgetItem* parent, int index, const QMimeData* data,
                    Qt::DropAction action) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Fill();
  void FillBelow(QTreeWidgetItem* item, const Json& material, const GraphPlace& place);
  void SelectPlace();

  Workshop& workshop_;
  GraphActions& actions_;
  bool filling_ = false;
};

}  // namespace sorvanix::studio
