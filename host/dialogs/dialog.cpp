#include "host/dialogs/dialog.h"

#include <sorvanix/ids.h>

#include <algorithm>
#include <utility>

namespace sorvanix::host {

namespace {

std::optional<ContainerValue> MessageValueOf(const GadgetValue& value) {
  struct Visitor {
    using Carried = std::optional<ContainerValue>;
    Carried operator()(std::monostate) const { return std::nullopt; }
    Carried operator()(std::int32_t whole) const { return Word{whole}; }
    Carried operator()(float real) const { return real; }
    Carried operator()(bool truth) const { return truth; }
    Carried operator()(const Vector& colour) const { return colour; }
    Carried operator()(const std::string& text) const { return Text(text); }
  };
  return std::visit(Visitor(), value);
}

bool IsGadget(const LayoutElement& element) { return element.id != 0; }

}  // namespace

Dialog::Dialog(DialogMessageFunction handler, void* context) noexcept
    : handler_(handler), context_(context), service_(CurrentDialogService()) {}

void Dialog::Load(std::shared_ptr<const DialogLayout> layout) {
  if (layout_ != nullptr) return;
  layout_ = std::move(layout);
  title_ = layout_->title;
  AddGadgets(layout_->root);
  std::sort(gadgets_.begin(), gadgets_.end(),
            [](const Gadget& a, const Gadget& b) { return a.id < b.id; });
}

void Dialog::AddGadgets(const LayoutElement& element) {
  if (IsGadget(element)) gadgets_.emplace_back(element);
  if (element.kind == ElementKind::Area) areaLayouts_.push_back(&element);
  for (const LayoutElement& child : element.children) AddGadgets(child);
}

const Gadget* Dialog::Find(std::int32_t id) const noexcept {
  // The last gadget that does not begin behind the id.
  auto after = std::upper_bound(gadgets_.begin(), gadgets_.end(), id,
                                [](std::int32_t wanted, const Gadget& g) { return wanted < g.id; });
  if (after == gadgets_.begin()) return nullptr;
  const Gadget& gadget = *--after;
  const std::int32_t count = gadget.kind == ElementKind::Link ? kLinkIds : 1;
  return id - gadget.id < count ? &gadget : nullptr;
}

Gadget* Dialog::Find(std::int32_t id) noexcept {
  return const_cast<Gadget*>(std::as_const(*this).Find(id));
}

UserArea* Dialog::Area(std::int32_t id) const noexcept {
  const auto found =
      std::find_if(areas_.begin(), areas_.end(), [id](const auto& a) { return a->Id() == id; });
  return found == areas_.end() ? nullptr : found->get();
}

bool Dialog::Open(std::int32_t x, std::int32_t y) {
  if (layout_ == nullptr || service_ == nullptr) return false;
  closed_ = confirmed_ = false;
  if (service_->ShowsPictures()) {
    for (const auto& area : areas_) area->Prepare();
  }
  service_->RunModal(*this, x, y);
  return confirmed_;
}

void Dialog::Close(bool confirmed) {
  if (std::exchange(closed_, true)) return;
  confirmed_ = confirmed;
  if (service_ != nullptr) service_->Closed(*this);
}

void Dialog::Set(Gadget& gadget, GadgetValue value, bool dragging) {
  if (gadget.kind != ElementKind::Button) gadget.value = value;
  if (service_ != nullptr) service_->GadgetChanged(*this, gadget);
  Container message(gadget.id);
  if (auto carried = MessageValueOf(value)) message.Set(DialogValue, *std::move(carried));
  message.Set(DialogDragging, Word{dragging ? 1 : 0});
  Send(gadget.id, message);
}

void Dialog::ChangeLink(const Gadget& gadget) {
  if (service_ != nullptr) service_->GadgetChanged(*this, gadget);
  Send(gadget.id, Container(gadget.id));
}

bool Dialog::PressKey(std::int32_t code, std::int32_t qualifier) {
  Container message(DialogKey);
  message.Set(InputDevice, Word{DialogKey});
  message.Set(InputChannel, Word{code});
  message.Set(InputQualifier, Word{qualifier});
  if (Send(DialogKey, message) != 0) return true;
  if (code != KeyEscape) return false;
  Close(false);
  return true;
}

UserArea* Dialog::Attach(std::int32_t id, DialogMessageFunction handler, void* context) {
  const auto found = std::find_if(areaLayouts_.begin(), areaLayouts_.end(),
                                  [id](const LayoutElement* each) { return each->id == id; });
  if (found == areaLayouts_.end() || Area(id) != nullptr) return nullptr;
  areas_.emplace_back(new UserArea(*this, **found, handler, context));
  return areas_.back().get();
}

void Dialog::SetTitle(std::string title) {
  title_ = std::move(title);
  if (service_ != nullptr) service_->TitleChanged(*this);
}

std::int32_t Dialog::Send(std::int32_t id, const Container& message) {
  Container reply;
  return handler_ == nullptr ? 0 : handler_(context_, id, message.Handle(), reply.Handle());
}

}  // namespace sorvanix::host
