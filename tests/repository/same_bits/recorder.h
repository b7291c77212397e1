// Results of one build, to be compared bit by bit with those of another, and inputs that all builds
// draw alike.
#pragma once

#include <sorvanix/types.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace sorvanix::test {

/// Named lists of 32-bit floats, in the order in which they were made.
class Recorder {
 public:
  /// What follows belongs to this subject.
  void Begin(std::string subject) { subjects_.push_back({std::move(subject), {}}); }

  /// All NaN are one: the sign and the payload of a NaN have no meaning here.
  void Add(float value) {
    constexpr std::uint32_t kNan = 0x7FC00000;
    subjects_.back().bits.push_back(std::isnan(value) ? kNan : std::bit_cast<std::uint32_t>(value));
  }
  void Add(double value) { Add(static_cast<float>(value)); }
  void Add(const Vector& value) {
    Add(value.x);
    Add(value.y);
    Add(value.z);
  }

  /// A line for each subject: its name, a hash of its values, and the values as hexadecimal bits.
  void Write(std::ostream& out) const {
    for (const Subject& subject : subjects_) {
      std::uint64_t hash = 0xCBF29CE484222325;  // FNV-1a, over words
      for (const std::uint32_t bits : subject.bits) hash = (hash ^ bits) * 0x100000001B3;
      out << std::hex << subject.name << '\t' << hash << '\t';
      for (const std::uint32_t bits : subject.bits) out << bits << ' ';
      out << '\n';
    }
  }

 private:
  struct Subject {
    std::string name;
    std::vector<std::uint32_t> bits;
  };
  std::vector<Subject> subjects_;
};

/// A fixed sequence of inputs. Only exact operations, so that it is one sequence everywhere.
class Inputs {
 public:
  explicit Inputs(std::uint32_t seed) : state_(seed) {}

  /// Knuth's linear congruential generator of 64 bits, its upper half.
  std::uint32_t Word() {
    state_ = state_ * 6364136223846793005u + 1442695040888963407u;
    return static_cast<std::uint32_t>(state_ >> 32);
  }
  float Between(double low, double high) {
    return static_cast<float>(low + (high - low) * (Word() * 0x1p-32));
  }
  std::int32_t Below(std::size_t count) {
    return static_cast<std::int32_t>(Word() % static_cast<std::uint32_t>(count));
  }
  Vector Point(double low, double high) {
    const float x = Between(low, high), y = Between(low, high);
    return {x, y, Between(low, high)};
  }

 private:
  std::uint64_t state_;
};

inline constexpr int kInputsEach = 2000;

void RecordKit(Recorder& recorder);
void RecordNoise(Recorder& recorder);
void RecordShaders(Recorder& recorder);

}  // namespace sorvanix::test
