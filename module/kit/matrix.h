// Affine maps: applying, inverting and combining them, and the rotations that shaders build.
//
// A Matrix takes a point p to off + v1 * p.x + v2 * p.y + v3 * p.z. Elements are floats; every
// function computes in double and rounds each element once.
#pragma once

#include <sorvanix/types.h>

namespace sorvanix {

/// The map that changes nothing.
inline constexpr Matrix kIdentityMatrix{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};

/// The image of a point.
Vector Transform(const Vector& point, const Matrix& m);

/// The image of a direction: the axes without the displacement.
Vector Rotate(const Vector& direction, const Matrix& m);

/// The inverse map; the identity, displacement and all, when the determinant of the axes is
/// exactly 0.
Matrix Invert(const Matrix& m);

/// The map that applies b first, then a.
Matrix Multiply(const Matrix& a, const Matrix& b);

/// Scales the axes by the components of v.
Matrix ScaleMatrix(const Vector& v);

/// The turn about the y axis by `angle` radians that takes x towards z.
Matrix RotationY(float angle);

/// The turn about the z axis by `angle` radians that takes y towards x.
Matrix RotationZ(float angle);

/// A turn by heading (x), pitch (y) and bank (z) in radians: bank about z first, then pitch about
/// x, then heading about y.
Matrix RotationFromAngles(const Vector& angles);

}  // namespace sorvanix
