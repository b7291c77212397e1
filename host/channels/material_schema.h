// The JSON Schema of material files, made from the shader catalogue: what editors complete and
// check while a material is written, and what other programs validate with.
#pragma once

#include "host/services/json.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host {

/// A schema (draft 2020-12) that holds for the files in which ReadMaterial finds no error, as far
/// as a schema can tell: it does not look into the files that a material refers to. The limits of
/// dialogs stand in the descriptions, since values outside them are allowed.
Json MaterialSchema(const ShaderCatalogue& catalogue);

}  // namespace sorvanix::host
