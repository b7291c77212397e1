// A projection for tests: it answers by a rule of the test's, and records what it is asked.
#pragma once

#include <sorvanix/host_api.h>

#include <functional>
#include <vector>

#include "tests/support/fake_host.h"

namespace sorvanix::test {

/// One call of setUpTexture.
struct TextureSetUp {
  Vector points[4];
  std::int32_t uvwIndex;
};

/// One call of projectTexture, with the tag as it was.
struct TextureProjection {
  const TextureTag* address;
  TextureTag tag;
  Vector point;
  const UvwRecord* uvwRecord;
  const RenderContext* render;
};

/// Installs itself in a host; one at a time.
class RecordingProjection {
 public:
  explicit RecordingProjection(FakeHost& host);
  ~RecordingProjection();
  RecordingProjection(const RecordingProjection&) = delete;
  RecordingProjection& operator=(const RecordingProjection&) = delete;

  /// The coordinate of a point; the point itself while it is not set.
  std::function<Vector(const TextureTag& tag, const Vector& point)> project;
  bool hasCoordinates = true;  ///< false: no point has any

  std::vector<TextureSetUp> setUps;
  std::vector<TextureProjection> projections;
  bool record = true;  ///< to be switched off where several threads ask
};

}  // namespace sorvanix::test
