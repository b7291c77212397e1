#include "apps/studio/window/drag_data.h"

#include <QUrl>

#include "host/channels/material_file.h"
#include "host/scene/scene_format.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

constexpr const char* kShader = "application/x-sorvanix-shader";
constexpr const char* kPlace = "application/x-sorvanix-place";
constexpr QChar kBetween('\n');  // in no name of a channel or an input

}  // namespace

QMimeData* DragOfShader(const QString& name) {
  auto* data = new QMimeData;
  data->setData(kShader, name.toUtf8());
  return data;
}

std::optional<QString> DraggedShader(const QMimeData& data) {
  if (!data.hasFormat(kShader)) return std::nullopt;
  return QString::fromUtf8(data.data(kShader));
}

QMimeData* DragOfPlace(const GraphPlace& place) {
  QString text = QString::fromStdString(place.channel);
  for (const std::string& input : place.inputs) text += kBetween + QString::fromStdString(input);
  auto* data = new QMimeData;
  data->setData(kPlace, text.toUtf8());
  return data;
}

std::optional<GraphPlace> DraggedPlace(const QMimeData& data) {
  if (!data.hasFormat(kPlace)) return std::nullopt;
  GraphPlace place;
  QStringList names = QString::fromUtf8(data.data(kPlace)).split(kBetween);
  place.channel = names.takeFirst().toStdString();
  for (const QString& name : names) place.inputs.push_back(name.toStdString());
  return place;
}

QStringList DroppableTypes() { return {kPlace, kShader, "text/uri-list"}; }

QMimeData* DragOfFile(const std::filesystem::path& file) {
  auto* data = new QMimeData;
  data->setUrls({QUrl::fromLocalFile(QString::fromStdString(host::Utf8FromPath(file)))});
  return data;
}

std::optional<std::filesystem::path> DraggedFile(const QMimeData& data) {
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) return host::PathFromUtf8(url.toLocalFile().toStdString());
  }
  return std::nullopt;
}

bool IsSceneFile(const std::filesystem::path& file) {
  if (file.extension() == ".c4d") return true;  // as the module names its preview scenes
  if (file.extension() != ".json") return false;
  const auto text = host::ReadMaterialText(file);
  const auto json = text ? host::ParseJson(*text) : tl::unexpected(host::JsonError{});
  return json && TextMember(*json, "format") == host::kSceneFormat;
}

}  // namespace sorvanix::studio
