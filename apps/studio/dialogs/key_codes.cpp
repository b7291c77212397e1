#include "apps/studio/dialogs/key_codes.h"

#include <sorvanix/ids.h>

#include <utility>

namespace sorvanix::studio {

namespace {

constexpr std::pair<Qt::Key, std::int32_t> kNamedKeys[] = {{Qt::Key_Up, KeyUp},
                                                           {Qt::Key_Down, KeyDown},
                                                           {Qt::Key_Right, KeyRight},
                                                           {Qt::Key_Left, KeyLeft},
                                                           {Qt::Key_Escape, KeyEscape}};

constexpr std::pair<Qt::KeyboardModifier, std::int32_t> kQualifiers[] = {
    {Qt::ShiftModifier, QualifierShift},
    {Qt::ControlModifier, QualifierControl},
    {Qt::AltModifier, QualifierAlt},
    {Qt::MetaModifier, QualifierCommand}};

constexpr bool IsBetween(int key, Qt::Key first, Qt::Key last) {
  return key >= first && key <= last;
}

}  // namespace

std::optional<std::int32_t> KeyCodeOf(const QKeyEvent& event) {
  const int key = event.key();
  for (const auto& [named, code] : kNamedKeys) {
    if (key == named) return code;
  }
  // Qt numbers letters by their capitals.
  if (IsBetween(key, Qt::Key_A, Qt::Key_Z) || IsBetween(key, Qt::Key_0, Qt::Key_9)) return key;
  return std::nullopt;
}

std::int32_t QualifierOf(Qt::KeyboardModifiers modifiers) {
  std::int32_t bits = 0;
  for (const auto& [modifier, bit] : kQualifiers) {
    if (modifiers.testFlag(modifier)) bits |= bit;
  }
  return bits;
}

}  // namespace sorvanix::studio
