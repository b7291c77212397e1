// A wall of 2 x 4 towards the viewer, as the renderer sees it: for tests of records and services.
#pragma once

#include <memory>
#include <vector>

#include "host/render/shading_record.h"
#include "host/scene/transform.h"

namespace sorvanix::host {

/// One quadrangle of x = -1..1, y = -2..2, z = 0 with two sets of coordinates: u, v = 0..1 to the
/// right and downwards, and the same times ten.
inline std::shared_ptr<PolygonMesh> WallMesh() {
  auto mesh = std::make_shared<PolygonMesh>();
  mesh->points = {{-1, 2, 0}, {1, 2, 0}, {1, -2, 0}, {-1, -2, 0}};
  mesh->polygons = {{0, 1, 2, 3}};
  mesh->uvwSets = {{"UVW", {{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}}}},
                   {"Tens", {{{{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}}}}}};
  return mesh;
}

/// A ray from (0.5, 1, -10) straight on; the hit is at (0.5, 1, 0), the sample 0.02 x 0.04 large.
struct WallSample {
  MeshSurface surface{WallMesh(), kIdentityMatrix};
  std::vector<LightRecord> lights;
  ScreenView view{{{0, 0, -10}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 90, 200, 100};
  ObjectRecord object = {2, {}, 0, kIdentityMatrix, nullptr};
  RenderFrame frame;
  ShadingRecord record;

  WallSample() {
    frame.view = &view;
    frame.pictureSize[0] = 200;
    frame.pictureSize[1] = 100;
    record.frame = &frame;
    Begin();
  }
  // The record points into the frame.
  WallSample(const WallSample&) = delete;
  WallSample& operator=(const WallSample&) = delete;

  SurfaceSample Sample() const {
    return {.surface = &surface,
            .at = surface.At(0, 0.5, 0.25),
            .eye = {0.5, 1, -10},
            .direction = {0, 0, 1},
            .footprint = {{{0.02, 0, 0}, {0, -0.04, 0}}},
            .identity = 5,
            .object = &object};
  }
  void Begin() {
    frame.lights = lights;
    BeginSample(record, Sample());
  }
  RenderContext* Context() { return &record.context; }
};

/// A tag without a placement of its own: coordinates are the surface's.
inline TextureTag UvwTag() {
  TextureTag tag = {};
  tag.matrix1 = tag.matrix2 = kIdentityMatrix;
  tag.projection = 6;
  tag.lengthU = tag.lengthV = 1;
  return tag;
}

}  // namespace sorvanix::host
