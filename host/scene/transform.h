// Where things stand: position, rotation and scale, and the matrices they make.
#pragma once

#include <sorvanix/types.h>

namespace sorvanix::host {

inline constexpr Matrix kIdentityMatrix = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

/// Relative to the parent's space. The point is scaled, then rotated, then moved.
struct Transform {
  Vector position = {0, 0, 0};
  Vector rotation = {0, 0, 0};  ///< degrees: heading to the left, pitch upwards, bank clockwise
  Vector scale = {1, 1, 1};
};

Vector Radians(const Vector& degrees) noexcept;

/// The rotation by heading, pitch and bank (x, y, z, in radians): z axis to the left, z axis
/// upwards, then x axis downwards. The same convention as the angles of shaders.
Matrix RotationMatrix(const Vector& angles) noexcept;

/// The angles in degrees whose z axis has this direction, without bank; zero for a zero direction.
Vector AnglesTowards(const Vector& direction) noexcept;

Matrix ToMatrix(const Transform& transform) noexcept;

/// The map that applies `second` first, then `first`.
Matrix Multiply(const Matrix& first, const Matrix& second) noexcept;
Vector TransformPoint(const Matrix& matrix, const Vector& point) noexcept;
/// Without the displacement.
Vector TransformDirection(const Matrix& matrix, const Vector& direction) noexcept;

/// The vector at length 1; the fallback when it has no direction.
Vector UnitVector(const Vector& v, const Vector& fallback) noexcept;

bool IsFinite(const Vector& v) noexcept;
bool IsFinite(const Matrix& matrix) noexcept;

}  // namespace sorvanix::host
