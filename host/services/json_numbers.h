// Numbers and vectors of the contract as JSON, exactly: what is written reads back bit for bit.
//
// JSON has no word for numbers that are not finite. They are texts: "Infinity", "-Infinity", "NaN",
// and "NaN:ffc00000" with the bits for any NaN but the common one.
#pragma once

#include <sorvanix/types.h>

#include <cstdint>
#include <optional>

#include "host/services/json.h"

namespace sorvanix::host {

/// The double with the same shortest decimal form as the float, so that 0.1f is written 0.1.
/// Narrowed it is the float again.
double ShortestDouble(float value) noexcept;

Json JsonOf(std::int32_t value);
Json JsonOf(float value);
Json JsonOf(const Vector& value);

/// Nothing when the JSON is of another kind, or its number does not fit.
std::optional<std::int32_t> IntegerIn(const Json& json);
std::optional<float> FloatIn(const Json& json);
std::optional<Vector> VectorIn(const Json& json);

}  // namespace sorvanix::host
