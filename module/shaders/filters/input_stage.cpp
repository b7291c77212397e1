// How a filter prepares its inputs, builds the footprint it hands down, and reads.
#include "module/shaders/filters/input_stage.h"

#include "module/kit/matrix.h"
#include "module/kit/vector.h"
#include "module/shaders/sample_points.h"
#include "module/shaders/tilt_normal.h"

namespace sorvanix {

namespace {

constexpr std::int32_t kNoTagFlag = 0;

void PutPoints(const SamplePoints& points, const ChannelSample& sample,
               FootprintBlock& block) noexcept {
  std::copy(points.begin(), points.end(), block.footprint);
  block.footprintRadius = HalfExtent(block.footprint, sample);
}

// All fields that do not depend on where the points come from.
FootprintBlock UnmovedBlock(const ShaderInstance& instance, const ChannelSample& sample) noexcept {
  FootprintBlock block = {};
  block.uvwPoint = block.basePoint = sample.uvw;
  block.uvwDelta = block.baseDelta = sample.delta;
  block.texMatrix = block.texInverse = kIdentityMatrix;
  block.outerChannel = instance.channel;
  return block;
}

}  // namespace

bool InitInputs(std::span<ChannelLink* const> links, const RenderInit* init) noexcept {
  return std::all_of(links.begin(), links.end(),
                     [init](ChannelLink* link) { return hostChannelInitRender(link, init) == 0; });
}

InputSetup SetUpInput(ChannelLink* link, const InnerSlots& slots, BumpStep otherwise) noexcept {
  if (hostChannelPluginId(link) != 0) return {slots, slots.stride, otherwise};
  const HostBitmap* bitmap = hostChannelBitmap(link);
  if (bitmap == nullptr) return {slots, InputRecords<1>::kBitmapMissing, otherwise};
  // A bitmap of unknown size has no pixel to step by.
  const auto pixel = [](std::int32_t size, float unknown) {
    return size > 0 ? static_cast<float>(1.0 / size) : unknown;
  };
  return {slots, slots.stride,
          BumpStep{pixel(hostBitmapWidth(bitmap), otherwise.u),
                   pixel(hostBitmapHeight(bitmap), otherwise.v)}};
}

SampleFootprint BuildFootprint(const ShaderInstance& instance, const ChannelSample& sample,
                               std::int32_t nested, FootprintBlock& first,
                               const FootprintBlock& own) noexcept {
  const RenderContext& render = *sample.render;
  SampleFootprint footprint = {UnmovedBlock(instance, sample), kNoTagFlag};
  FootprintBlock& block = footprint.block;
  const TextureTag* tag = render.textureTag;
  if (tag == nullptr) {  // `nested` plays no part here
    PutPoints(WorldPoints(render), sample, block);
    return footprint;
  }
  // Deliberate: the first slot decides, where generators look at the calling CPU's.
  const bool useSlot = nested != 0 && OuterChannelOf(first) != ChannelStandalone;
  if (useSlot) block = own;
  footprint.tagFlag = tag->flags;  // sign-extended
  block.texMatrix = tag->matrix1;
  block.texInverse = tag->matrix2;
  if (!useSlot) PutPoints(PointsInTag(render, *tag), sample, block);
  return footprint;
}

Vector ReadInput(ChannelLink* link, const ChannelSample& sample, const Vector& uvw,
                 std::int32_t tagFlag) noexcept {
  return hostChannelSample(link, sample.render, uvw, sample.delta, sample.normal, sample.time,
                           tagFlag, sample.blurOffset, sample.blurScale);
}

void MoveByTap(std::int32_t tap, const BumpStep& step, Vector& uvw) noexcept {
  switch (tap) {
    case TapPlusU:
      uvw.x += step.u;
      break;
    case TapMinusU:
      uvw.x -= step.u;
      break;
    case TapPlusV:
      uvw.y += step.v;
      break;
    case TapMinusV:
      uvw.y -= step.v;
      break;
    default:
      break;
  }
}

TapColours ReadTaps(ChannelLink* link, const ChannelSample& sample,
                    const SampleFootprint& footprint, FootprintBlock* innerSlot,
                    const BumpStep& step) noexcept {
  TapColours colours;
  Vector uvw = sample.uvw;
  if (innerSlot != nullptr) {
    PutFootprint(footprint.block, *innerSlot);
    for (std::int32_t tap = TapPlusU; tap <= TapMinusV; ++tap) {
      innerSlot->tap = tap;
      colours[static_cast<std::size_t>(tap - TapPlusU)] =
          ReadInput(link, sample, uvw, footprint.tagFlag);
    }
    return colours;
  }
  // From tap to tap, so that rounding is the same as ever: + u, - u, + v, - v of the sample.
  const BumpStep moves[] = {{step.u, 0}, {-2 * step.u, 0}, {step.u, step.v}, {0, -2 * step.v}};
  for (std::size_t tap = 0; tap < colours.size(); ++tap) {
    uvw.x += moves[tap].u;
    uvw.y += moves[tap].v;
    colours[tap] = ReadInput(link, sample, uvw, footprint.tagFlag);
  }
  return colours;
}

// The plus tap is taken from the minus tap in u, the minus tap from the plus tap in v: the unlike
// signs are deliberate.
void BendNormal(const TapColours& colours, RenderContext& render) noexcept {
  constexpr double kSlope = 3.5;
  TiltNormal(render, (Mean(colours[1]) - Mean(colours[0])) * kSlope,
             (Mean(colours[2]) - Mean(colours[3])) * kSlope);
}

}  // namespace sorvanix
