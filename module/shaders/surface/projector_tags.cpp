// Tags of a Projector: built once a CPU and render, and used for each point.
#include "module/shaders/surface/projector_tags.h"

#include "module/kit/matrix.h"
#include "module/kit/vector.h"
#include "module/shell/host_render.h"

namespace sorvanix {

namespace {

// Points come a hundred times too large, those of a tag as those of the world.
constexpr float kTagScale = 0.01f;

// ObjectRecord::kind of a surface with coordinates of its own.
constexpr std::uint8_t kHasUvw = 2;

TextureTag& TagAt(const SlotAddress& address) noexcept {
  return *static_cast<TextureTag*>(address.Get());
}

const TextureTag& TagFor(const ProjectorBlock& block, const ProjectorSlot& slot,
                         const RenderContext& render) noexcept {
  const bool hasUvw = render.object != nullptr && render.object->kind == kHasUvw;
  const bool useUvw = hasUvw && block.projection == kProjectionUvw;
  return TagAt(useUvw ? slot.uvwTag : slot.privateTag);
}

}  // namespace

void PlaceProjection(ProjectorBlock& block) noexcept {
  const Matrix turn = RotationFromAngles(block.rotation);
  block.projectionMatrix = {block.position, Scale(block.scale.x, turn.v1),
                            Scale(block.scale.y, turn.v2), Scale(block.scale.z, turn.v3)};
  block.offsetUCopy = block.offsetU;
  block.offsetVCopy = block.offsetV;
}

void BuildTags(const ProjectorBlock& block, const TextureTag* surfaceTag,
               ProjectorSlot& slot) noexcept {
  const Matrix placement =
      Multiply(ScaleMatrix({kTagScale, kTagScale, kTagScale}), block.projectionMatrix);
  slot.worldToTag = Invert(placement);

  TextureTag& tag = TagAt(slot.privateTag);
  tag = {};
  if (surfaceTag != nullptr) tag = *surfaceTag;
  tag.matrix1 = placement;
  tag.matrix2 = slot.worldToTag;
  tag.flags = static_cast<std::int8_t>(block.tileFlags);
  tag.projection = static_cast<std::int8_t>(block.projection);
  tag.offsetU = block.offsetU;
  tag.offsetV = block.offsetV;
  tag.lengthU = block.lengthU;
  tag.lengthV = block.lengthV;

  TextureTag& uvwTag = TagAt(slot.uvwTag);
  uvwTag = {};
  uvwTag.matrix1 = uvwTag.matrix2 = kIdentityMatrix;
  uvwTag.lengthU = uvwTag.lengthV = 1;
  slot.ready = 1;
}

ProjectedPoints ProjectPoints(const ProjectorBlock& block, const ProjectorSlot& slot,
                              const RenderContext& render, const Vector (&points)[4]) noexcept {
  const TextureTag& tag = TagFor(block, slot, render);
  ProjectedPoints projected;
  for (std::size_t i = 0; i < 4; ++i) {
    const Vector point =
        block.projection == kProjectionUvw ? points[i] : Transform(points[i], slot.worldToTag);
    projected.uvw[i] = hostProjectTexture(&tag, &render, point, render.uvwRecord);
  }
  return projected;
}

}  // namespace sorvanix
