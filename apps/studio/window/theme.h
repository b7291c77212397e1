// How the window looks: light or dark, in greys that leave the colours of materials alone.
#pragma once

#include <QString>
#include <optional>

namespace sorvanix::studio {

enum class Appearance { System, Light, Dark };

/// What the user chose, from the settings.
Appearance ChosenAppearance();
/// Chooses, for now and for later starts.
void ChooseAppearance(Appearance appearance);

/// Shows all windows so. System is what the desktop's palette looks like.
void Show(Appearance appearance);

/// "light", "dark" or "system"; nothing for everything else.
std::optional<Appearance> AppearanceNamed(const QString& name);

}  // namespace sorvanix::studio
