// The thirty noise types in both forms, over host noise that is the same in every build.
#include "module/noise/catalogue.h"
#include "module/noise/tables.h"
#include "module/shell/module_state.h"
#include "tests/repository/same_bits/exact_noise.h"
#include "tests/repository/same_bits/recorder.h"

namespace sorvanix::test {

void RecordNoise(Recorder& recorder) {
  static RenderTable table = {};
  InstallExactNoise(table);
  hostApi.render = &table;
  BuildNoiseTables(kNoiseSeed);
  struct Form {
    const char* name;
    float (*value)(std::int32_t, float, float, float, float, float, std::int32_t, float,
                   float) noexcept;
  };
  Inputs inputs(20);
  for (const Form& form : {Form{"planar", NoiseCatalogue2D}, Form{"solid", NoiseCatalogue3D}}) {
    for (std::int32_t type = 0; type < kNoiseTypeCount; ++type) {
      recorder.Begin("noise type " + std::to_string(type) + " " + form.name);
      for (int i = 0; i < kInputsEach; ++i) {
        const Vector p = inputs.Point(-20, 20);
        const float octaves = inputs.Between(0, 8), time = inputs.Between(0, 3);
        const float footprint = i % 2 == 0 ? 0 : inputs.Between(0, 0.5);
        recorder.Add(form.value(type, p.x, p.y, p.z, octaves, time, i % 3 == 0, footprint, 1));
      }
    }
  }
  hostApi.render = nullptr;
}

}  // namespace sorvanix::test
