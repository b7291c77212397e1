#include "apps/studio/window/shelf.h"

#include <QCoreApplication>
#include <QDir>
#include <algorithm>
#include <utility>

#include "apps/studio/window/drag_data.h"
#include "apps/studio/window/panel_parts.h"
#include "host/channels/material_file.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace fs = std::filesystem;

namespace {

constexpr int kIconSide = 64;
constexpr QSize kCell(92, 96);

// Filters show what they do to this.
Json FilterSource() {
  return Json(
      Json::Object{{"shader", Json(std::string("2D Noise"))}, {"scale", Json(std::int64_t{2})}});
}

Json GraphOf(const host::ShaderDescription& shader) {
  Json graph = NewShader(shader);
  if (!shader.inputs.empty()) SetMember(graph, shader.inputs.front().name, FilterSource());
  return graph;
}

bool CanBeRead(const fs::path& file, const host::ShaderCatalogue& catalogue) {
  const auto text = host::ReadMaterialText(file);
  return text && host::ReadMaterial(*text, catalogue, {file, {}}).material;
}

QString TitleOfFile(const fs::path& file) {
  QString title = QString::fromStdString(host::Utf8FromPath(file.stem()));
  title.replace('_', ' ');
  if (!title.isEmpty()) title[0] = title[0].toUpper();
  return title;
}

}  // namespace

Shelf::Shelf(Workshop& workshop, const QString& place, const QString& name,
             std::vector<ShelfItem> items, QWidget* parent)
    : QListWidget(parent), workshop_(workshop), place_(place), items_(std::move(items)) {
  setAccessibleName(name);
  setViewMode(QListView::IconMode);
  setMovement(QListView::Snap);
  setResizeMode(QListView::Adjust);
  setIconSize({kIconSide, kIconSide});
  setGridSize(kCell);
  setWordWrap(true);
  setUniformItemSizes(true);
  setDragDropMode(QAbstractItemView::DragOnly);
  connect(this, &QListWidget::itemActivated, this, [this](QListWidgetItem* item) {
    Q_EMIT Chosen(items_[static_cast<std::size_t>(row(item))]);
  });
  const QString prefix = place + ' ';
  connect(&workshop.thumbnails, &Thumbnails::Ready, this,
          [this, prefix](const QString& at, const QImage& image) {
            if (!at.startsWith(prefix)) return;
            if (auto* ready = item(at.mid(prefix.size()).toInt()))
              ready->setIcon(ThumbnailOf(image));
          });
  for (const ShelfItem& each : items_) {
    auto* shown = new QListWidgetItem(EmptyThumbnail(kThumbnailPixels), each.title, this);
    shown->setToolTip(each.help);
  }
}

// A shelf that nobody looks at paints nothing.
void Shelf::showEvent(QShowEvent* event) {
  QListWidget::showEvent(event);
  if (std::exchange(isAsked_, true)) return;
  for (std::size_t i = 0; i < items_.size(); ++i) {
    const Json material =
        PlaceGraph(NewMaterial("Shelf"), {.channel = "colour", .inputs = {}}, items_[i].graph)
            .value();
    workshop_.AskThumbnail(place_ + ' ' + QString::number(i), material, Turn::Last);
  }
}

QMimeData* Shelf::mimeData(const QList<QListWidgetItem*>& dragged) const {
  if (dragged.isEmpty()) return nullptr;
  const ShelfItem& item = items_[static_cast<std::size_t>(row(dragged.front()))];
  return item.shader.isEmpty() ? DragOfFile(item.file) : DragOfShader(item.shader);
}

QStringList Shelf::mimeTypes() const { return {"text/uri-list"}; }

std::vector<ShelfItem> ShaderItems(const host::ShaderCatalogue& catalogue) {
  std::vector<ShelfItem> items;
  for (const char* category : {"generator", "surface", "filter"}) {
    for (const host::ShaderDescription& shader : catalogue.Shaders()) {
      if (shader.category != category) continue;
      const QString name = QString::fromStdString(shader.name);
      items.push_back({.title = name,
                       .help = QString::fromStdString(shader.summary),
                       .shader = name,
                       .file = {},
                       .graph = GraphOf(shader)});
    }
  }
  return items;
}

std::vector<ShelfItem> PresetItems(const std::vector<fs::path>& folders,
                                   const host::ShaderCatalogue& catalogue) {
  std::vector<ShelfItem> items;
  for (const fs::path& folder : folders) {
    std::error_code error;
    for (const auto& entry : fs::directory_iterator(folder, error)) {
      const fs::path& file = entry.path();
      if (file.extension() != ".json" || !CanBeRead(file, catalogue)) continue;
      const QString title = TitleOfFile(file);
      items.push_back({.title = title,
                       .help = QObject::tr("%1: a preset; drag it to a channel").arg(title),
                       .shader = {},
                       .file = file,
                       .graph = Json(host::Utf8FromPath(file))});
    }
  }
  std::sort(items.begin(), items.end(), [](const ShelfItem& first, const ShelfItem& second) {
    return first.title.localeAwareCompare(second.title) < 0;
  });
  return items;
}

std::vector<fs::path> PresetFolders() {
  const QDir program(QCoreApplication::applicationDirPath());
  for (const char* place : {"../share/sorvanix/examples", "../../../examples"}) {
    const fs::path examples =
        host::PathFromUtf8(QDir::cleanPath(program.filePath(place)).toStdString());
    std::error_code error;
    if (fs::exists(examples, error)) return {examples / "graphs", examples / "materials"};
  }
  return {};
}

}  // namespace sorvanix::studio
