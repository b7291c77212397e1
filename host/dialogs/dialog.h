// Dialogs as the host keeps them: their state, and the messages that the module gets of what the
// user does. The same for every user interface; a DialogService shows them.
#pragma once

#include <sorvanix/host_dialog.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "host/dialogs/dialog_layout.h"
#include "host/dialogs/dialog_service.h"
#include "host/dialogs/gadget.h"
#include "host/dialogs/user_area.h"
#include "host/services/containers.h"
#include "host/services/handle.h"

namespace sorvanix::host {

class Dialog : public Handled<Dialog, HostDialog> {
 public:
  /// Shown by the calling thread's service.
  Dialog(DialogMessageFunction handler, void* context) noexcept;

  /// Takes the gadgets of a layout; once.
  void Load(std::shared_ptr<const DialogLayout> layout);
  /// Null before Load.
  const DialogLayout* Layout() const noexcept { return layout_.get(); }
  const std::string& Title() const noexcept { return title_; }
  DialogService* Service() const noexcept { return service_; }

  /// A gadget by its id, a link by any of its ids; null for an unknown one.
  Gadget* Find(std::int32_t id) noexcept;
  const Gadget* Find(std::int32_t id) const noexcept;
  const std::vector<Gadget>& Gadgets() const noexcept { return gadgets_; }

  /// The area attached to a gadget, or null.
  UserArea* Area(std::int32_t id) const noexcept;
  const std::vector<std::unique_ptr<UserArea>>& Areas() const noexcept { return areas_; }

  /// Prepares the areas, runs the dialog modally and tells whether it was confirmed. A dialog
  /// without a layout or a service cannot be.
  bool Open(std::int32_t x, std::int32_t y);
  bool IsClosed() const noexcept { return closed_; }
  void Close(bool confirmed);

  // What the user does.
  /// A gadget of the dialog has this value now: a command tells so.
  void Set(Gadget& gadget, GadgetValue value, bool dragging = false);
  /// What a link shows was changed.
  void ChangeLink(const Gadget& gadget);
  /// A key that the module leaves to the host: Escape cancels, others do nothing. Whether anything
  /// came of it.
  bool PressKey(std::int32_t code, std::int32_t qualifier);

  // What the module does.
  UserArea* Attach(std::int32_t id, DialogMessageFunction handler, void* context);
  void SetTitle(std::string title);
  /// Applies `change` to the gadget of an id, if there is one; the view follows.
  template <class Change>
  void Update(std::int32_t id, Change&& change) {
    Gadget* gadget = Find(id);
    if (gadget == nullptr) return;
    change(*gadget);
    if (service_ != nullptr) service_->GadgetChanged(*this, *gadget);
  }

  std::int32_t Send(std::int32_t id, const Container& message);

 private:
  void AddGadgets(const LayoutElement& element);

  DialogMessageFunction handler_;
  void* context_;
  DialogService* service_;
  std::shared_ptr<const DialogLayout> layout_;
  std::string title_;
  std::vector<Gadget> gadgets_;  // by their ids
  std::vector<const LayoutElement*> areaLayouts_;
  std::vector<std::unique_ptr<UserArea>> areas_;
  bool closed_ = false, confirmed_ = false;
};

}  // namespace sorvanix::host
