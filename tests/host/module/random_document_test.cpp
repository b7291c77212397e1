// Documents of random blocks: what a shader stores is drawn value by value, the fields without a
// key and the shaders in its inputs too, so that a block holds what no dialog would let it have.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <cmath>

#include "host/scene/binary_document.h"
#include "host/services/stream_json.h"
#include "tests/host/module/documents.h"

namespace sorvanix::host::test {
namespace {

using Values = std::vector<StreamValue>;

constexpr int kDepth = 2;  // shaders behind the outermost one

// Any float at all, every NaN too.
float AnyFloat() {
  return *rc::gen::oneOf(
      rc::gen::map(rc::gen::arbitrary<std::uint32_t>(),
                   [](std::uint32_t bits) { return std::bit_cast<float>(bits); }),
      rc::gen::element(0.0f, -0.0f, 1e-45f, 3e38f, INFINITY, -INFINITY, NAN, -NAN, 0.1f));
}

// Texts and names that a form of text might stumble over.
std::string AnyText() {
  return *rc::gen::element<std::string>("", " ", "Lamp", "\"\\/", "\n\t\x01\x7f",
                                        "\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80", "null", "NaN",
                                        "C:\\a\\b", "{\"int\": 5}", std::string(999, 'x'));
}

struct RandomDocuments : Documents {
  Values Stored(const Shader& shader) {
    Stream stream;
    shader.Write(stream);
    return stream.Values();
  }
  Shader New(std::int32_t id) { return *module.Create(id, ChannelColour); }

  // What a shader stores with so many knots in its ramp, if it has one.
  Values StoredWithKnots(std::int32_t id, std::int32_t knots) {
    Shader shader = New(id);
    Container parameters;
    for (const ShaderParameter& parameter : catalogue.Find(id)->parameters) {
      if (parameter.type == ParameterType::Ramp) parameters.Set(parameter.ramp.count, Word{knots});
    }
    shader.SetParameters(parameters);
    return Stored(shader);
  }

  StreamLink RandomLink(int depth) {
    const int what = *rc::gen::inRange(0, 4);
    if (what == 0 || depth == kDepth) return {};
    if (what == 1) return {StreamLink::kBitmap, AnyText(), {}};
    const auto& shaders = module.Shaders().All();
    const std::int32_t id = shaders[*rc::gen::inRange<std::size_t>(0, shaders.size())]->id;
    return {id, {}, RandomValues(id, depth + 1)};
  }

  void Randomise(StreamValue& value, int depth) {
    struct Visitor {
      RandomDocuments& self;
      int depth;
      void operator()(std::int32_t& number) const {
        number = *rc::gen::oneOf(rc::gen::inRange(-2, 60), rc::gen::arbitrary<std::int32_t>());
      }
      void operator()(float& number) const { number = AnyFloat(); }
      void operator()(bool& truth) const { truth = *rc::gen::arbitrary<bool>(); }
      void operator()(Vector& vector) const { vector = {AnyFloat(), AnyFloat(), AnyFloat()}; }
      void operator()(Matrix& matrix) const {
        for (Vector* row : {&matrix.off, &matrix.v1, &matrix.v2, &matrix.v3}) (*this)(*row);
      }
      void operator()(std::string& text) const { text = AnyText(); }
      void operator()(StreamLink& link) const { link = self.RandomLink(depth); }
    };
    std::visit(Visitor{*this, depth}, value.value);
  }

  // All but the marker and the number of knots, which say how the others are to be read.
  Values RandomValues(std::int32_t id, int depth) {
    const std::int32_t knots = *rc::gen::oneOf(rc::gen::inRange(0, 51), rc::gen::just(50));
    Values values = StoredWithKnots(id, knots);
    const Values other = StoredWithKnots(id, knots == 50 ? 49 : knots + 1);
    std::size_t count = 0;
    while (count < values.size() && values[count] == other[count]) ++count;
    for (std::size_t i = 1; i < values.size(); ++i) {
      if (i != count) Randomise(values[i], depth);
    }
    return values;
  }
};

// The document as its binary form brings it back.
std::string ThroughBinary(const std::string& text) {
  const std::string bytes = WriteBinaryDocument(ParseJson(text).value());
  const Json read = ReadBinaryDocument(bytes).value();
  EXPECT_EQ(WriteBinaryDocument(read), bytes);
  return WriteJson(read) + '\n';
}

TEST_F(RandomDocuments, ComeBackBitForBitInBothForms) {
  for (const auto& registered : module.Shaders().All()) {
    if (registered->id == PluginIdBuffy) continue;  // has no block, and compares as unequal
    SCOPED_TRACE(registered->name);
    rc::detail::checkGTest([&] {
      const auto scene = SceneWith(registered->id);
      Shader& shader = ShaderOf(*scene);
      Stream random(RandomValues(registered->id, 0));
      RC_ASSERT(shader.Read(random));
      // Fusion alone writes values behind what it reads: its form has a gap.
      RC_ASSERT(random.AtEnd() == (registered->id != PluginIdFusion));

      const std::string saved = Save(*scene);
      RC_ASSERT(ThroughBinary(saved) == saved);
      const auto again = Load(saved);
      RC_ASSERT(again != nullptr);
      RC_ASSERT(ChannelOf(*again).link != nullptr);
      RC_ASSERT(warnings.empty());
      RC_ASSERT(Stored(ShaderOf(*again)) == Stored(shader));
      // A NaN equals nothing, not even itself.
      RC_ASSERT(ShaderOf(*again).Equals(shader) == shader.Equals(shader));
      RC_ASSERT(Save(*again) == saved);
    });
  }
}

TEST_F(RandomDocuments, HoldRampsOf50KnotsAndShadersTwoDeep) {
  bool hasFullRamp = false, isDeep = false;
  rc::detail::checkGTest([&] {
    const Values ramp = RandomValues(PluginIdGradient, 0);
    hasFullRamp |= ramp.size() == StoredWithKnots(PluginIdGradient, 50).size();
    for (const StreamValue& value : RandomValues(PluginIdFusion, 0)) {
      const auto* link = std::get_if<StreamLink>(&value.value);
      for (const StreamValue& inner : link == nullptr ? Values() : link->values) {
        const auto* next = std::get_if<StreamLink>(&inner.value);
        isDeep |= next != nullptr && next->pluginId > 0;
      }
    }
  });
  EXPECT_TRUE(hasFullRamp);
  EXPECT_TRUE(isDeep);
}

}  // namespace
}  // namespace sorvanix::host::test
