// A catalogue of two made-up shaders, with a parameter of every type and an input.
#pragma once

#include "host/services/shader_catalogue.h"

namespace sorvanix::host::test {

inline const ShaderCatalogue& SmallCatalogue() {
  static const ShaderCatalogue catalogue = *ShaderCatalogue::Parse(R"({
    "format": "sorvanix-shaders", "version": 1, "shaders": [
      { "id": 11, "name": "Paint", "title": "Paint", "category": "generator", "summary": "Paints.",
        "inputs": [],
        "parameters": [
          { "key": 1000, "name": "kind", "label": "Kind", "type": "int", "default": 0,
            "describe": 1, "minimum": 0, "maximum": 2,
            "choices": [ {"value": 0, "name": "Plain", "label": "Plain"},
                         {"value": 2, "name": "Rough", "label": "Rough"} ] },
          { "key": 1001, "name": "count", "label": "Count", "type": "int", "default": 1,
            "describe": 1, "minimum": 1, "maximum": 10 },
          { "key": 1002, "name": "scale", "label": "Scale", "type": "float", "default": 1,
            "describe": 2, "minimum": 0.1, "maximum": 4 },
          { "key": 1003, "name": "inverted", "label": "Inverted", "type": "bool",
            "default": false, "describe": 1 },
          { "key": 1004, "name": "offset", "label": "Offset", "type": "vector",
            "default": [0, 0, 0], "describe": 2 },
          { "key": 1005, "name": "tint", "label": "Tint", "type": "vector",
            "default": [1, 1, 1], "describe": 2, "unit": "colour" },
          { "key": 1006, "name": "target", "label": "Target", "type": "string", "default": "",
            "describe": 1 } ] },
      { "id": 12, "name": "Mixer", "title": "Mixer", "category": "filter", "summary": "Mixes.",
        "inputs": [ {"key": 1001, "name": "input", "label": "Input"} ],
        "parameters": [
          { "key": 1000, "name": "amount", "label": "Amount", "type": "float", "default": 1,
            "describe": 2 } ] } ] })");
  return catalogue;
}

}  // namespace sorvanix::host::test
