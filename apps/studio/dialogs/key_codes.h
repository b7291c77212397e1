// Qt's keys and modifiers as the codes and bits that dialogs are told.
#pragma once

#include <QKeyEvent>
#include <cstdint>
#include <optional>

namespace sorvanix::studio {

/// A letter or digit, an arrow or Escape; nothing for keys that dialogs are not told of.
std::optional<std::int32_t> KeyCodeOf(const QKeyEvent& event);

/// The Qualifier bits of ids.h.
std::int32_t QualifierOf(Qt::KeyboardModifiers modifiers);

}  // namespace sorvanix::studio
