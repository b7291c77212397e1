// Lumas as data: its registration, defaults, saved forms, messages, Copy and Compare.
#include <cmath>
#include <cstring>
#include <functional>

#include "tests/module/shaders/surface/lumas_fixture.h"

namespace sorvanix::test {
namespace {

constexpr auto Int = StreamValue::Int;
constexpr auto Float = StreamValue::Float;
constexpr auto Bool = StreamValue::Bool;
constexpr auto Vec = StreamValue::Vec;

using Change = std::function<void(LumasBlock&)>;

struct LumasDataTest : LumasTest {
  // A value of its own in every field: those of layer i begin at 100 (i + 1).
  static void FillLayer(int i, SpecularLayer& layer) {
    const int n = 100 * (i + 1);
    const auto f = static_cast<float>(n);
    layer = {.useAnisotropy = n,
             .colour = {f + 1, f + 2, f + 3},
             .colourStrength = f + 4,
             .tint = {f + 5, f + 6, f + 7},
             .intensity = f + 8,
             .size = f + 9,
             .contrast = f + 10,
             .spareReal = f + 11,
             .rimColour = {f + 12, f + 13, f + 14},
             .rimColourStrength = f + 15,
             .edgeIntensity = f + 16,
             .edgeWidth = f + 17,
             .active = n + 18,
             .exponent = f + 19,
             .contrastLow = f + 20,
             .contrastHigh = f + 21,
             .useEdge = n + 22,
             .roughness = f + 23};
  }
  void FillBlock() {
    block = {.dialogWords = {1, 2, 3},
             .previewChannel = 4,
             .moreDialogWords = {5, 6, 7},
             .previewObject = 8,
             .previewBusy = 1,
             .previewAuto = 0,
             .changed = 1,
             .nested = 1,
             .activePage = 12,
             .diffuseOn = 13,
             .layerOn = {14, 15, 16},
             .anisotropyOn = 17,
             .layers = {},
             .diffuseColour = {18, 19, 20},
             .diffuseStrength = 2,
             .diffuseTint = {36, 38, 40},  // the colour times its strength
             .orenNayar = 22,
             .sigma = 23,
             .diffuseLevel = 24,
             .diffuseContrast = 25,
             .diffuseActive = 26,
             .diffuseLow = 27,
             .diffuseHigh = 28,
             .anisotropyMode = 29,
             .anisotropyScale = 30,
             .anisotropyX = 31,
             .anisotropyY = 32,
             .anisotropyActive = 33,
             .spareLong = 34,
             .scratchAmplitude = 35,
             .scratchScaleU = 36,
             .scratchScaleV = 37,
             .scratchFade = 38,
             .scratchActive = 39,
             .scratchOnLayer = {40, 41, 42},
             .orenA = 43,
             .orenB = 44,
             .sigma2 = 45};
    for (int i = 0; i < 3; ++i) FillLayer(i, block.layers[i]);
  }

  static Values StoredLayerValues(int i) {
    const int n = 100 * (i + 1);
    const auto f = static_cast<float>(n);
    return {Int(n),
            Vec(f + 1, f + 2, f + 3),
            Float(f + 4),
            Vec(f + 5, f + 6, f + 7),
            Float(f + 8),
            Float(f + 9),
            Float(f + 10),
            Float(f + 11),
            Vec(f + 12, f + 13, f + 14),
            Float(f + 15),
            Float(f + 16),
            Float(f + 17),
            Int(n + 18),    // active
            Float(f + 19),  // exponent
            Float(f + 23),  // roughness stands before the contrast's window
            Float(f + 20),
            Float(f + 21),
            Int(n + 22)};
  }
  static Values Together(std::initializer_list<Values> parts) {
    Values all;
    for (const Values& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
  }
  // What a file of the filled block holds.
  static Values StoredValues(std::int32_t marker = 20000729) {
    return Together(
        {{Int(marker), Int(8), Bool(true), Bool(true), Bool(false)},  // changed before busy, auto
         {Int(12), Int(13), Int(14), Int(15), Int(16), Int(17)},
         StoredLayerValues(0),
         StoredLayerValues(1),
         StoredLayerValues(2),
         {Vec(18, 19, 20), Float(2), Int(22), Float(23), Float(45), Float(43), Float(44)},
         {Float(24), Float(25), Int(26), Float(27), Float(28)},
         {Int(29), Float(30), Float(31), Float(32), Int(33)},
         {Float(35), Float(36), Float(37), Float(38)},
         {Int(40), Int(41), Int(42), Int(39)}});
  }
  // What a file of the first form holds.
  static Values FirstForm() {
    return {Int(20000728), Int(5),      Int(1),      Float(0.5f), Float(0.25f),
            Float(0.125f), Float(0.9f), Float(0.3f), Float(1.5f), Vec(0.2f, 0.4f, 0.6f),
            Bool(false),   Bool(true),  Bool(false)};
  }
  void ReadFile(const Values& values) {
    FakeStream stream;
    stream.values = values;
    stream.values.push_back(Int(4711));
    EXPECT_EQ(shader.record.Read(&shader.instance, stream.handle()), 1);
    EXPECT_EQ(stream.mismatches, 0);
    EXPECT_EQ(stream.position, values.size()) << "the next object starts here";
  }
  bool BlocksEqual(const LumasBlock& a, const LumasBlock& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
  }
};

TEST_F(LumasDataTest, FillsAllCallbacks) {
  const ShaderRecord& record = shader.record;
  EXPECT_NE(record.Alloc, nullptr);
  EXPECT_NE(record.Free, nullptr);
  EXPECT_NE(record.Copy, nullptr);
  EXPECT_NE(record.Compare, nullptr);
  EXPECT_NE(record.Read, nullptr);
  EXPECT_NE(record.Write, nullptr);
  EXPECT_NE(record.Edit, nullptr);
  EXPECT_NE(record.Message, nullptr);
  EXPECT_NE(record.InitRender, nullptr);
  EXPECT_NE(record.FreeRender, nullptr);
  EXPECT_NE(record.Output, nullptr);
  ASSERT_NE(record.GetInfo, nullptr);
  EXPECT_EQ(record.GetInfo(), 0x0020000Eu);
}

// --- Alloc ---

TEST_F(LumasDataTest, AllocStoresTheDefaults) {
  EXPECT_EQ(block.dialogWords[0], 0);
  EXPECT_EQ(block.previewChannel, -1);
  EXPECT_EQ(block.moreDialogWords[2], 0);
  EXPECT_EQ(block.previewObject, 1);
  EXPECT_EQ(block.previewBusy, 0);
  EXPECT_EQ(block.previewAuto, 1);
  EXPECT_EQ(block.changed, 1);
  EXPECT_EQ(block.nested, 0);
  EXPECT_EQ(block.activePage, 23015);
  EXPECT_EQ(block.diffuseOn, 1);
  for (const std::int32_t on : block.layerOn) EXPECT_EQ(on, 1);
  EXPECT_EQ(block.anisotropyOn, 0);
  ExpectExactly(block.diffuseColour, {1, 0.01f, 0.01f});
  EXPECT_EQ(block.diffuseStrength, 1);
  EXPECT_EQ(block.orenNayar, 0);
  EXPECT_EQ(block.sigma, 1);
  EXPECT_EQ(block.diffuseLevel, 0.6f);
  EXPECT_EQ(block.diffuseContrast, 0);
  EXPECT_EQ(block.anisotropyMode, 2);
  EXPECT_EQ(block.anisotropyScale, 1);
  EXPECT_EQ(block.anisotropyX, 7);
  EXPECT_EQ(block.anisotropyY, 1);
  EXPECT_EQ(block.spareLong, 0);
  EXPECT_EQ(block.scratchAmplitude, 0.5f);
  EXPECT_EQ(block.scratchScaleU, 2);
  EXPECT_EQ(block.scratchScaleV, 0.2f);
  EXPECT_EQ(block.scratchFade, 1);
  for (const std::int32_t on : block.scratchOnLayer) EXPECT_EQ(on, 1);
}

TEST_F(LumasDataTest, AllocStoresTheDefaultsOfEachLayer) {
  const struct {
    Vector colour;
    float intensity, size, edgeIntensity, edgeWidth;
  } expected[] = {{{1, 1, 1}, 1.25f, 0.005f, 2, 1},
                  {{1, 0.5f, 0.5f}, 0.5f, 0.05f, 2, 0.5f},
                  {{1, 0, 0}, 0.5f, 0.85f, 0.75f, 0.5f}};
  for (int i = 0; i < 3; ++i) {
    const SpecularLayer& layer = block.layers[i];
    EXPECT_EQ(layer.useAnisotropy, 1);
    ExpectExactly(layer.colour, expected[i].colour);
    EXPECT_EQ(layer.colourStrength, 1);
    EXPECT_EQ(layer.intensity, expected[i].intensity);
    EXPECT_EQ(layer.size, expected[i].size);
    EXPECT_EQ(layer.contrast, 0);
    EXPECT_EQ(layer.spareReal, 0);
    ExpectExactly(layer.rimColour, expected[i].colour);
    EXPECT_EQ(layer.rimColourStrength, 1);
    EXPECT_EQ(layer.edgeIntensity, expected[i].edgeIntensity);
    EXPECT_EQ(layer.edgeWidth, expected[i].edgeWidth);
  }
}

// The fixture's spline answers its argument, so roughness shows which position was looked up:
// layer 1: (20 * 0.005)^-log2(0.7) * 0.11 = 0.1^0.5145732 * 0.11 = 0.3057922 * 0.11 = 0.0336371;
// layer 2: 10 * 0.05 = 0.5; layer 3: 0.5 * 0.85 = 0.425.
TEST_F(LumasDataTest, AllocDerivesTheRest) {
  const float exponents[] = {400, 40, 2.352941f};  // 2 / size
  const float roughness[] = {0.0336371f, 0.5f, 0.425f};
  for (int i = 0; i < 3; ++i) {
    const SpecularLayer& layer = block.layers[i];
    ExpectExactly(layer.tint, layer.colour);
    EXPECT_EQ(layer.active, 1);
    EXPECT_EQ(layer.useEdge, 1);
    EXPECT_NEAR(layer.exponent, exponents[i], 1e-4);
    EXPECT_EQ(layer.contrastLow, 0);
    EXPECT_EQ(layer.contrastHigh, 1);
    EXPECT_NEAR(layer.roughness, roughness[i], 1e-6);
  }
  ExpectExactly(block.diffuseTint, {1, 0.01f, 0.01f});
  EXPECT_EQ(block.diffuseActive, 1);
  EXPECT_EQ(block.diffuseLow, 0);
  EXPECT_EQ(block.diffuseHigh, 1);
  EXPECT_EQ(block.anisotropyActive, 0);
  EXPECT_EQ(block.sigma2, 1);
  EXPECT_NEAR(block.orenA, 0.62406, 1e-6);  // 1 - 0.5 / 1.33
  EXPECT_NEAR(block.orenB, 0.41284, 1e-5);  // 0.45 / 1.09
}

// Though amplitude, scales and layers would make it 1.
TEST_F(LumasDataTest, ScratchesAreOffInANewBlock) { EXPECT_EQ(block.scratchActive, 0); }

TEST_F(LumasDataTest, AllocWithoutMemoryAnswers0AndLeavesNothing) {
  const int blocks = host.liveBlocks();
  ShaderInstance other = {};
  host.failAllocation = 1;
  EXPECT_EQ(shader.record.Alloc(&other), 0);
  EXPECT_EQ(other.data, nullptr);
  EXPECT_EQ(host.liveBlocks(), blocks);
}

TEST_F(LumasDataTest, EditConfirmsNothing) { EXPECT_EQ(shader.record.Edit(&shader.instance), 0); }

// --- the saved forms ---

TEST_F(LumasDataTest, WriteStoresTheFieldsInFileOrder) {
  FillBlock();
  FakeStream stream;
  EXPECT_EQ(shader.record.Write(&shader.instance, stream.handle()), 1);
  EXPECT_EQ(stream.values, StoredValues());
}

TEST_F(LumasDataTest, WriteThenReadGivesAnEqualBlock) {
  FillBlock();
  const LumasBlock filled = block;
  ShaderUnderTest other(started, PluginIdLumas);
  LumasBlock& read = other.block<LumasBlock>();
  FakeStream stream;
  shader.record.Write(&shader.instance, stream.handle());
  EXPECT_EQ(other.record.Read(&other.instance, stream.handle()), 1);
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
  EXPECT_TRUE(BlocksEqual(block, filled));
  EXPECT_EQ(read.spareLong, 0) << "never saved";
  EXPECT_EQ(read.nested, 0) << "never saved";
  EXPECT_EQ(read.previewChannel, -1) << "never saved";
}

TEST_F(LumasDataTest, ReadsItsOwnFormToTheEnd) {
  ReadFile(StoredValues());
  EXPECT_EQ(block.activePage, 12);
  EXPECT_EQ(block.layers[2].useEdge, 322);
  EXPECT_EQ(block.scratchActive, 39);
}

TEST_F(LumasDataTest, NewerMarkersAreReadAsTheNewestKnown) {
  ReadFile(StoredValues(INT32_MAX));
  EXPECT_EQ(block.scratchActive, 39);
}

// The tint is the one derived value that a file does not hold: 18, 19, 20 times 2.
TEST_F(LumasDataTest, ReadRecomputesTheDiffuseTint) {
  ReadFile(StoredValues());
  ExpectExactly(block.diffuseTint, {36, 38, 40});
}

TEST_F(LumasDataTest, ReadsTheFirstForm) {
  ReadFile(FirstForm());
  EXPECT_EQ(block.previewObject, 5);
  EXPECT_EQ(block.orenNayar, 1);
  EXPECT_EQ(block.diffuseLevel, 0.5f);
  EXPECT_EQ(block.sigma, 0.25f);
  EXPECT_EQ(block.sigma2, 0.125f);
  EXPECT_EQ(block.orenA, 0.9f);
  EXPECT_EQ(block.orenB, 0.3f);
  EXPECT_EQ(block.diffuseContrast, 1.5f);
  ExpectExactly(block.diffuseColour, {0.2f, 0.4f, 0.6f});
  EXPECT_EQ(block.changed, 0);
  EXPECT_EQ(block.previewBusy, 1);
  EXPECT_EQ(block.previewAuto, 0);
}

TEST_F(LumasDataTest, TheFirstFormHasAPlainColourAndNoHighlights) {
  FillBlock();
  ReadFile(FirstForm());
  EXPECT_EQ(block.diffuseStrength, 1);
  ExpectExactly(block.diffuseTint, {0.2f, 0.4f, 0.6f});
  for (const std::int32_t on : block.layerOn) EXPECT_EQ(on, 0);
  for (const SpecularLayer& layer : block.layers) EXPECT_EQ(layer.active, 0);
  EXPECT_EQ(block.diffuseOn, 13) << "not held by the file";
  EXPECT_EQ(block.layers[1].intensity, 208) << "not held by the file";
}

TEST_F(LumasDataTest, OlderMarkersAreAcceptedWithNothingRead) {
  for (const std::int32_t marker : {20000727, 0, -1, INT32_MIN}) {
    FillBlock();
    block.diffuseTint = {7, 7, 7};
    const LumasBlock before = block;
    FakeStream stream;
    stream.values = {Int(marker), Int(5), Int(1)};
    EXPECT_EQ(shader.record.Read(&shader.instance, stream.handle()), 1);
    EXPECT_EQ(stream.position, 1u);
    EXPECT_TRUE(BlocksEqual(block, before)) << marker;
  }
}

TEST_F(LumasDataTest, AnEndedStreamLeavesTheOtherFieldsAlone) {
  FillBlock();
  FakeStream stream;
  stream.values = {Int(20000729), Int(3), Bool(false)};
  EXPECT_EQ(shader.record.Read(&shader.instance, stream.handle()), 1);
  EXPECT_EQ(block.previewObject, 3);
  EXPECT_EQ(block.changed, 0);
  EXPECT_EQ(block.activePage, 12);
  EXPECT_EQ(block.scratchOnLayer[2], 42);
}

TEST_F(LumasDataTest, WithoutABlockEveryCallbackAnswersNeutrally) {
  ShaderInstance none = {};
  FakeStream stream;
  stream.values = {Int(20000729)};
  FakeContainer payload;
  EXPECT_EQ(shader.record.Read(&none, stream.handle()), 0);
  EXPECT_EQ(shader.record.Write(&none, stream.handle()), 0);
  EXPECT_EQ(shader.record.Copy(&none, &shader.instance), 0);
  EXPECT_EQ(shader.record.Copy(&shader.instance, &none), 0);
  EXPECT_EQ(shader.record.Compare(&none, &shader.instance), 0);
  EXPECT_EQ(shader.record.Message(&none, MessageGetParameters, payload.handle()), 1);
  EXPECT_TRUE(payload.entries.empty());
  const RenderInit init = {&render, nullptr};
  EXPECT_EQ(shader.record.InitRender(&none, &init), 0);
  EXPECT_EQ(none.slots, nullptr);
  Vector colour = {9, 9, 9};
  shader.record.Output(&colour, &none, &sample);
  ExpectExactly(colour, {0, 0, 0});
}

// --- messages ---

TEST_F(LumasDataTest, EveryKeyAnswersItsValueAndItsTypeWord) {
  FillBlock();
  const Word integer = DescribeInteger, real = DescribeReal;
  std::vector<ParameterRow> rows = {
      {1000, integer, Word{13}}, {1001, integer, Word{14}}, {1002, integer, Word{15}},
      {1003, integer, Word{16}}, {1004, integer, Word{17}}, {1053, real, Vector{18, 19, 20}},
      {1054, real, 2.0f},        {1056, integer, Word{22}}, {1057, real, 23.0f},
      {1058, real, 24.0f},       {1059, real, 25.0f},       {1063, integer, Word{29}},
      {1064, real, 30.0f},       {1065, real, 31.0f},       {1066, real, 32.0f},
      {1068, integer, Word{34}}, {1069, real, 35.0f},       {1070, real, 36.0f},
      {1071, real, 37.0f},       {1072, real, 38.0f},       {1074, integer, Word{40}},
      {1075, integer, Word{41}}, {1076, integer, Word{42}}};
  for (int i = 0; i < 3; ++i) {
    const std::int32_t base = 1005 + 16 * i;
    const auto f = static_cast<float>(100 * (i + 1));
    rows.insert(rows.end(), {{base, integer, Word{100 * (i + 1)}},
                             {base + 1, real, Vector{f + 1, f + 2, f + 3}},
                             {base + 2, real, f + 4},
                             {base + 4, real, f + 8},
                             {base + 5, real, f + 9},
                             {base + 6, real, f + 10},
                             {base + 7, real, f + 11},
                             {base + 8, real, f + 16},
                             {base + 9, real, f + 17}});
  }
  ExpectParameters(shader, rows, {});
}

// All but the parameters stay: what follows from them is stale until it is derived anew.
TEST_F(LumasDataTest, ImportedValuesLeaveDerivedFieldsStale) {
  ShaderUnderTest other(started, PluginIdLumas);
  LumasBlock& taken = other.block<LumasBlock>();
  const LumasBlock fresh = taken;
  FillBlock();
  FakeContainer container;
  shader.Message(MessageGetParameters, container);
  EXPECT_EQ(other.Message(MessageSetParameters, container), 1);
  EXPECT_EQ(taken.layers[1].intensity, 208);
  EXPECT_EQ(taken.sigma, 23);
  EXPECT_EQ(taken.anisotropyOn, 17);

  EXPECT_EQ(taken.sigma2, fresh.sigma2);
  EXPECT_EQ(taken.orenA, fresh.orenA);
  EXPECT_EQ(taken.orenB, fresh.orenB);
  EXPECT_EQ(taken.anisotropyActive, fresh.anisotropyActive);
  EXPECT_EQ(taken.diffuseLow, fresh.diffuseLow);
  ExpectExactly(taken.diffuseTint, fresh.diffuseTint);
  for (int i = 0; i < 3; ++i) {
    ExpectExactly(taken.layers[i].tint, fresh.layers[i].tint);
    EXPECT_EQ(taken.layers[i].exponent, fresh.layers[i].exponent);
    EXPECT_EQ(taken.layers[i].roughness, fresh.layers[i].roughness);
    EXPECT_EQ(taken.layers[i].contrastLow, fresh.layers[i].contrastLow);
    EXPECT_EQ(taken.layers[i].useEdge, fresh.layers[i].useEdge);
  }
}

TEST_F(LumasDataTest, GetThenSetTakesEveryExchangedField) {
  ShaderUnderTest other(started, PluginIdLumas);
  FillBlock();
  FakeContainer first, second;
  shader.Message(MessageGetParameters, first);
  other.Message(MessageSetParameters, first);
  other.Message(MessageGetParameters, second);
  ASSERT_EQ(first.entries.size(), second.entries.size());
  for (const FakeContainer::Entry& entry : first.entries) {
    EXPECT_TRUE(SameValue(*second.Find(entry.key), entry.value)) << entry.key;
  }
}

// The gaps between the keys of a layer, and around all of them.
TEST_F(LumasDataTest, UnknownKeysAreSkippedAndTheNextIsTaken) {
  const LumasBlock before = block;
  FakeContainer container;
  for (const std::int32_t key : {999, 1008, 1015, 1020, 1024, 1040, 1047, 1055, 1060, 1062, 1067,
                                 1073, 1077, 0, INT32_MIN, INT32_MAX}) {
    container.Set(key, 5.0f);
  }
  EXPECT_EQ(shader.Message(MessageSetParameters, container), 1);
  EXPECT_TRUE(BlocksEqual(block, before));
  container.Set(1076, Word{0});
  shader.Message(MessageSetParameters, container);
  EXPECT_EQ(block.scratchOnLayer[2], 0);
}

TEST_F(LumasDataTest, AnEmptyContainerOrAnUnknownMessageChangesNothing) {
  FillBlock();
  const LumasBlock before = block;
  FakeContainer empty, full;
  full.Set(1000, Word{0});
  EXPECT_EQ(shader.Message(MessageSetParameters, empty), 1);
  for (const std::int32_t id : {0, 112002, 112004, 112005, -1}) {
    EXPECT_EQ(shader.Message(id, full), 1) << id;
  }
  EXPECT_TRUE(BlocksEqual(block, before));
}

TEST_F(LumasDataTest, ReportSlotsTellsTheArrayAndItsStride) {
  BeginRender(2);
  FakeContainer container;
  EXPECT_EQ(shader.Message(MessageReportSlots, container), 1);
  EXPECT_NE(shader.instance.slots, nullptr);
  EXPECT_EQ(std::get<Word>(*container.Find(12000)), reinterpret_cast<Word>(shader.instance.slots));
  EXPECT_EQ(std::get<Word>(*container.Find(12001)), 296);
}

// --- Copy and Compare ---

TEST_F(LumasDataTest, CopyTakesAllFromPreviewObjectOnAndClearsNested) {
  FillBlock();
  ShaderUnderTest other(started, PluginIdLumas);
  LumasBlock& copy = other.block<LumasBlock>();
  copy.dialogWords[1] = 77;
  copy.moreDialogWords[2] = 78;
  copy.nested = 1;
  EXPECT_EQ(shader.record.Copy(&shader.instance, &other.instance), 1);
  LumasBlock expected = block;
  expected.nested = 0;
  // The dialog of the destination keeps its own words.
  expected.dialogWords[0] = 0;
  expected.dialogWords[1] = 77;
  expected.dialogWords[2] = 0;
  expected.previewChannel = -1;
  expected.moreDialogWords[0] = expected.moreDialogWords[1] = 0;
  expected.moreDialogWords[2] = 78;
  EXPECT_TRUE(BlocksEqual(copy, expected));
  EXPECT_EQ(block.nested, 1) << "the source keeps its own";
}

// Every member of a layer: a change of it must show.
std::vector<std::function<void(SpecularLayer&)>> LayerChanges() {
  using L = SpecularLayer;
  return {[](L& l) { l.useAnisotropy = 0; },  [](L& l) { l.colour.y = 9; },
          [](L& l) { l.colourStrength = 9; }, [](L& l) { l.tint.z = 9; },
          [](L& l) { l.intensity = 9; },      [](L& l) { l.size = 9; },
          [](L& l) { l.contrast = 9; },       [](L& l) { l.spareReal = 9; },
          [](L& l) { l.rimColour.x = 9; },    [](L& l) { l.rimColourStrength = 9; },
          [](L& l) { l.edgeIntensity = 9; },  [](L& l) { l.edgeWidth = 9; },
          [](L& l) { l.active = 9; },         [](L& l) { l.exponent = 9; },
          [](L& l) { l.contrastLow = 9; },    [](L& l) { l.contrastHigh = 9; },
          [](L& l) { l.useEdge = 9; },        [](L& l) { l.roughness = NAN; }};
}

TEST_F(LumasDataTest, CompareSeesEveryPersistedAndDerivedField) {
  using B = LumasBlock;
  std::vector<Change> changes = {[](B& b) { b.previewObject = 9; },
                                 [](B& b) { b.previewBusy = 1; },
                                 [](B& b) { b.previewAuto = 0; },
                                 [](B& b) { b.changed = 0; },
                                 [](B& b) { b.activePage = 9; },
                                 [](B& b) { b.diffuseOn = 0; },
                                 [](B& b) { b.layerOn[0] = 0; },
                                 [](B& b) { b.layerOn[1] = 0; },
                                 [](B& b) { b.layerOn[2] = 0; },
                                 [](B& b) { b.anisotropyOn = 9; },
                                 [](B& b) { b.diffuseColour.z = 9; },
                                 [](B& b) { b.diffuseStrength = 9; },
                                 [](B& b) { b.diffuseTint.x = 9; },
                                 [](B& b) { b.orenNayar = 9; },
                                 [](B& b) { b.sigma = 9; },
                                 [](B& b) { b.diffuseLevel = 9; },
                                 [](B& b) { b.diffuseContrast = 9; },
                                 [](B& b) { b.diffuseActive = 9; },
                                 [](B& b) { b.diffuseLow = 9; },
                                 [](B& b) { b.diffuseHigh = 9; },
                                 [](B& b) { b.anisotropyMode = 9; },
                                 [](B& b) { b.anisotropyScale = 9; },
                                 [](B& b) { b.anisotropyX = 9; },
                                 [](B& b) { b.anisotropyY = 9; },
                                 [](B& b) { b.anisotropyActive = 9; },
                                 [](B& b) { b.scratchAmplitude = 9; },
                                 [](B& b) { b.scratchScaleU = 9; },
                                 [](B& b) { b.scratchScaleV = 9; },
                                 [](B& b) { b.scratchFade = 9; },
                                 [](B& b) { b.scratchActive = 9; },
                                 [](B& b) { b.scratchOnLayer[0] = 9; },
                                 [](B& b) { b.scratchOnLayer[1] = 9; },
                                 [](B& b) { b.scratchOnLayer[2] = 9; },
                                 [](B& b) { b.orenA = 9; },
                                 [](B& b) { b.orenB = 9; },
                                 [](B& b) { b.sigma2 = 9; }};
  for (int i = 0; i < 3; ++i) {
    for (const auto& change : LayerChanges()) {
      changes.push_back([i, change](B& b) { change(b.layers[i]); });
    }
  }
  ShaderUnderTest other(started, PluginIdLumas);
  LumasBlock& changed = other.block<LumasBlock>();
  const LumasBlock defaults = changed;
  EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
  for (std::size_t i = 0; i < changes.size(); ++i) {
    changed = defaults;
    changes[i](changed);
    EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 0) << i;
  }
}

TEST_F(LumasDataTest, CompareLeavesOutTheDialogNestingAndTheSpare) {
  const Change ignored[] = {
      [](LumasBlock& b) { b.dialogWords[0] = 9; }, [](LumasBlock& b) { b.previewChannel = 9; },
      [](LumasBlock& b) { b.moreDialogWords[2] = 9; }, [](LumasBlock& b) { b.nested = 1; },
      [](LumasBlock& b) { b.spareLong = 9; }};
  ShaderUnderTest other(started, PluginIdLumas);
  for (const Change& change : ignored) {
    change(other.block<LumasBlock>());
    EXPECT_EQ(shader.record.Compare(&shader.instance, &other.instance), 1);
  }
}

// --- slots ---

TEST_F(LumasDataTest, InitRenderMakesClearedSlotsForEveryCpu) {
  BeginRender(3);
  const auto* bytes = static_cast<const unsigned char*>(shader.instance.slots);
  for (int i = 0; i < 3 * 296; ++i) ASSERT_EQ(bytes[i], 0) << i;
  shader.record.FreeRender(&shader.instance);
  EXPECT_EQ(shader.instance.slots, nullptr);
  shader.record.FreeRender(&shader.instance);
}

TEST_F(LumasDataTest, WithoutMemoryForSlotsTheRenderGoesOn) {
  const int blocks = host.liveBlocks();
  host.failAllocation = 1;
  const RenderInit init = {&render, nullptr};
  EXPECT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
  EXPECT_EQ(shader.instance.slots, nullptr);
  EXPECT_EQ(host.messages, std::vector<std::string>{"Couldn't Allocate Globals"});
  EXPECT_EQ(host.liveBlocks(), blocks);
}

TEST_F(LumasDataTest, WithoutARenderNoSlotsAreMade) {
  const RenderInit init = {nullptr, nullptr};
  EXPECT_EQ(shader.record.InitRender(&shader.instance, &init), 0);
  EXPECT_EQ(shader.instance.slots, nullptr);
}

}  // namespace
}  // namespace sorvanix::test
