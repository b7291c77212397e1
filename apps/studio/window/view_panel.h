// The views of the selected material: on an object, and flat.
#pragma once

#include <QComboBox>
#include <QTabWidget>

#include "apps/studio/window/picture_view.h"
#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class ViewPanel : public QWidget {
  Q_OBJECT

 public:
  ViewPanel(Workshop& workshop, QAction* loadMesh, QAction* play, QWidget* parent = nullptr);

  PictureView& RenderView() { return render_; }
  PictureView& FlatView() { return flat_; }
  /// Shows the flat view, or the one on an object.
  void ShowFlat(bool flat) { tabs_.setCurrentIndex(flat ? 1 : 0); }
  /// The flat view repeats the texture so many times along each side: 1 or 3.
  void ShowRepeats(int repeats) { repeats_.setCurrentIndex(repeats_.findData(repeats)); }
  /// Of the final pictures, along each side of a pixel.
  void SetSamples(int samples);
  /// Whether a finer picture will come in the view that is shown.
  bool IsBusy() const;

 private:
  std::optional<PictureRequest> AskRender(const QSize& pixels) const;
  std::optional<PictureRequest> AskFlat(const QSize& pixels) const;
  QWidget* RenderTab(QAction* loadMesh);
  QWidget* FlatTab();
  void Refresh();
  void ChooseObject(int index);

  Workshop& workshop_;
  // Before what stands in it: a widget deletes the children that are left when it goes.
  QTabWidget tabs_;
  PictureView render_, flat_;
  QComboBox repeats_;
  QComboBox objects_;  // a mesh is among them once one was loaded
  Json mesh_;          // that one
};

}  // namespace sorvanix::studio
