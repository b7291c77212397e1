// Projector: shows its input through a projection of its own, whatever texture tag lies on the
// surface.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The projection that reads the surface's own coordinates; all others map a point in space.
inline constexpr std::int32_t kProjectionUvw = 6;

/// What the private tag repeats, as bits.
enum ProjectorTileFlags : std::int32_t { ProjectorTile = 1, ProjectorSeamless = 2 };

/// The parameter block: the whole of a texture tag.
struct ProjectorBlock {
  ChannelLink* input;
  Matrix projectionMatrix;  ///< follows from position, scale and rotation
  std::int32_t tileFlags;   ///< ProjectorTileFlags; dialogs derive them from tile and seamless
  std::int32_t projection;  ///< the host's number
  float offsetU;
  float offsetUCopy;
  float offsetV;
  float offsetVCopy;
  float lengthU;
  float lengthV;
  float invLengthU;  ///< 0 for a length of 0
  float invLengthV;
  std::int32_t tile;
  std::int32_t seamless;
  float tilesU;  ///< repeats; dialogs keep them
  float tilesV;
  Vector position;
  Vector scale;
  Vector rotation;        ///< heading, pitch and bank in radians
  std::int32_t uvwIndex;  ///< which set of coordinates kProjectionUvw reads, from 1
  std::int32_t dialogWord;
  std::int32_t nested;  ///< set by an enclosing filter, word 38; it changes nothing
  std::int32_t previewChannel;
};

extern const ShaderTable kProjectorTable;

void FillProjectorRecord(ShaderRecord* record) noexcept;

}  // namespace sorvanix
