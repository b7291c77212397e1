// The kit: vectors, matrices, colours, blend modes, the ramp, remaps, diffuse light.
#include "module/kit/blend.h"
#include "module/kit/colour.h"
#include "module/kit/matrix.h"
#include "module/kit/oren_nayar.h"
#include "module/kit/ramp.h"
#include "module/kit/remap.h"
#include "module/kit/vector.h"
#include "tests/repository/same_bits/recorder.h"

namespace sorvanix::test {

namespace {

void RecordVectors(Recorder& recorder) {
  Inputs inputs(1);
  recorder.Begin("kit vectors");
  for (int i = 0; i < kInputsEach; ++i) {
    const Vector a = inputs.Point(-100, 100), b = inputs.Point(-1, 1);
    const float t = inputs.Between(-1, 2);
    recorder.Add(Lerp(a, b, t));
    recorder.Add(Cross(a, b));
    recorder.Add(Normalized(a));
    recorder.Add(OffsetFromLine(a, b, inputs.Point(-10, 10)));
    recorder.Add(Length(a));
    recorder.Add(Dot(a, b));
    recorder.Add(Mean(a));
  }
}

Matrix AnyMatrix(Inputs& inputs) {
  const Vector off = inputs.Point(-100, 100), x = inputs.Point(-2, 2), y = inputs.Point(-2, 2);
  return {off, x, y, inputs.Point(-2, 2)};
}

void Add(Recorder& recorder, const Matrix& m) {
  for (const Vector& part : {m.off, m.v1, m.v2, m.v3}) recorder.Add(part);
}

void RecordMatrices(Recorder& recorder) {
  Inputs inputs(2);
  recorder.Begin("kit matrices");
  for (int i = 0; i < kInputsEach; ++i) {
    const Matrix a = AnyMatrix(inputs), b = AnyMatrix(inputs);
    recorder.Add(Transform(inputs.Point(-10, 10), a));
    recorder.Add(Rotate(inputs.Point(-10, 10), a));
    Add(recorder, Invert(a));
    Add(recorder, Multiply(a, b));
  }
  recorder.Begin("kit rotations");
  for (int i = 0; i < kInputsEach; ++i) Add(recorder, RotationFromAngles(inputs.Point(-10, 10)));
}

void RecordColours(Recorder& recorder) {
  Inputs inputs(3);
  recorder.Begin("kit colours");
  for (int i = 0; i < kInputsEach; ++i) {
    const Vector colour = inputs.Point(-0.2, 1.2);
    const Hsv hsv = RgbToHsv(colour);
    const Hls hls = RgbToHls(colour);
    recorder.Add(Vector{hsv.h, hsv.s, hsv.v});
    recorder.Add(HsvToRgb(hsv));
    recorder.Add(Vector{hls.h, hls.l, hls.s});
    recorder.Add(HlsToRgb(hls));
    recorder.Add(RgbToHsvVector(colour));
    recorder.Add(HsvVectorToRgb(colour));
  }
}

void RecordBlends(Recorder& recorder) {
  Inputs inputs(4);
  for (std::int32_t mode = BlendNormal; mode <= BlendThreshold; ++mode) {
    recorder.Begin("kit blend mode " + std::to_string(mode));
    for (int i = 0; i < kInputsEach; ++i) {
      const Vector base = inputs.Point(-0.2, 1.2), blend = inputs.Point(-0.2, 1.2);
      recorder.Add(BlendColors(base, blend, inputs.Point(0, 1), inputs.Between(0, 1), mode, i % 2));
    }
  }
}

void RecordRamps(Recorder& recorder) {
  Inputs inputs(5);
  RampKnot knots[RampMaxKnots];
  constexpr std::int32_t kKnots = 7;
  for (std::int32_t i = 0; i < kKnots; ++i) {
    const float position = static_cast<float>(i) / kKnots + inputs.Between(0, 0.1);
    knots[i] = {inputs.Point(0, 1), position, inputs.Between(0.05, 0.95)};
  }
  for (std::int32_t form = RampCubic; form <= RampStep; ++form) {
    recorder.Begin("kit ramp form " + std::to_string(form));
    for (int i = 0; i < kInputsEach; ++i) {
      recorder.Add(SampleRamp(inputs.Between(-0.1, 1.1), knots, kKnots, form));
    }
  }
}

void RecordRemaps(Recorder& recorder) {
  Inputs inputs(6);
  recorder.Begin("kit remaps");
  for (int i = 0; i < kInputsEach; ++i) {
    const float low = inputs.Between(-1, 1), high = inputs.Between(-1, 1);
    const float x = inputs.Between(-2, 2);
    recorder.Add(LinearStep(low, high, x));
    recorder.Add(SmoothStep(low, high, x));
    recorder.Add(Ease(low, high, x));
    recorder.Add(Wrap(inputs.Between(-1000, 1000), high));
    recorder.Add(Fraction(inputs.Between(-1000, 1000)));
  }
}

void RecordDiffuseLight(Recorder& recorder) {
  Inputs inputs(7);
  recorder.Begin("kit diffuse light");
  for (int i = 0; i < kInputsEach; ++i) {
    const Vector normal = Normalized(inputs.Point(-1, 1)), view = Normalized(inputs.Point(-1, 1));
    const Vector light = Normalized(inputs.Point(-1, 1));
    const ViewedSurface surface = ViewSurface(normal, view);
    const double cosine =
        ContrastedCosine(WideDot(surface.normal, light), inputs.Between(-0.5, 0.5));
    recorder.Add(OrenNayarShare(OrenNayarFactorsOf(inputs.Between(0, 1)), inputs.Point(0, 1),
                                surface, light, cosine));
  }
}

}  // namespace

void RecordKit(Recorder& recorder) {
  RecordVectors(recorder);
  RecordMatrices(recorder);
  RecordColours(recorder);
  RecordBlends(recorder);
  RecordRamps(recorder);
  RecordRemaps(recorder);
  RecordDiffuseLight(recorder);
}

}  // namespace sorvanix::test
