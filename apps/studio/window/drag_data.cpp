#include "apps/studio/window/drag_data.h"

#include <QUrl>

#include "host/channels/material_file.h"
#include "host/channels/nearest_name.h"
#include "host/scene/document_file.h"
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

std::vector<std::filesystem::path> DraggedFiles(const QMimeData& data) {
  std::vector<std::filesystem::path> files;
  for (const QUrl& url : data.urls()) {
    if (url.isLocalFile()) files.push_back(host::PathFromUtf8(url.toLocalFile().toStdString()));
  }
  return files;
}

std::optional<std::filesystem::path> DraggedFile(const QMimeData& data) {
  const auto files = DraggedFiles(data);
  return files.empty() ? std::nullopt : std::optional(files.front());
}

bool IsSceneFile(const std::filesystem::path& file) {
  const std::string extension = host::Utf8FromPath(file.extension());
  const auto is = [&](std::string_view each) { return host::SameIgnoringCase(extension, each); };
  if (is(".c4d") || is(host::kBinaryExtension)) return true;
  if (!is(".json")) return false;  // do not read all of a picture or a mesh
  const auto text = host::ReadDocument(file);
  const auto json = text ? host::ParseJson(*text) : tl::unexpected(host::JsonError{});
  return json && json->Find("format") != nullptr;
}

}  // namespace sorvanix::studio
