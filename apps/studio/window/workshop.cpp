#include "apps/studio/window/workshop.h"

#include <algorithm>
#include <utility>

#include "host/scene/scene_format.h"

namespace sorvanix::studio {

QString ChannelTitle(std::size_t channel) {
  constexpr const char* kTitles[] = {"Colour",     "Luminance",   "Transparency",
                                     "Reflection", "Environment", "Diffusion",
                                     "Bump",       "Alpha",       "Specular colour"};
  static_assert(std::size(kTitles) == host::kChannelNames.size());
  return QObject::tr(kTitles[channel]);
}

void ViewState::SetObject(PreviewObject object) {
  object_ = std::move(object);
  Q_EMIT Changed();
}

void ViewState::SetTime(float time) {
  if (time == time_) return;
  time_ = time;
  Q_EMIT Changed();
}

void ViewState::SetPlaying(bool playing) {
  if (playing == playing_) return;
  playing_ = playing;
  Q_EMIT Changed();
}

Workshop::Workshop(Engine& usedEngine)
    : engine(usedEngine),
      document(engine.Catalogue()),
      selection(document),
      commands(document, selection),
      previews(engine.Resources()) {}

void Workshop::AskThumbnail(const QString& place, const Json& material, Turn turn) {
  thumbnails.Ask(place,
                 {.catalogue = &engine.Catalogue(),
                  .text = previews.TextFor(material, {}, document.Scene()),
                  .file = document.File(),
                  .width = kThumbnailPixels,
                  .height = kThumbnailPixels},
                 turn);
}

std::size_t Workshop::SelectedChannel() const {
  const auto& names = host::kChannelNames;
  const auto found = std::find(names.begin(), names.end(), selection.Place().channel);
  return found != names.end() ? static_cast<std::size_t>(found - names.begin()) : 0;
}

}  // namespace sorvanix::studio
