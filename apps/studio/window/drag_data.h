// What is dragged inside the studio, and into it.
#pragma once

#include <QMimeData>
#include <QString>
#include <QStringList>
#include <filesystem>
#include <optional>
#include <vector>

#include "apps/studio/document/graph_edit.h"

namespace sorvanix::studio {

/// A shader of the palette, by its name.
QMimeData* DragOfShader(const QString& name);
std::optional<QString> DraggedShader(const QMimeData& data);

/// A place of the graph tree.
QMimeData* DragOfPlace(const GraphPlace& place);
std::optional<GraphPlace> DraggedPlace(const QMimeData& data);

/// The types of all that a place of the graph tree takes.
QStringList DroppableTypes();

/// A file: of the presets, or from outside.
QMimeData* DragOfFile(const std::filesystem::path& file);
std::vector<std::filesystem::path> DraggedFiles(const QMimeData& data);
/// The first one.
std::optional<std::filesystem::path> DraggedFile(const QMimeData& data);

/// Whether a file says that it is a scene; materials say nothing.
bool IsSceneFile(const std::filesystem::path& file);

}  // namespace sorvanix::studio
