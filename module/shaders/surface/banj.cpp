// Banj: its table, and its two ways to light the far side of a surface.
#include "module/shaders/surface/banj.h"

#include "module/kit/oren_nayar.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "module/shaders/surface/along_ray.h"
#include "module/shaders/surface/banj_dialog.h"
#include "module/shaders/surface/illumination.h"
#include "module/shaders/surface/light_walk.h"
#include "module/shell/host_container.h"
#include "module/shell/table_callbacks.h"

namespace sorvanix {

namespace {

using Block = BanjBlock;
static_assert(sizeof(Block) == 18 * 4 && offsetof(Block, nested) == 15 * 4);
#define MEMBER(kind, member) SORVANIX_MEMBER(BanjBlock, kind, member)
#define PLACE(kind, member) SORVANIX_PLACE(BanjBlock, kind, member)

constexpr std::int32_t kKeySigma = 1003;

// What follows from a sigma of 1.
constexpr float kInitialOrenA = 0x1.3f84dp-1f;   // 0.62406
constexpr float kInitialOrenB = 0x1.a6c096p-2f;  // 0.41284

constexpr Field kFields[] = {
    {MEMBER(Int, previewObject), .initial = Initially(3), .compared = true},
    {MEMBER(Int, orenNayar), .initial = Initially(IlluminationHost), .compared = true, .key = 1000,
     .describeAs = DescribeInteger, .label = "Illumination",
     .help = "How the far side is lit: as any surface, or as a rough one.", .limits = {0, 1, 1},
     .choices = kIlluminations},
    {MEMBER(Float, diffuseLevel), .initial = Initially(0.8f), .compared = true, .key = 1001,
     .label = "Level", .help = "How much of the light shines through.", .limits = {0, 10, 0.01},
     .unit = Unit::Percent},
    {MEMBER(Float, shadowMix), .initial = Initially(0.6f), .compared = true, .key = 1002,
     .label = "Shadows", .help = "How much of the light other objects block.",
     .limits = {0, 1, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, sigma), .initial = Initially(1.0f), .compared = true, .key = kKeySigma,
     .label = "Roughness", .help = "How rough the far side is; only Oren-Nayar knows it.",
     .limits = {0, 2, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, diffuseContrast), .initial = Initially(0.0f), .compared = true, .key = 1004,
     .label = "Contrast", .help = "Narrows the step from dark to bright, down to a hard edge.",
     .limits = {-5, 5, 0.01}, .unit = Unit::Percent},
    {MEMBER(Float, sigma2), .initial = Initially(1.0f), .compared = true},
    {MEMBER(Float, orenA), .initial = Initially(kInitialOrenA), .compared = true},
    {MEMBER(Float, orenB), .initial = Initially(kInitialOrenB), .compared = true},
    {MEMBER(Vector, diffuseColour), .initial = Initially(0.0f, 1.0f, 0.5f), .compared = true,
     .key = 1005, .label = "Color", .help = "The colour that the light takes on its way through.",
     .unit = Unit::Colour},
    {MEMBER(Bool, changed), .initial = Initially(0)},
    {MEMBER(Bool, previewBusy), .initial = Initially(1)},
    {MEMBER(Bool, previewAuto), .initial = Initially(1), .compared = true},
    {MEMBER(Int, nested)},
    {MEMBER(Int, previewState), .initial = Initially(-1)},
};

constexpr StoredItem kStored[] = {
    Stored(PLACE(Int, previewObject)),     Stored(PLACE(Int, orenNayar)),
    Stored(PLACE(Float, diffuseLevel)),    Stored(PLACE(Float, shadowMix)),
    Stored(PLACE(Float, sigma)),           Stored(PLACE(Float, sigma2)),
    Stored(PLACE(Float, orenA)),           Stored(PLACE(Float, orenB)),
    Stored(PLACE(Float, diffuseContrast)), Stored(PLACE(Vector, diffuseColour)),
    Stored(PLACE(Bool, previewAuto)),      Stored(PLACE(Bool, changed)),
    Stored(PLACE(Bool, previewBusy)),
};

#undef PLACE
#undef MEMBER

}  // namespace

// A stride, and no slots: no filter hands Banj a point.
constexpr ShaderTable kBanjTable = {
    .pluginId = PluginIdBanj,
    .name = "Banj",
    .category = ShaderCategory::Surface,
    .summary = "The light that shines through a thin surface, as through a leaf or a lampshade.",
    .infoWord = 0x02200003,
    .blockSize = sizeof(Block),
    .nestedOffset = offsetof(Block, nested),
    .fields = kFields,
    .marker = 20000728,
    .onlyOwnMarker = true,
    .stored = kStored,
    .slotStride = SlotStrideHeadOnly,
};

void DeriveRoughness(BanjBlock& block) noexcept {
  const OrenNayarFactors factors = OrenNayarFactorsOf(block.sigma);
  block.sigma2 = factors.sigma2;
  block.orenA = factors.a;
  block.orenB = factors.b;
}

namespace {

// Unlike other shaders' copies, one of a nested Banj stays nested.
std::int32_t Copy(const ShaderInstance* source, ShaderInstance* destination) noexcept {
  const auto* from = BlockOf<Block>(source);
  auto* to = BlockOf<Block>(destination);
  if (from == nullptr || to == nullptr) return 0;
  *to = *from;
  return 1;
}

std::int32_t Message(ShaderInstance* instance, std::int32_t id, HostContainer* payload) noexcept {
  const std::int32_t answer = AnswerMessage(kBanjTable, instance, id, payload);
  auto* block = BlockOf<Block>(instance);
  const bool isSet = id == MessageSetParameters && block != nullptr;
  if (isSet && hostContainerFind(payload, kKeySigma) >= 0) DeriveRoughness(*block);
  return answer;
}

Vector Negated(const Vector& v) noexcept { return Scale(-1, v); }

Vector Contrasted(const Block& block, const Vector& colour) noexcept {
  const double low = block.diffuseContrast * 0.5;
  const double high = 1 - low;
  return ByComponent([=](double x) { return LinearStep(low, high, x); }, colour);
}

// What the surface shows of white light that arrives head-on.
Vector Reflectance(const Block& block) noexcept {
  return Scale(block.diffuseLevel, block.diffuseColour);
}

// The render turned to its far side, for as long as this lives.
class TurnedRound {
 public:
  explicit TurnedRound(RenderContext& render) noexcept
      : render_(render), normal_(render.bumpNormal), shadows_(render.lightParamB) {
    render.bumpNormal = Negated(normal_);
  }
  TurnedRound(const TurnedRound&) = delete;
  TurnedRound& operator=(const TurnedRound&) = delete;
  ~TurnedRound() {
    render_.bumpNormal = normal_;
    render_.lightParamB = shadows_;
  }

  Vector Light() const noexcept {
    Vector diffuse = {}, unused = {};
    hostIlluminate(&render_, diffuse, unused, 0);
    return diffuse;
  }
  void SwitchShadowsOff() noexcept { render_.lightParamB = 0; }

 private:
  RenderContext& render_;
  const Vector normal_;
  const std::int32_t shadows_;
};

Vector LitByHost(const Block& block, RenderContext& render) noexcept {
  TurnedRound farSide(render);
  const Vector shadowed = farSide.Light();
  farSide.SwitchShadowsOff();
  const Vector light = Lerp(farSide.Light(), shadowed, block.shadowMix);
  const double level = block.diffuseLevel;
  const auto tint = [level](double l, double colour) { return l * colour * level; };
  return WithoutNegatives(ByComponent(tint, light, block.diffuseColour));
}

// The far side as the Oren-Nayar form sees it.
struct FarSide {
  ViewedSurface surface;
  OrenNayarFactors factors;
  Vector reflectance;
  Vector ray;
};

// Adds what one light gives.
void AddLight(const Block& block, const RenderContext& render, const FarSide& side,
              const LightRecord& light, Vector& sum) noexcept {
  const Vector& normal = side.surface.normal;
  const auto sample = [&](std::int32_t shadows) {
    return hostLightSample(&render, &light, render.hitPoint, normal, shadows, render.lightParamA);
  };
  const ArrivingLight open = sample(0);
  const ArrivingLight shadowed = sample(render.lightParamB);
  if (!open.arrives || !shadowed.arrives) return;

  const Vector colour = Lerp(open.colour, shadowed.colour, block.shadowMix);
  if (light.ambient != 0) {
    AddInPlace(sum, colour);
    return;
  }
  if (light.type == LightRectangle || light.type == LightDisc) {
    hostAreaLight(&render, &light, 1, side.ray, render.side, render.hitPoint, sum);
    return;
  }
  const float cosine = Dot(shadowed.direction, normal);
  if (light.noDiffuse != 0 || cosine < 0) return;
  const Vector share = OrenNayarShare(side.factors, side.reflectance, side.surface,
                                      shadowed.direction, ContrastedCosine(cosine, light.contrast));
  AddInPlace(sum, Product(share, colour));
}

Vector LitByOrenNayar(const Block& block, const RenderContext& render) noexcept {
  const Vector ray = DirectionOf(*render.ray);
  // The ray looks through the surface, and so along the far side's normal.
  const FarSide side = {ViewSurface(Negated(render.bumpNormal), ray),
                        {block.sigma2, block.orenA, block.orenB},
                        Reflectance(block),
                        ray};
  Vector sum = {};
  ForEachLight(render,
               [&](const LightRecord& light) { AddLight(block, render, side, light, sum); });
  return WithoutNegatives(sum);
}

Vector Lit(const Block& block, RenderContext& render) noexcept {
  switch (block.orenNayar) {
    case IlluminationHost:
      return Contrasted(block, LitByHost(block, render));
    case IlluminationOrenNayar:
      // Without lights black, which no contrast lifts.
      if (render.lightsEnabled == 0) return Vector{};
      return Contrasted(block, LitByOrenNayar(block, render));
    default:
      return Vector{};
  }
}

void Output(Vector* result, ShaderInstance* instance, ChannelSample* sample) noexcept {
  *result = Vector{};
  const auto* block = BlockOf<Block>(instance);
  if (block == nullptr) return;
  RenderContext* render = sample->render;
  if (render == nullptr) {
    *result = Reflectance(*block);
  } else if (render->ray == nullptr || render->lightCount <= 0) {
    *result = {1, 1, 1};
  } else {
    *result = Lit(*block, *render);
  }
}

}  // namespace

void FillBanjRecord(ShaderRecord* record) noexcept {
  TableCallbacks<kBanjTable>::Fill(record);
  record->Edit = EditBanj;
  record->Copy = Copy;
  record->Message = Message;
  record->FreeRender = nullptr;  // there is no InitRender either
  record->Output = Output;
}

}  // namespace sorvanix
