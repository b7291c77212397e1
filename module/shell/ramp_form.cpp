// Ramps in saved forms and messages.
#include "module/shell/ramp_form.h"

#include <algorithm>

#include "module/shell/host_container.h"
#include "module/shell/host_stream.h"

namespace sorvanix {

namespace {

constexpr std::int32_t kNoKnot = -1;

// The knot whose key this is, when `first` is the key of knot 0.
std::int32_t KnotOfKey(std::int32_t key, std::int32_t first, std::int32_t stride) noexcept {
  const std::int64_t distance = std::int64_t{key} - first;
  if (distance < 0 || distance % stride != 0 || distance / stride >= RampMaxKnots) return kNoKnot;
  return static_cast<std::int32_t>(distance / stride);
}

// One knot of a file; false where the stream does not hold it.
bool ReadKnot(RampKnot& knot, HostStream* reader) noexcept {
  return hostReadVector(reader, &knot.colour) != 0 && hostReadFloat(reader, &knot.position) != 0 &&
         hostReadFloat(reader, &knot.bias) != 0;
}

}  // namespace

void CopyLiveKnots(const Ramp& from, Ramp& to) noexcept {
  const std::int32_t live = LiveKnots(from.count);
  std::copy_n(from.knots, live, to.knots);
  std::copy_n(from.order, live, to.order);
}

bool EqualLiveKnots(const Ramp& first, const Ramp& second) noexcept {
  const auto equal = [](const RampKnot& a, const RampKnot& b) {
    return a.colour.x == b.colour.x && a.colour.y == b.colour.y && a.colour.z == b.colour.z &&
           a.position == b.position && a.bias == b.bias;
  };
  return std::equal(first.knots, first.knots + LiveKnots(first.count), second.knots, equal);
}

void WriteRampCount(const Ramp& ramp, HostStream* writer) noexcept {
  hostWriteInt(writer, LiveKnots(ramp.count));
}

void WriteRampKnots(const Ramp& ramp, HostStream* writer) noexcept {
  for (std::int32_t i = 0; i < LiveKnots(ramp.count); ++i) {
    hostWriteVector(writer, ramp.knots[i].colour);
    hostWriteFloat(writer, ramp.knots[i].position);
    hostWriteFloat(writer, ramp.knots[i].bias);
  }
}

void WriteRampOrder(const Ramp& ramp, HostStream* writer) noexcept {
  for (std::int32_t i = 0; i < LiveKnots(ramp.count); ++i) hostWriteInt(writer, ramp.order[i]);
}

void ReadRampCount(Ramp& ramp, HostStream* reader) noexcept { hostReadInt(reader, &ramp.count); }

void ReadRampKnots(Ramp& ramp, HostStream* reader) noexcept {
  for (std::int32_t i = 0; i < ramp.count; ++i) {
    RampKnot surplus;
    if (!ReadKnot(i < RampMaxKnots ? ramp.knots[i] : surplus, reader)) return;
  }
}

void ReadRampOrder(Ramp& ramp, HostStream* reader) noexcept {
  for (std::int32_t i = 0; i < ramp.count; ++i) {
    std::int32_t surplus = 0;
    if (hostReadInt(reader, i < RampMaxKnots ? &ramp.order[i] : &surplus) == 0) break;
  }
  ramp.count = LiveKnots(ramp.count);
}

void GetKnots(const RampForm& form, const Ramp& ramp, HostContainer* payload) noexcept {
  for (std::int32_t i = 0; i < RampMaxKnots; ++i) {
    const std::int32_t step = i * form.keyStride;
    hostContainerSetVector(payload, form.colourKey + step, ramp.knots[i].colour);
    hostContainerSetFloat(payload, form.positionKey + step, ramp.knots[i].position);
    hostContainerSetFloat(payload, form.biasKey + step, ramp.knots[i].bias);
  }
}

void SetKnot(const RampForm& form, Ramp& ramp, std::int32_t key,
             const HostContainer* payload) noexcept {
  std::int32_t knot = KnotOfKey(key, form.colourKey, form.keyStride);
  if (knot != kNoKnot) {
    ramp.knots[knot].colour = hostContainerGetVector(payload, key, Vector{});
    return;
  }
  knot = KnotOfKey(key, form.positionKey, form.keyStride);
  if (knot != kNoKnot) {
    ramp.knots[knot].position = hostContainerGetFloat(payload, key, 0);
    return;
  }
  knot = KnotOfKey(key, form.biasKey, form.keyStride);
  if (knot != kNoKnot) ramp.knots[knot].bias = hostContainerGetFloat(payload, key, 0);
}

void DescribeKnots(const RampForm& form, HostContainer* payload) noexcept {
  for (const std::int32_t first : {form.colourKey, form.positionKey, form.biasKey}) {
    for (std::int32_t i = 0; i < RampMaxKnots; ++i) {
      hostContainerSetInt(payload, first + i * form.keyStride, DescribeReal);
    }
  }
}

}  // namespace sorvanix
