// Gadgets' values as people write them in JSON.
#pragma once

#include <sorvanix/types.h>

#include <string>
#include <tl/expected.hpp>

#include "host/dialogs/gadget.h"
#include "host/services/json.h"

namespace sorvanix::host {

/// What the user sees, as JSON: a number, true or false, a choice's value, the id of the page on
/// show, [r, g, b], a text; null for a gadget without a value.
Json ShownValue(const Gadget& gadget);

/// What the gadget takes when the user gives it what JSON spells so. Choices and pages may be given
/// by their label too, colours as "#rrggbb". Numbers and colours are kept within their limits. The
/// error tells in one line what was expected.
tl::expected<GadgetValue, std::string> TypedValue(const Gadget& gadget, const Json& shown);

/// A colour as material files spell it. The error tells in one line what was expected.
tl::expected<Vector, std::string> ReadColour(const Json& json);

/// Whether a gadget shows what JSON spells: numbers to six digits, as far as a field shows them.
bool Shows(const Gadget& gadget, const Json& expected);

}  // namespace sorvanix::host
