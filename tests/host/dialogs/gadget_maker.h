// Gadgets as the module's setters leave them.
#pragma once

#include <utility>
#include <vector>

#include "host/dialogs/gadget_spelling.h"

namespace sorvanix::host::test {

inline Gadget Make(ElementKind kind, std::vector<ChoiceEntry> entries = {}) {
  LayoutElement element;
  element.kind = kind;
  element.id = 1;
  element.entries = std::move(entries);
  return Gadget(element);
}

// As the module's setFloat leaves it.
inline Gadget MakeReal(float value, float minimum, float maximum, float step = 1,
                       std::int32_t format = FormatReal) {
  Gadget gadget = Make(ElementKind::Real);
  gadget.SetNumber(value);
  gadget.minimum = minimum;
  gadget.maximum = maximum;
  gadget.step = step;
  gadget.format = format;
  return gadget;
}

inline Json Number(double value) { return Json(value); }
inline Json Whole(std::int64_t value) { return Json(value); }

}  // namespace sorvanix::host::test
