// Offers what crashes of the studio left behind.
#pragma once

#include "apps/studio/document/autosave.h"
#include "apps/studio/document/document.h"

class QWidget;

namespace sorvanix::studio {

/// Asks about each document that was left in the folder until one is recovered. Nothing goes unless
/// it is open again, and so in the autosave of this studio, or the user lets it go.
void OfferRecovery(Document& document, Autosave& autosave, const QString& folder, QWidget* window);

}  // namespace sorvanix::studio
