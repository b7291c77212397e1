// Measures by which the tests judge samples of noise, and seeded random points to take them at.
#pragma once

#include <sorvanix/types.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace sorvanix::host::testing {

// Draws that are the same with every standard library, unlike those of std distributions.
class Random {
 public:
  explicit Random(uint64_t seed) : engine_(seed) {}
  // With the 24 bits of a float, so that 0..1 and its multiples are exact.
  float Between(float low, float high) {
    return low + (high - low) * static_cast<float>(engine_() >> 40) * 0x1p-24F;
  }
  Vector Point(float size) {
    const float x = Between(-size, size);
    const float y = Between(-size, size);
    return {x, y, Between(-size, size)};
  }

 private:
  std::mt19937_64 engine_;
};

// A million points stand for all: with standard deviation s, their mean is within 5 s / 1000 of the
// true one but for one seed in two million.
constexpr std::size_t Million = 1'000'000;

class Samples {
 public:
  // Draws count values of noise(point, time), from points within 1000 and times within 100 of 0.
  template <typename Noise>
  static Samples Of(Noise noise, std::size_t count = Million, uint64_t seed = 1) {
    Random random(seed);
    std::vector<float> values(count);
    for (float& value : values) {
      const Vector point = random.Point(1000.0F);
      value = noise(point, random.Between(-100.0F, 100.0F));
    }
    return Samples(std::move(values));
  }

  explicit Samples(std::vector<float> values) : sorted_(std::move(values)) {
    std::sort(sorted_.begin(), sorted_.end());
  }

  double Mean() const { return Moment(1, 0.0); }
  double Deviation() const { return std::sqrt(Moment(2, Mean())); }
  double Skewness() const { return Moment(3, Mean()) / std::pow(Deviation(), 3); }
  float Lowest() const { return sorted_.front(); }
  float Highest() const { return sorted_.back(); }
  // The value that the given share of the samples stays below.
  float Quantile(double share) const {
    return sorted_[static_cast<std::size_t>(share * static_cast<double>(sorted_.size() - 1))];
  }
  // The share of samples in low..high, both included.
  double Share(float low, float high) const {
    const auto first = std::lower_bound(sorted_.begin(), sorted_.end(), low);
    const auto last = std::upper_bound(sorted_.begin(), sorted_.end(), high);
    return static_cast<double>(last - first) / static_cast<double>(sorted_.size());
  }

 private:
  double Moment(int power, double centre) const {
    double sum = 0.0;
    for (const float value : sorted_) {
      double term = 1.0;
      for (int i = 0; i < power; ++i) term *= value - centre;
      sum += term;
    }
    return sum / static_cast<double>(sorted_.size());
  }

  std::vector<float> sorted_;
};

// Pearson's correlation of count pairs, each drawn as {noise here, noise there}. Independent pairs
// stay within 5 / sqrt(count) of 0.
template <typename DrawPair>
double Correlation(std::size_t count, DrawPair drawPair) {
  Random random(2);
  double sum = 0.0, squares = 0.0, products = 0.0;
  for (std::size_t i = 0; i < count; ++i) {
    const auto [here, there] = drawPair(random);
    sum += 0.5 * (here + there);
    squares += 0.5 * (here * here + there * there);
    products += here * there;
  }
  const double n = static_cast<double>(count);
  const double mean = sum / n;
  return (products / n - mean * mean) / (squares / n - mean * mean);
}

}  // namespace sorvanix::host::testing
