// A gadget's state and its rules: limits, steps, and what the user sees of a value.
//
// The rules are here once for all user interfaces. The module works in the units of its parameters
// (a share of 1, radians); the user sees and types percent and degrees.
#pragma once

#include <sorvanix/host_dialog.h>

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/dialogs/dialog_layout.h"

namespace sorvanix::host {

/// A gadget's value in the module's units. The module chooses with its setters whether a number is
/// whole; a gadget that nobody set has the neutral value of its kind, a link, an area and a button
/// have none.
using GadgetValue = std::variant<std::monostate, std::int32_t, float, bool, Vector, std::string>;

struct Gadget {
  explicit Gadget(const LayoutElement& element);

  std::int32_t id;
  ElementKind kind;
  std::vector<ChoiceEntry> entries;  ///< of a choice, and the pages of tabs
  GadgetValue value;
  double minimum = -std::numeric_limits<double>::infinity();
  double maximum = std::numeric_limits<double>::infinity();
  double step = 1;  ///< of the arrows beside the field
  std::int32_t format = FormatReal;
  bool enabled = true;
  ChannelLink* link = nullptr;  ///< what a link shows: the module's own

  bool IsNumber() const noexcept;
  /// How many of the user's units make one of the module's: 100 for percent.
  double Scale() const noexcept;

  // What the setters of the contract store: as it comes, since files may hold values outside the
  // limits. A value of another type is converted where that makes sense, else passed over.
  void SetNumber(std::int32_t number) noexcept;
  void SetNumber(float number) noexcept;

  // What the getters of the contract answer.
  std::optional<std::int32_t> Integer() const noexcept;
  std::optional<float> Real() const noexcept;

  /// The number as the user sees it; 0 for a gadget without one.
  double ShownNumber() const noexcept;
  /// What the gadget takes when the user types a number: kept within the limits.
  GadgetValue TypedNumber(double shown) const noexcept;
  /// The same when the user presses an arrow so many times, downwards below 0.
  GadgetValue Stepped(int steps) const noexcept;
};

}  // namespace sorvanix::host
