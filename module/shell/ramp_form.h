// A ramp as part of a block: copied, compared, saved and exchanged.
//
// The count comes from messages and files unchecked, so every loop here runs over LiveKnots.
#pragma once

#include "module/shell/shader_table.h"

namespace sorvanix {

/// The interpolations by name, for the table rows of shaders with a ramp.
inline constexpr Choice kRampInterpolationChoices[] = {
    {RampCubic, "cubic", "Cubic"},    {RampBezier, "bezier", "Bezier"},
    {RampSmooth, "smooth", "Smooth"}, {RampLinear, "linear", "Linear"},
    {RampStep, "step", "Step"},
};

/// How shaders differ in the rows of their ramp.
struct RampRows {
  std::int32_t interpolationKey;
  std::int32_t countKey;
  bool selectedCompared = true;
};

/// The rows of what a ramp has besides its knots, which a RampForm exchanges.
template <class Block>
constexpr auto RampFields(RampRows rows) {
  return std::to_array<Field>({
      {SORVANIX_RAMP_MEMBER(Block, Int, interpolation), .initial = Initially(0), .compared = true,
       .copied = true, .key = rows.interpolationKey, .describeAs = DescribeInteger,
       .label = "Interpolation", .help = "How the ramp runs between two knots.",
       .limits = {.step = 1}, .choices = kRampInterpolationChoices},
      {SORVANIX_RAMP_MEMBER(Block, Int, count), .compared = true, .copied = true,
       .key = rows.countKey, .describeAs = DescribeInteger},
      {SORVANIX_RAMP_MEMBER(Block, Int, selected), .compared = rows.selectedCompared,
       .copied = true},
  });
}

/// Takes over the live knots and their order entries.
void CopyLiveKnots(const Ramp& from, Ramp& to) noexcept;

/// Whether the knots that are live in `first` are the same in `second`, floats exactly. The order
/// does not count.
bool EqualLiveKnots(const Ramp& first, const Ramp& second) noexcept;

/// The saved parts. The count is written as it is used, limited to RampMaxKnots, so that the file
/// stays in step. A file may declare more: its knots and order entries are then read to their end,
/// or to that of the stream, and the first RampMaxKnots kept. Reading the order limits the count.
void WriteRampCount(const Ramp& ramp, HostStream* writer) noexcept;
void WriteRampKnots(const Ramp& ramp, HostStream* writer) noexcept;
void WriteRampOrder(const Ramp& ramp, HostStream* writer) noexcept;
void ReadRampCount(Ramp& ramp, HostStream* reader) noexcept;
void ReadRampKnots(Ramp& ramp, HostStream* reader) noexcept;
void ReadRampOrder(Ramp& ramp, HostStream* reader) noexcept;

/// Puts all RampMaxKnots knots, live or not, under their keys.
void GetKnots(const RampForm& form, const Ramp& ramp, HostContainer* payload) noexcept;

/// Takes the value of one key, if it is that of a knot; keys beyond the last knot are not.
void SetKnot(const RampForm& form, Ramp& ramp, std::int32_t key,
             const HostContainer* payload) noexcept;

/// Puts the type word of every knot's three keys.
void DescribeKnots(const RampForm& form, HostContainer* payload) noexcept;

}  // namespace sorvanix
