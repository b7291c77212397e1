#include "apps/studio/window/view_panel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "apps/studio/window/panel_parts.h"
#include "apps/studio/window/time_bar.h"

namespace sorvanix::studio {

namespace {

using Kind = PreviewObject::Kind;

constexpr Kind kObjects[] = {Kind::Sphere,   Kind::Cube,  Kind::Plane,
                             Kind::Cylinder, Kind::Torus, Kind::Scene};

/// A view under its row of controls.
QWidget* TabOf(QHBoxLayout* row, QWidget* view) {
  row->setSpacing(kPanelMargin);
  row->setContentsMargins(8, kPanelSpacing, 8, kPanelSpacing);
  auto* tab = new QWidget;
  auto* layout = new QVBoxLayout(tab);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(row);
  layout->addWidget(view, 1);
  return tab;
}

}  // namespace

ViewPanel::ViewPanel(Workshop& workshop, QAction* loadMesh, QAction* play, QWidget* parent)
    : QWidget(parent),
      workshop_(workshop),
      render_([this](const QSize& pixels) { return AskRender(pixels); }),
      flat_([this](const QSize& pixels) { return AskFlat(pixels); }) {
  render_.setAccessibleName(tr("The material on an object"));
  flat_.setAccessibleName(tr("The material laid flat"));
  flat_.ShowRepeated(1);
  tabs_.setDocumentMode(true);
  tabs_.setAccessibleName(tr("Views"));
  tabs_.addTab(RenderTab(loadMesh), tr("&Render"));
  tabs_.addTab(FlatTab(), tr("F&lat"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addWidget(&tabs_, 1);
  layout->addWidget(new TimeBar(workshop.view, play));

  connect(&tabs_, &QTabWidget::currentChanged, this, &ViewPanel::Refresh);
  connect(&workshop.view, &ViewState::Changed, this, &ViewPanel::Refresh);
  connect(&workshop.document, &Document::SceneChanged, this, &ViewPanel::Refresh);
  connect(&workshop.document, &Document::FileChanged, this, &ViewPanel::Refresh);
  connect(&workshop.document, &Document::MaterialChanged, this, &ViewPanel::Refresh);
  connect(&workshop.selection, &Selection::MaterialSelected, this, &ViewPanel::Refresh);
  connect(&workshop.selection, &Selection::PlaceSelected, this, &ViewPanel::Refresh);
}

QWidget* ViewPanel::RenderTab(QAction* loadMesh) {
  for (const Kind kind : kObjects) objects_.addItem(tr(NameOf(kind)), static_cast<int>(kind));
  objects_.setToolTip(tr("What the material is shown on"));
  connect(&objects_, &QComboBox::currentIndexChanged, this, &ViewPanel::ChooseObject);
  connect(&workshop_.view, &ViewState::Changed, this, [this] {
    const QSignalBlocker block(objects_);
    const PreviewObject& object = workshop_.view.Object();
    const auto kind = static_cast<int>(object.kind);
    if (object.kind == Kind::Mesh) mesh_ = object.mesh;
    if (objects_.findData(kind) < 0) objects_.addItem(tr(NameOf(object.kind)), kind);
    objects_.setCurrentIndex(objects_.findData(kind));
  });
  auto* label = new QLabel(tr("&Object"));
  label->setBuddy(&objects_);
  auto* row = ButtonRow({loadMesh});
  row->insertWidget(0, label);
  row->insertWidget(1, &objects_);
  return TabOf(row, &render_);
}

QWidget* ViewPanel::FlatTab() {
  repeats_.addItem(tr("1 \u00d7 1"), 1);
  repeats_.addItem(tr("3 \u00d7 3"), 3);
  repeats_.setToolTip(tr("How often the texture repeats"));
  connect(&repeats_, &QComboBox::currentIndexChanged, this,
          [this](int index) { flat_.ShowRepeated(repeats_.itemData(index).toInt()); });
  auto* label = new QLabel(tr("Re&peats"));
  label->setBuddy(&repeats_);
  auto* row = new QHBoxLayout;
  row->addWidget(label);
  row->addWidget(&repeats_);
  row->addStretch();
  return TabOf(row, &flat_);
}

void ViewPanel::ChooseObject(int index) {
  const auto kind = static_cast<Kind>(objects_.itemData(index).toInt());
  workshop_.view.SetObject({.kind = kind, .mesh = kind == Kind::Mesh ? mesh_ : Json()});
}

void ViewPanel::SetSamples(int samples) {
  render_.SetSamples(samples);
  flat_.SetSamples(samples);
}

bool ViewPanel::IsBusy() const {
  return tabs_.currentIndex() == 0 ? render_.IsBusy() : flat_.IsBusy();
}

// The hidden view is asked when it is shown.
void ViewPanel::Refresh() { (tabs_.currentIndex() == 0 ? render_ : flat_).Refresh(); }

std::optional<PictureRequest> ViewPanel::AskRender(const QSize& pixels) const {
  const Json* material = workshop_.selection.MaterialJson();
  if (material == nullptr) return std::nullopt;
  const ViewState& view = workshop_.view;
  return PictureRequest{.scene = {.catalogue = &workshop_.engine.Catalogue(),
                                  .text = workshop_.previews.TextFor(*material, view.Object(),
                                                                     workshop_.document.Scene()),
                                  .file = workshop_.document.File(),
                                  .width = pixels.width(),
                                  .height = pixels.height(),
                                  .time = view.Time()},
                        .flatChannel = std::nullopt,
                        .isDraft = view.IsPlaying()};
}

std::optional<PictureRequest> ViewPanel::AskFlat(const QSize& pixels) const {
  auto request = AskRender(pixels);
  const Json* material = workshop_.selection.MaterialJson();
  if (!request || material == nullptr) return std::nullopt;
  request->scene.text = workshop_.previews.TextFor(*material, {}, workshop_.document.Scene());
  request->flatChannel = workshop_.SelectedChannel();
  return request;
}

}  // namespace sorvanix::studio
