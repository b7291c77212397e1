#include "apps/studio/render/thumbnails.h"

#include <algorithm>
#include <utility>

#include "host/services/content_hash.h"

namespace sorvanix::studio {

namespace {

constexpr int kMostKept = 400;
constexpr int kSamples = 2;

QString HashOf(const SceneRequest& request) {
  host::ContentHash hash;
  hash.Add(request.text);
  hash.Add(request.file.native());
  hash.Add(&request.width, sizeof request.width);
  hash.Add(&request.height, sizeof request.height);
  return QString::fromStdString(hash.Text());
}

}  // namespace

Thumbnails::Thumbnails() : painted_(kMostKept) {
  connect(&worker_, &PictureWorker::Painted, this, &Thumbnails::Take);
}

void Thumbnails::Ask(const QString& place, const SceneRequest& request, Turn turn) {
  const QString hash = HashOf(request);
  const bool isIdle = waiting_.empty();
  const bool isFirst = !waiting_.empty() && waiting_.front().place == place;
  std::erase_if(waiting_, [&](const Asked& asked) { return asked.place == place; });
  if (const QImage* image = painted_.object(hash)) {
    Q_EMIT Ready(place, *image);
  } else {
    const auto patient = std::find_if(
        waiting_.begin() + (waiting_.empty() || isFirst ? 0 : 1), waiting_.end(),
        [turn](const Asked& asked) { return turn == Turn::Next && asked.turn == Turn::Last; });
    waiting_.insert(patient, {place, hash, request, turn});
  }
  if (isFirst || isIdle) Next();
}

void Thumbnails::Next() {
  if (waiting_.empty()) return worker_.Cancel();
  PictureJob job = JobFor({.scene = waiting_.front().request}, kSamples);
  job.passes = {{1, kSamples}};
  worker_.Submit(std::move(job));
}

// An error leaves the place as it is: the large view tells about it.
void Thumbnails::Take(const PaintedPass& pass) {
  const Asked asked = waiting_.front();
  waiting_.pop_front();
  if (!pass.image.isNull()) {
    painted_.insert(asked.hash, new QImage(pass.image));
    Q_EMIT Ready(asked.place, pass.image);
  }
  Next();
}

}  // namespace sorvanix::studio
