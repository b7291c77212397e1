// What the parts of the window share, and what they all show.
#pragma once

#include <QObject>

#include "apps/studio/document/commands.h"
#include "apps/studio/program/engine.h"
#include "apps/studio/render/preview_scene.h"
#include "apps/studio/render/thumbnails.h"

namespace sorvanix::studio {

/// What the views show the selected material on, and when.
class ViewState : public QObject {
  Q_OBJECT

 public:
  const PreviewObject& Object() const { return object_; }
  float Time() const { return time_; }  ///< in seconds
  bool IsPlaying() const { return playing_; }

  void SetObject(PreviewObject object);
  void SetTime(float time);
  void SetPlaying(bool playing);

 Q_SIGNALS:
  void Changed();

 private:
  PreviewObject object_;
  float time_ = 0;
  bool playing_ = false;
};

/// All that a studio consists of but for its windows. The engine must outlive it.
class Workshop {
 public:
  explicit Workshop(Engine& usedEngine);

  /// Asks for the thumbnail of a material on a sphere, for Thumbnails::Ready under this place.
  void AskThumbnail(const QString& place, const Json& material, Turn turn = Turn::Next);
  /// The channel that the flat view shows: that of the selected place.
  std::size_t SelectedChannel() const;

  Engine& engine;
  Document document;
  Selection selection;
  Commands commands;
  ViewState view;
  PreviewScenes previews;
  Thumbnails thumbnails;
};

/// A channel by its number, for people.
QString ChannelTitle(std::size_t channel);

/// Thumbnails are painted in so many pixels, and shown in a half of them or less.
inline constexpr int kThumbnailPixels = 128;

}  // namespace sorvanix::studio
