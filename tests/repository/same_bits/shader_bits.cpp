// Every shader of the registry: with its defaults and with other values within its dialog's limits,
// without a render and within one, as a colour and as a bump.
#include <algorithm>

#include "module/shell/registry.h"
#include "tests/repository/same_bits/exact_noise.h"
#include "tests/repository/same_bits/test_scene.h"
#include "tests/support/fake_scene.h"
#include "tests/support/loaded_module.h"

namespace sorvanix::test {

namespace {

/// The name of the scene's one object.
constexpr const char* kObject = "goal";

/// The choice that decides most about the picture: the field with the most values to choose from.
const Field* GreatestChoice(const ShaderTable& table) {
  const Field* greatest = nullptr;
  for (const Field& field : table.fields) {
    if (field.key != kNotExchanged && field.choices.size() > 2 &&
        (greatest == nullptr || field.choices.size() > greatest->choices.size())) {
      greatest = &field;
    }
  }
  return greatest;
}

/// Another value for a parameter, in the form in which it was asked for.
FakeValue AnotherValue(const Field& field, const FakeValue& value, Inputs& inputs) {
  const double low = std::max(field.limits.given() ? field.limits.minimum : 0.0, -1.0);
  const double high = std::min(field.limits.given() ? field.limits.maximum : 1.0, 3.0);
  if (!field.choices.empty()) {
    const auto chosen = static_cast<std::size_t>(inputs.Below(field.choices.size()));
    return Word{field.choices[chosen].value};
  }
  if (std::holds_alternative<float>(value)) return inputs.Between(low, high);
  if (std::holds_alternative<Vector>(value)) return inputs.Point(0, 1);
  if (std::holds_alternative<bool>(value)) return inputs.Below(2) == 1;
  if (std::holds_alternative<Word>(value)) return Word{inputs.Below(2)};
  if (std::holds_alternative<std::string>(value)) return std::string(kObject);
  return value;
}

class ShaderRecording {
 public:
  ShaderRecording(Recorder& recorder, const StartedModule& started, const RegistryRow& row)
      : recorder_(recorder), started_(started), row_(row), table_(*row.table) {
    FakeObject& object = scene_.Add(kObject);
    object.infoFlags = ObjectHasGeometry;
    for (int i = 0; i < 20; ++i) object.points.push_back(inputs_.Point(-100, 100));
  }

  void Run() {
    const Field* choice = GreatestChoice(table_);
    const std::size_t count = choice == nullptr ? 1 : choice->choices.size();
    samples_ = std::max(60, kInputsEach / static_cast<int>(2 * count));
    for (std::size_t i = 0; i < count; ++i) {
      for (const bool varied : {false, true}) {
        std::string subject = "shader " + std::string(table_.name);
        if (choice != nullptr) {
          subject += std::string(" ") + choice->name + " " + choice->choices[i].name;
        }
        recorder_.Begin(subject + (varied ? ", varied" : ""));
        for (const std::int32_t channel : {ChannelColour, ChannelBump}) {
          ShaderUnderTest shader(started_, row_.pluginId, channel);
          if (varied) Vary(shader);
          if (choice != nullptr) Set(shader, choice->key, Word{choice->choices[i].value});
          FillLinks(shader, varied);
          Sample(shader);
        }
      }
    }
  }

 private:
  static void Set(ShaderUnderTest& shader, std::int32_t key, FakeValue value) {
    FakeContainer values;
    values.Set(key, std::move(value));
    shader.Message(MessageSetParameters, values);
  }

  void Vary(ShaderUnderTest& shader) {
    if (table_.fields.empty()) return;
    FakeContainer values;
    shader.Message(MessageGetParameters, values);
    for (const Field& field : table_.fields) {
      if (field.key == kNotExchanged || field.kind == ValueKind::Link) continue;
      if (const FakeValue* value = values.Find(field.key)) {
        Set(shader, field.key, AnotherValue(field, *value, inputs_));
      }
    }
  }

  /// Gives the inputs a bitmap, or a real shader that the filter writes footprints to.
  void FillLinks(ShaderUnderTest& shader, bool real) {
    nested_.clear();
    for (const Field& field : table_.fields) {
      if (field.kind != ValueKind::Link) continue;
      auto* place = static_cast<char*>(shader.instance.data) + field.offset;
      ScriptedLink& link = ScriptedLink::Of(*reinterpret_cast<ChannelLink**>(place));
      if (real) {
        nested_.push_back(std::make_unique<ShaderUnderTest>(started_, PluginIdNoise2D));
        link.HoldShader(*nested_.back(), PluginIdNoise2D);
      } else {
        link.HoldBitmap(64, 32);
        link.content.show = [](const LinkRead& read) {
          const auto grey = static_cast<float>(ExactNoise({4 * read.uvw.x, 4 * read.uvw.y, 0}, 0));
          return Vector{grey, 1 - grey, 0.5f};
        };
      }
    }
  }

  void Sample(ShaderUnderTest& shader) {
    ChannelSample sample = {};
    sample.delta = {0.01f, 0.01f, 0};
    sample.blurScale = 1;
    for (int i = 0; i < samples_; ++i) OneSample(shader, sample);

    TestSurface surface;
    const RenderInit init = {&surface.render, scene_.handle()};
    if (shader.record.InitRender != nullptr) shader.record.InitRender(&shader.instance, &init);
    sample.render = &surface.render;
    for (int i = 0; i < samples_; ++i) {
      surface.Hit(inputs_);
      OneSample(shader, sample);
      recorder_.Add(surface.render.bumpNormal);
    }
    if (shader.record.FreeRender != nullptr) shader.record.FreeRender(&shader.instance);
  }

  void OneSample(ShaderUnderTest& shader, ChannelSample& sample) {
    sample.uvw = inputs_.Point(-0.5, 1.5);
    sample.normal = {0, 0, 1};
    sample.time = inputs_.Between(0, 2);
    recorder_.Add(shader.Output(sample));
  }

  Recorder& recorder_;
  const StartedModule& started_;
  const RegistryRow& row_;
  const ShaderTable& table_;
  Inputs inputs_{40};
  FakeScene scene_;
  int samples_ = 0;
  std::vector<std::unique_ptr<ShaderUnderTest>> nested_;
};

}  // namespace

void RecordShaders(Recorder& recorder) {
  StartedModule started;
  started.host.recordReads = false;
  InstallTestScene(started.host.render);
  for (const RegistryRow& row : ShaderRegistry()) ShaderRecording(recorder, started, row).Run();
}

}  // namespace sorvanix::test
