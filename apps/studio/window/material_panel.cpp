#include "apps/studio/window/material_panel.h"

#include <QSignalBlocker>
#include <QVBoxLayout>

#include "apps/studio/window/panel_parts.h"

namespace sorvanix::studio {

namespace {

constexpr int kIconSide = 44;
const QString kPlace = "material ";

}  // namespace

MaterialPanel::MaterialPanel(Workshop& workshop, const QList<QAction*>& actions, QWidget* parent)
    : QWidget(parent), workshop_(workshop) {
  list_.setIconSize({kIconSide, kIconSide});
  list_.setSpacing(1);
  list_.setUniformItemSizes(true);
  list_.setAccessibleName(tr("Materials"));
  list_.setEditTriggers(QAbstractItemView::EditKeyPressed | QAbstractItemView::DoubleClicked);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(kPanelMargin, kPanelMargin, kPanelMargin, kPanelMargin);
  layout->setSpacing(kPanelSpacing);
  layout->addWidget(&list_, 1);
  layout->addLayout(ButtonRow(actions));
  list_.addActions(actions);
  list_.setContextMenuPolicy(Qt::ActionsContextMenu);

  connect(&workshop.document, &Document::SceneChanged, this, &MaterialPanel::Fill);
  connect(&workshop.document, &Document::MaterialChanged, this, &MaterialPanel::ShowMaterial);
  connect(&workshop.selection, &Selection::MaterialSelected, this, &MaterialPanel::Select);
  connect(&workshop.thumbnails, &Thumbnails::Ready, this,
          [this](const QString& place, const QImage& image) {
            if (!place.startsWith(kPlace)) return;
            if (auto* item = list_.item(place.mid(kPlace.size()).toInt())) {
              const QSignalBlocker block(list_);
              item->setIcon(ThumbnailOf(image));
            }
          });
  connect(&list_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) workshop_.selection.SetMaterial(row);
  });
  connect(&list_, &QListWidget::itemChanged, this, [this](QListWidgetItem* item) {
    const int row = list_.row(item);
    workshop_.commands.RenameMaterial(row, item->text());
    ShowMaterial(row);  // as it is called now, whether that worked or not
  });
  Fill();
}

void MaterialPanel::EditName() {
  if (QListWidgetItem* item = list_.currentItem()) list_.editItem(item);
}

void MaterialPanel::Fill() {
  {
    const QSignalBlocker block(list_);
    const int count = static_cast<int>(workshop_.document.Materials().size());
    while (list_.count() > count) delete list_.takeItem(list_.count() - 1);
    while (list_.count() < count) {
      auto* item = new QListWidgetItem(EmptyThumbnail(kThumbnailPixels), QString(), &list_);
      item->setFlags(item->flags() | Qt::ItemIsEditable);
    }
  }
  for (int i = 0; i < list_.count(); ++i) ShowMaterial(i);
  Select(workshop_.selection.Material());
}

void MaterialPanel::ShowMaterial(int index) {
  const auto place = static_cast<std::size_t>(index);
  if (place >= workshop_.document.Materials().size()) return;
  const Json material = workshop_.document.Materials()[place];
  {
    const QSignalBlocker block(list_);
    list_.item(index)->setText(QString::fromStdString(TextMember(material, "name")));
  }
  workshop_.AskThumbnail(kPlace + QString::number(index), material);
}

void MaterialPanel::Select(int index) {
  const QSignalBlocker block(list_);
  list_.setCurrentRow(index);
}

}  // namespace sorvanix::studio
