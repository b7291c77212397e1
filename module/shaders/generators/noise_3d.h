// 3D Noise: a colour from the noise catalogue at a point of the surface, in one of six spaces.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// What the noise stays fixed to. Documents store the numbers.
enum Noise3DSpace : std::int32_t {
  SpaceTexture = 0,  ///< the texture tag
  SpaceObject = 1,
  SpaceWorld = 2,  ///< also for every number off the table
  SpaceCamera = 3,
  SpaceScreen = 4,  ///< the camera, a tenth the size
  SpaceRaster = 5   ///< the picture, whatever the depth
};

/// The parameter block: 40 words. Values are as they come; only the dialog limits them.
struct Noise3DBlock {
  std::int32_t revision;
  std::int32_t noiseType;  ///< catalogue number, 0 to 29
  std::int32_t space;      ///< a Noise3DSpace
  float octaves;
  float globalScale;             ///< frequency over all axes, in noise units per unit of the space
  float scaleX, scaleY, scaleZ;  ///< frequency along each axis, times globalScale
  float detail;                  ///< strength of the catalogue's anti-aliasing
  float timeScale;               ///< animation time per second
  float contrast;
  float brightness;
  float lowClip;
  float highClip;
  float cycles;
  Vector colorA;
  Vector colorB;
  std::int32_t bumpOneSided;  ///< nonzero: the bump is a slope along the space's axes
  std::int32_t absolute;
  std::int32_t flagC;  ///< stored and compared
  std::int32_t reserved24;
  std::int32_t reserved25;
  std::int32_t flagD;           ///< stored and compared
  std::int32_t useObjectFrame;  ///< nonzero: the noise sticks to the undeformed object
  std::int32_t useSphereFrame;  ///< with it: the point lies on a sphere, at the sample's uvw
  Vector extraVector;           ///< stored, compared and exchanged
  Vector velocity;              ///< of the point, in units of the space per second
  float extraValue;             ///< stored, compared and exchanged
  std::int32_t nested;          ///< set by an enclosing filter, word 36
  std::int32_t reserved37;
  std::int32_t reserved38;
  float bumpStepScale;  ///< multiplies the bump step
};

extern const ShaderTable kNoise3DTable;

void Fill3DNoiseRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
