// What can be done at the selected place of a graph, as actions for menus, keys and buttons.
#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>

#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class GraphActions : public QObject {
  Q_OBJECT

 public:
  explicit GraphActions(Workshop& workshop, QWidget* parent);

  /// All of them, for the menu bar and for context menus.
  QMenu* Menu() { return &menu_; }
  QMenu* PlaceMenu() { return &place_; }
  QMenu* WrapMenu() { return &wrap_; }
  QAction* Edit() { return &edit_; }
  QAction* Remove() { return &remove_; }
  /// Those whose keys mean other things elsewhere: the widget that the graphs are shown in adds
  /// them to itself.
  QList<QAction*> OfFocus() { return {&cut_, &copy_, &paste_, &remove_}; }

 Q_SIGNALS:
  /// The dialog of what stands at the selected place is wanted.
  void EditWanted();

 private:
  void FillMenus();
  void ChooseFile();
  void Copy();
  void Paste();
  void Update();

  Workshop& workshop_;
  QMenu menu_, place_, wrap_;
  QAction edit_, file_, embed_, unwrap_, cut_, copy_, paste_, remove_;
};

}  // namespace sorvanix::studio
