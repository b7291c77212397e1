// Gradient: a colour ramp over one of eleven shapes, in texture coordinates or in space.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// What turns the coordinate into a place on the ramp. Documents store the numbers.
enum GradientType : std::int32_t {
  GradientU = 0,  ///< also for every number off the table
  GradientV = 1,
  GradientDiagonal = 2,
  GradientAngle = 3,        ///< around the middle of the texture
  GradientCircle = 4,       ///< from the middle to the corners
  GradientBox = 5,          ///< from the middle to the edges
  GradientCorners = 6,      ///< from the nearest corner
  GradientFourColours = 7,  ///< the first four knots' colours, mixed bilinearly
  GradientLinear3D = 8,     ///< from `start` to `end`
  GradientCylinder3D = 9,   ///< around the line through `start` and `end`
  GradientSphere3D = 10     ///< around `start`
};

/// The space in which the types from GradientLinear3D on read their point. Documents store the
/// numbers.
enum GradientSpace : std::int32_t {
  GradientTexture = 0,
  GradientObject = 1,
  GradientWorld = 2,  ///< also for every number off the table
  GradientCamera = 3,
  GradientScreen = 4,     ///< pixels, and depth
  GradientUnitScreen = 5  ///< 0 to 1 across the picture
};

/// The parameter block: 320 words, the ramp first.
struct GradientBlock {
  Ramp ramp;
  std::int32_t type;   ///< a GradientType
  std::int32_t space;  ///< a GradientSpace
  Vector start;        ///< in units of the space
  Vector end;
  float radius;        ///< of the cylinder and the sphere
  std::int32_t cycle;  ///< nonzero repeats the shape instead of holding its ends
  std::int32_t previewBusy;
  std::int32_t previewAuto;
  std::int32_t changed;
  std::int32_t previewObject;
  std::int32_t nested;  ///< set by an enclosing filter, word 317
  std::int32_t dialogChannel;
  std::int32_t dialogChannelMark;
};

extern const ShaderTable kGradientTable;

void FillGradientRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
