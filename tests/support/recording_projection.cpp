#include "tests/support/recording_projection.h"

#include <cstdlib>

namespace sorvanix::test {

namespace {

RecordingProjection* current = nullptr;

RecordingProjection& Current() {
  if (current == nullptr) std::abort();
  return *current;
}

void SetUp(RenderContext*, const Vector points[4], std::int32_t uvwIndex) noexcept {
  if (!Current().record) return;
  Current().setUps.push_back({{points[0], points[1], points[2], points[3]}, uvwIndex});
}

std::int32_t Project(const TextureTag* tag, const RenderContext* render, const Vector* point,
                     const UvwRecord* uvwRecord, Vector* uvw) noexcept {
  const RecordingProjection& projection = Current();
  if (projection.record) Current().projections.push_back({tag, *tag, *point, uvwRecord, render});
  if (!projection.hasCoordinates) return 0;
  *uvw = projection.project ? projection.project(*tag, *point) : *point;
  return 1;
}

}  // namespace

RecordingProjection::RecordingProjection(FakeHost& host) {
  current = this;
  host.render.setUpTexture = SetUp;
  host.render.projectTexture = Project;
}

RecordingProjection::~RecordingProjection() { current = nullptr; }

}  // namespace sorvanix::test
