// The camera of a picture: which pixel a point falls on, and which ray goes through a pixel.
//
// Camera space has x to the right, y up and z along the view. Pixel (0, 0) begins at the upper left
// corner of the picture.
#pragma once

#include <cstdint>
#include <numbers>

#include "host/render/matrix.h"
#include "host/render/vec3.h"

namespace sorvanix::host {

class ScreenView {
 public:
  /// `fieldOfView` is the horizontal one, in degrees. `cameraToWorld` has unit axes.
  ScreenView(const Matrix& cameraToWorld, double fieldOfView, std::int32_t width,
             std::int32_t height)
      : toWorld_(cameraToWorld),
        fromWorld_(Inverse(cameraToWorld)),
        width_(width),
        height_(height),
        focalLength_(0.5 * width / std::tan(fieldOfView * std::numbers::pi / 360)) {}

  const Matrix& CameraToWorld() const noexcept { return toWorld_; }
  std::int32_t Width() const noexcept { return width_; }
  std::int32_t Height() const noexcept { return height_; }
  /// The distance, in pixels, at which a pixel of the picture plane has the size 1.
  double FocalLength() const noexcept { return focalLength_; }

  Vec3 ToCamera(const Vec3& worldPoint) const noexcept { return MapPoint(fromWorld_, worldPoint); }

  /// A point in camera space as pixels (x, y) and depth (z). What has no depth is in the middle.
  Vec3 ToPixels(const Vec3& point) const noexcept {
    const double perDepth = point.z == 0 ? 0 : focalLength_ / point.z;
    return {0.5 * width_ + point.x * perDepth, 0.5 * height_ - point.y * perDepth, point.z};
  }

  /// The way from the camera through a place on the picture, in world space; not a unit vector.
  Vec3 WayThrough(double x, double y) const noexcept {
    return MapDirection(toWorld_, {x - 0.5 * width_, 0.5 * height_ - y, focalLength_});
  }

 private:
  Matrix toWorld_, fromWorld_;
  std::int32_t width_, height_;
  double focalLength_;
};

}  // namespace sorvanix::host
