// The views of each kind of gadget; gadget_view.cpp has the table of them.
#pragma once

#include "apps/studio/dialogs/gadget_view.h"

class QTabWidget;

namespace sorvanix::studio {

GadgetView* MakeNumberView(const ShownGadget& gadget);
GadgetView* MakeSliderView(const ShownGadget& gadget);

GadgetView* MakeCheckView(const ShownGadget& gadget);
GadgetView* MakeChoiceView(const ShownGadget& gadget);
/// Its pages must be in place.
GadgetView* MakeTabsView(const ShownGadget& gadget, QTabWidget* tabs);

GadgetView* MakeLabelView(const ShownGadget& gadget);
GadgetView* MakeTextView(const ShownGadget& gadget);
GadgetView* MakeFilenameView(const ShownGadget& gadget);
GadgetView* MakeButtonView(const ShownGadget& gadget);

GadgetView* MakeColourView(const ShownGadget& gadget);
GadgetView* MakeLinkView(const ShownGadget& gadget, const LinkSources& sources);

}  // namespace sorvanix::studio
