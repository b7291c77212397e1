#include "host/render/document_render.h"

#include <sorvanix/ids.h>

#include <algorithm>
#include <atomic>

#include "host/channels/bitmap.h"
#include "host/images/quantise.h"
#include "host/render/renderer.h"
#include "host/scene/material_links.h"
#include "host/services/containers.h"

namespace sorvanix::host {

namespace {

constexpr std::int32_t kDone = 0;
constexpr std::int32_t kFailed = -1;

// The contract's functions carry no context, so the table of threads is kept here.
constinit std::atomic<const ThreadTable*> threads = nullptr;

bool MustStop(const HostThread* thread) {
  const ThreadTable* table = threads;
  if (thread == nullptr || table == nullptr || table->mustStop == nullptr) return false;
  return table->mustStop(thread) != 0;
}

/// A side as the settings ask for, within what the bitmap has; all of it when nothing is asked.
int Side(const Container& settings, std::int32_t key, std::int32_t available) {
  const Word asked = settings.GetInt(key, available);
  return static_cast<int>(asked > 0 ? std::min<Word>(asked, available) : available);
}

RenderSettings SettingsFor(const Container& settings, const Bitmap& bitmap) {
  constexpr Word kFullQuality = 2;
  const bool isFull = settings.GetInt(KeyRenderQuality, kFullQuality) >= kFullQuality;
  return {.width = Side(settings, KeyRenderWidth, bitmap.Width()),
          .height = Side(settings, KeyRenderHeight, bitmap.Height()),
          .samples = isFull ? 3 : 1};
}

void Show(const Image& image, Bitmap& bitmap) {
  const auto byte = [](float value) { return static_cast<std::uint8_t>(Quantise(value, 255)); };
  for (int y = 0; y < image.height; ++y) {
    for (int x = 0; x < image.width; ++x) {
      const float* pixel = image.rgb.data() + image.IndexOf(x, y);
      bitmap.Set(x, y, {byte(pixel[0]), byte(pixel[1]), byte(pixel[2])});
    }
  }
}

std::int32_t RenderInto(Scene& scene, Bitmap& bitmap, const Container& settings,
                        const HostThread* thread) {
  const RenderSettings picture = SettingsFor(settings, bitmap);
  if (picture.width <= 0 || picture.height <= 0 || MustStop(thread)) return kFailed;
  scene.Update();
  LinkMaterials(scene);
  std::atomic<bool> stopped = false;
  const TaskOptions options = {.cancelled = &stopped, .progress = [&](int, int) {
                                 if (MustStop(thread)) stopped = true;
                               }};
  const auto rendered = RenderPicture(scene, picture, options);
  if (!rendered || !rendered->image) return kFailed;
  Show(*rendered->image, bitmap);
  return kDone;
}

std::int32_t Render(HostDocument* document, HostBitmap* bitmap, const HostContainer* settings,
                    HostThread* thread) noexcept {
  if (document == nullptr || bitmap == nullptr) return kFailed;
  return Guarded(kFailed, [&] {
    const Container none;
    return RenderInto(*Scene::From(document), *Bitmap::From(bitmap),
                      settings == nullptr ? none : *Container::From(settings), thread);
  });
}

}  // namespace

void InstallDocumentRender(HostTables& tables) noexcept {
  threads = &tables.thread;
  tables.document.render = Render;
}

}  // namespace sorvanix::host
