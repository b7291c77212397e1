// The stage that all filters share: it prepares the inputs of a filter, hands the footprint of a
// sample down to them, reads them, and bends the normal in the bump channel.
//
// A filter is a struct of constants and static functions that InputStage takes as its parameter:
//
//   struct Filter {
//     using Block = ...;                                 // the parameter block; has `nested`
//     using Slot = ...;                                  // InputSlot<kInputs>, or derived from it
//     static constexpr std::size_t kInputs = ...;
//     static constexpr AskingOrder kAsking = ...;
//     static constexpr const ShaderTable& kTable = ...;
//     static Links<kInputs> LinksOf(const Block&);
//     static Steps<kInputs> StepsOf(const Block&);       // for inputs that are no bitmaps
//     static void CompleteSlot(const Block&, Slot&);     // the values behind the input records
//     static std::size_t Reads(const Block&);            // how many inputs a colour needs
//     static Vector Combine(const Block&, const std::array<Vector, kInputs>& colours);
//   };
//
// An input that is not read counts as black. There is no supersampling: one read for each input and
// colour, four in the bump channel.
#pragma once

#include <algorithm>
#include <array>

#include "module/shaders/filters/input_records.h"
#include "module/shell/host_channel.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

template <std::size_t count>
using Links = std::array<ChannelLink*, count>;
template <std::size_t count>
using Steps = std::array<BumpStep, count>;

/// When InitRender asks the inputs for their slots and marks them as nested. It shows where a
/// render has no CPUs or no memory for slots: whoever asks afterwards then does not ask at all.
enum class AskingOrder { BeforeOwnSlots, AfterOwnSlots };

inline constexpr BumpStep kPlainStep = {0.01f, 0.01f};

/// Prepares the inputs in their order and stops at the first that fails; whether all did not fail.
bool InitInputs(std::span<ChannelLink* const> links, const RenderInit* init) noexcept;

/// What one input contributes to every slot.
struct InputSetup {
  InnerSlots slots;
  std::int32_t stride;  ///< as InputRecords::innerStride
  BumpStep step;        ///< one pixel of a bitmap, `otherwise` for all else
};
InputSetup SetUpInput(ChannelLink* link, const InnerSlots& slots, BumpStep otherwise) noexcept;

/// The footprint of a sample as a filter hands it down.
struct SampleFootprint {
  FootprintBlock block;
  std::int32_t tagFlag;  ///< handed to the inputs as their texFlags
};

/// Builds the footprint from the render, or, for a nested filter on a surface with a texture tag,
/// from what the enclosing filter wrote into the filter's own slot. `first` is the slot of the
/// first CPU, `own` that of the calling one.
SampleFootprint BuildFootprint(const ShaderInstance& instance, const ChannelSample& sample,
                               std::int32_t nested, FootprintBlock& first,
                               const FootprintBlock& own) noexcept;

/// Reads an input as the host would for the sample, at a coordinate of the filter's choice.
Vector ReadInput(ChannelLink* link, const ChannelSample& sample, const Vector& uvw,
                 std::int32_t tagFlag) noexcept;

/// Moves a coordinate to the neighbour that the enclosing filter asks for.
void MoveByTap(std::int32_t tap, const BumpStep& step, Vector& uvw) noexcept;

/// The colours at the four bump taps: +u, -u, +v, -v.
using TapColours = std::array<Vector, 4>;

/// Reads an input at the four taps. An aware one gets the footprint and moves by itself.
TapColours ReadTaps(ChannelLink* link, const ChannelSample& sample,
                    const SampleFootprint& footprint, FootprintBlock* innerSlot,
                    const BumpStep& step) noexcept;

/// Bends the render's normal by the slope between the taps' means: J. F. Blinn, "Simulation of
/// Wrinkled Surfaces", SIGGRAPH 1978.
void BendNormal(const TapColours& colours, RenderContext& render) noexcept;

/// InitRender, FreeRender and Output of one filter.
template <class Filter>
struct InputStage {
  static constexpr std::size_t kInputs = Filter::kInputs;
  using Block = typename Filter::Block;
  using Slot = typename Filter::Slot;
  using Colours = std::array<Vector, kInputs>;

  static std::int32_t InitRender(ShaderInstance* instance, const RenderInit* init) noexcept {
    const auto* block = BlockOf<Block>(instance);
    if (block == nullptr) return RenderInitFailed;
    const Links<kInputs> links = Filter::LinksOf(*block);
    if (HasGap(links)) return RenderInitFailed;

    FreeSlots(instance);
    const std::int32_t answer = InitInputs(links, init) ? 0 : RenderInitFailed;
    std::array<InnerSlots, kInputs> inner = {};
    if (Filter::kAsking == AskingOrder::BeforeOwnSlots) Ask(links, inner);
    // Deliberate: without a render, or without memory for slots, a failed input is not told.
    if (init->render == nullptr) return 0;
    const std::int32_t cpus = MakeSlots(Filter::kTable, instance, init);
    if (cpus == 0) return 0;
    if (Filter::kAsking == AskingOrder::AfterOwnSlots) Ask(links, inner);
    FillSlots(*block, links, inner, {SlotAt<Slot>(instance->slots, 0), std::size_t(cpus)});
    return answer;
  }

  static void FreeRender(ShaderInstance* instance) noexcept {
    const auto* block = BlockOf<Block>(instance);
    if (block == nullptr) return;
    const Links<kInputs> links = Filter::LinksOf(*block);
    if (HasGap(links)) return;
    for (ChannelLink* link : links) hostChannelFreeRender(link);
    FreeSlots(instance);
  }

  static void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
    *result = Vector{};
    const auto* block = BlockOf<Block>(instance);
    if (block == nullptr) return;
    const Links<kInputs> links = Filter::LinksOf(*block);
    if (HasGap(links)) return;
    if (sample->render == nullptr || instance->slots == nullptr) {
      *result = ReadWithoutSlots(*block, links, *sample);
      return;
    }
    Slot* slots = SlotAt<Slot>(instance->slots, 0);
    const std::int32_t cpu = hostCpuIndex(sample->render);
    const SampleFootprint footprint =
        BuildFootprint(*instance, *sample, block->nested, slots[0].head, slots[cpu].head);
    const Reading reading = {*block, links, *sample, footprint, slots[0], slots[cpu], cpu};
    if (instance->channel == ChannelBump) {
      BendByInputs(reading);
    } else {
      *result = ReadWithSlots(reading);
    }
  }

  /// A link that is missing altogether; an empty one is none.
  static bool HasGap(const Links<kInputs>& links) noexcept {
    return std::find(links.begin(), links.end(), nullptr) != links.end();
  }

 private:
  // What one call of Output works on.
  struct Reading {
    const Block& block;
    const Links<kInputs>& links;
    const ChannelSample& sample;
    const SampleFootprint& footprint;
    const Slot& first;
    const Slot& own;
    std::int32_t cpu;
  };

  static void Ask(const Links<kInputs>& links, std::array<InnerSlots, kInputs>& inner) noexcept {
    for (std::size_t i = 0; i < kInputs; ++i) inner[i] = AskForSlots(links[i]);
  }

  static void FillSlots(const Block& block, const Links<kInputs>& links,
                        const std::array<InnerSlots, kInputs>& inner,
                        std::span<Slot> slots) noexcept {
    const Steps<kInputs> steps = Filter::StepsOf(block);
    for (std::size_t i = 0; i < kInputs; ++i) {
      const InputSetup setup = SetUpInput(links[i], inner[i], steps[i]);
      for (Slot& slot : slots) {
        slot.inputs.innerSlots[i].Set(setup.slots.address);
        slot.inputs.innerStride[i] = setup.stride;
        slot.inputs.step[i] = setup.step;
      }
    }
    for (Slot& slot : slots) Filter::CompleteSlot(block, slot);
  }

  static Vector ReadWithoutSlots(const Block& block, const Links<kInputs>& links,
                                 const ChannelSample& sample) noexcept {
    constexpr std::int32_t kNoTagFlag = 0;
    Colours colours = {};
    for (std::size_t i = 0; i < Filter::Reads(block); ++i) {
      colours[i] = ReadInput(links[i], sample, sample.uvw, kNoTagFlag);
    }
    return Filter::Combine(block, colours);
  }

  // The coordinate is not put back from one input to the next: under an enclosing filter's tap the
  // second input is read two steps away and the third three. Deliberate.
  static Vector ReadWithSlots(const Reading& r) noexcept {
    Colours colours = {};
    Vector uvw = r.sample.uvw;
    for (std::size_t i = 0; i < Filter::Reads(r.block); ++i) {
      if (FootprintBlock* innerSlot = r.first.inputs.InnerSlot(i, r.cpu)) {
        PutFootprint(r.footprint.block, *innerSlot);
      } else {
        MoveByTap(r.own.head.tap, r.own.inputs.step[i], uvw);
      }
      colours[i] = ReadInput(r.links[i], r.sample, uvw, r.footprint.tagFlag);
    }
    return Filter::Combine(r.block, colours);
  }

  static void BendByInputs(const Reading& r) noexcept {
    std::array<TapColours, kInputs> taps = {};
    for (std::size_t i = 0; i < Filter::Reads(r.block); ++i) {
      taps[i] = ReadTaps(r.links[i], r.sample, r.footprint, r.first.inputs.InnerSlot(i, r.cpu),
                         r.own.inputs.step[i]);
    }
    TapColours combined;
    for (std::size_t tap = 0; tap < combined.size(); ++tap) {
      Colours colours;
      for (std::size_t i = 0; i < kInputs; ++i) colours[i] = taps[i][tap];
      combined[tap] = Filter::Combine(r.block, colours);
    }
    BendNormal(combined, *r.sample.render);
  }
};

/// A filter with one input and a colour function of its own.
template <class FilterBlock, class FilterSlot, const ShaderTable& table,
          Vector (*filterColour)(const FilterBlock& block, Vector colour) noexcept>
struct OneInputFilter {
  using Block = FilterBlock;
  using Slot = FilterSlot;
  static constexpr std::size_t kInputs = 1;
  static constexpr AskingOrder kAsking = AskingOrder::BeforeOwnSlots;
  static constexpr const ShaderTable& kTable = table;
  static Links<1> LinksOf(const Block& block) noexcept { return {block.input}; }
  static Steps<1> StepsOf(const Block&) noexcept { return {kPlainStep}; }
  static void CompleteSlot(const Block&, Slot&) noexcept {}
  static std::size_t Reads(const Block&) noexcept { return 1; }
  static Vector Combine(const Block& block, const std::array<Vector, 1>& colours) noexcept {
    return filterColour(block, colours[0]);
  }
};

/// Stores all callbacks of a filter into a cleared record. A filter with an Output of its own needs
/// neither Reads nor Combine.
template <class Filter>
void FillFilterRecord(ShaderRecord* record,
                      decltype(ShaderRecord::Output) output = InputStage<Filter>::Output) noexcept {
  TableCallbacks<Filter::kTable>::Fill(record);
  record->InitRender = InputStage<Filter>::InitRender;
  record->FreeRender = InputStage<Filter>::FreeRender;
  record->Output = output;
}

}  // namespace sorvanix
