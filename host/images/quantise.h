// Colour values as whole numbers of 8 or 16 bits.
#pragma once

namespace sorvanix::host {

/// The nearest of 0..maximum for a value of 0..1; values outside saturate, NaN gives 0.
inline unsigned Quantise(float value, unsigned maximum) {
  // In this order, so that NaN takes the first way out and no value out of range is converted.
  if (!(value > 0)) return 0;
  if (value >= 1) return maximum;
  return static_cast<unsigned>(static_cast<double>(value) * maximum + 0.5);
}

}  // namespace sorvanix::host
