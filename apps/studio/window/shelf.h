// Things to take into a graph, as small pictures with names: the shaders, and the presets.
#pragma once

#include <QListWidget>
#include <QString>
#include <vector>

#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

/// One thing of a shelf.
struct ShelfItem {
  QString title;
  QString help;                ///< the tool tip
  QString shader;              ///< a shader's name; or empty
  std::filesystem::path file;  ///< else a material file
  Json graph;                  ///< what the thumbnail shows
};

class Shelf : public QListWidget {
  Q_OBJECT

 public:
  /// `place` is what thumbnails of this shelf are asked for under, and `name` is for people.
  Shelf(Workshop& workshop, const QString& place, const QString& name, std::vector<ShelfItem> items,
        QWidget* parent = nullptr);

 Q_SIGNALS:
  /// Double click or Enter.
  void Chosen(const ShelfItem& item);

 protected:
  QMimeData* mimeData(const QList<QListWidgetItem*>& items) const override;
  QStringList mimeTypes() const override;
  void showEvent(QShowEvent* event) override;

 private:
  Workshop& workshop_;
  QString place_;
  std::vector<ShelfItem> items_;
  bool isAsked_ = false;  // for the thumbnails
};

/// The shaders of the catalogue: generators, then those that look at the surface, then filters.
std::vector<ShelfItem> ShaderItems(const host::ShaderCatalogue& catalogue);

/// The material files of the folders, by name. Those that cannot be used as they are, such as
/// examples whose bitmaps are baked first, are left out.
std::vector<ShelfItem> PresetItems(const std::vector<std::filesystem::path>& folders,
                                   const host::ShaderCatalogue& catalogue);

/// Where the presets are, seen from the program: beside it as installed, or in the source tree.
std::vector<std::filesystem::path> PresetFolders();

}  // namespace sorvanix::studio
