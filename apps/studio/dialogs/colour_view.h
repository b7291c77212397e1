// Colours of dialogs in Qt's terms.
//
// A colour's components are shown as they are: what the renderer writes into a picture is what the
// screen takes for sRGB, so there is nothing to convert on the way.
#pragma once

#include <sorvanix/types.h>

#include <QColor>
#include <optional>

class QWidget;

namespace sorvanix::studio {

/// Components outside 0..1 are shown by the nearest colour.
QColor ColourOf(const Vector& colour);

/// The colour that the user chose; nothing when he cancelled, or left it as it was, since a chooser
/// shows fewer shades than a colour may have.
std::optional<Vector> AskColour(const Vector& shown, QWidget* parent);

}  // namespace sorvanix::studio
