// The JSON form of a stream: an array with one tagged object for each value, without loss.
//
//     [ { "int": 5 }, { "float": 0.5 }, { "bool": true }, { "vector": [0, 0.5, 1] },
//       { "matrix": [[0, 0, 0], [1, 0, 0], [0, 1, 0], [0, 0, 1]] }, { "string": "text" },
//       { "link": { "shader": 1001231, "values": [ ... ] } }, { "link": { "bitmap": "a.png" } },
//       { "link": null } ]
//
// JSON has no word for numbers that are not finite. They are texts: "Infinity", "-Infinity", "NaN",
// and "NaN:ffc00000" with the bits for any but the common one.
#pragma once

#include <string>
#include <tl/expected.hpp>
#include <vector>

#include "host/services/json.h"
#include "host/services/streams.h"

namespace sorvanix::host {

Json StreamToJson(const std::vector<StreamValue>& values);

/// The error's offset is where the wrong value stands in the text that the JSON was read from.
tl::expected<std::vector<StreamValue>, JsonError> StreamFromJson(const Json& json);

}  // namespace sorvanix::host
