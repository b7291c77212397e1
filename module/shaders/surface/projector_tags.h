// The projection of a Projector: its placement, and the tags through which a render projects.
#pragma once

#include "module/shaders/filters/input_records.h"
#include "module/shaders/surface/projector.h"

namespace sorvanix {

/// What a CPU keeps during a render. The head belongs to enclosing filters.
struct ProjectorSlot {
  FootprintBlock head;
  std::int32_t ready;  ///< 0 until the tags are built
  InputRecords<1> input;
  SlotAddress privateTag;  ///< the TextureTag of the projection
  SlotAddress uvwTag;      ///< that of a surface with coordinates of its own
  Matrix worldToTag;       ///< of the private tag
};
static_assert(sizeof(ProjectorSlot) == SlotStrideProjector);

/// Recomputes what a render takes from position, scale, rotation and the offsets.
void PlaceProjection(ProjectorBlock& block) noexcept;

/// Builds both tags of a slot. What the host keeps for itself in a tag is taken from the tag on the
/// surface, if there is one.
void BuildTags(const ProjectorBlock& block, const TextureTag* surfaceTag,
               ProjectorSlot& slot) noexcept;

/// The texture coordinates of four points: the hit and its corners.
struct ProjectedPoints {
  Vector uvw[4];
};
ProjectedPoints ProjectPoints(const ProjectorBlock& block, const ProjectorSlot& slot,
                              const RenderContext& render, const Vector (&points)[4]) noexcept;

}  // namespace sorvanix
