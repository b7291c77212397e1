#include "apps/studio/dialogs/gadget_view.h"

#include "apps/studio/dialogs/gadget_kinds.h"

namespace sorvanix::studio {

namespace {

GadgetView* MakeView(const ShownGadget& gadget, const LinkSources& sources) {
  switch (gadget.Element().kind) {
    case host::ElementKind::Integer:
    case host::ElementKind::Real:
      return MakeNumberView(gadget);
    case host::ElementKind::Slider:
      return MakeSliderView(gadget);
    case host::ElementKind::Check:
      return MakeCheckView(gadget);
    case host::ElementKind::Choice:
      return MakeChoiceView(gadget);
    case host::ElementKind::Colour:
      return MakeColourView(gadget);
    case host::ElementKind::Text:
      return MakeTextView(gadget);
    case host::ElementKind::Filename:
      return MakeFilenameView(gadget);
    case host::ElementKind::Button:
      return MakeButtonView(gadget);
    case host::ElementKind::Link:
      return MakeLinkView(gadget, sources);
    default:
      return MakeLabelView(gadget);
  }
}

// Rich text alone is broken into lines.
QString ToolTipOf(const std::string& help) {
  const QString text = QString::fromStdString(help);
  return text.isEmpty() ? text : "<qt>" + text.toHtmlEscaped() + "</qt>";
}

}  // namespace

void GadgetView::Update() {
  const host::Gadget& gadget = gadget_.State();
  Show(gadget);
  widget_->setEnabled(gadget.enabled);
  if (label_ != nullptr) label_->setEnabled(gadget.enabled);
}

GadgetView* MakeGadgetView(const ShownGadget& gadget, const LinkSources& sources) {
  GadgetView* view = MakeView(gadget, sources);
  const host::LayoutElement& element = gadget.Element();
  QWidget* widget = view->Widget();
  widget->setObjectName(QString::number(element.id));
  widget->setToolTip(ToolTipOf(element.help));
  widget->setAccessibleName(QString::fromStdString(element.label));
  return view;
}

}  // namespace sorvanix::studio
