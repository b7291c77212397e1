#include "host/dialogs/dialog_tables.h"

#include "host/dialogs/dialog.h"
#include "host/dialogs/layout_cache.h"
#include "host/dialogs/preview_threads.h"
#include "host/scene/scene.h"
#include "host/services/filenames.h"
#include "host/services/resources.h"

namespace sorvanix::host {

namespace {

// The tables' functions carry no context, so what one falls back on is the process's.
constinit decltype(DocumentListTable::load) loadDocument = nullptr;

bool ShowsPictures() noexcept {
  const DialogService* service = CurrentDialogService();
  return service == nullptr || service->ShowsPictures();
}

template <class Change>
void Update(HostDialog* dialog, std::int32_t id, Change&& change) noexcept {
  if (dialog == nullptr) return;
  Guarded([&] { Dialog::From(dialog)->Update(id, change); });
}

// Stores what `read` finds in a gadget; the answer tells whether it found anything.
template <class Value, class Read>
std::int32_t Get(const HostDialog* dialog, std::int32_t id, Value* value, Read&& read) noexcept {
  const Gadget* gadget = dialog == nullptr ? nullptr : Dialog::From(dialog)->Find(id);
  if (gadget == nullptr) return 0;
  const auto found = read(*gadget);
  if (found && value != nullptr) *value = static_cast<Value>(*found);
  return found ? 1 : 0;
}

void SetLimits(Gadget& gadget, double minimum, double maximum, double step, std::int32_t format) {
  gadget.minimum = minimum;
  gadget.maximum = maximum;
  gadget.step = step;
  gadget.format = format;
}

void InstallGadgets(DialogTable& table) noexcept {
  table.findGadget = [](const HostDialog* dialog, std::int32_t id) noexcept {
    return dialog != nullptr && Dialog::From(dialog)->Find(id) != nullptr ? 1 : 0;
  };
  table.setInt = [](HostDialog* dialog, std::int32_t id, std::int32_t value, std::int32_t minimum,
                    std::int32_t maximum, std::int32_t step) noexcept {
    Update(dialog, id, [&](Gadget& gadget) {
      gadget.SetNumber(value);
      SetLimits(gadget, minimum, maximum, step, FormatReal);
    });
  };
  table.setFloat = [](HostDialog* dialog, std::int32_t id, float value, float minimum,
                      float maximum, float step, std::int32_t format) noexcept {
    Update(dialog, id, [&](Gadget& gadget) {
      gadget.SetNumber(value);
      SetLimits(gadget, minimum, maximum, step, format);
    });
  };
  table.setVector = [](HostDialog* dialog, std::int32_t id, const Vector* colour) noexcept {
    if (colour == nullptr) return;
    Update(dialog, id, [&](Gadget& gadget) {
      if (std::holds_alternative<Vector>(gadget.value)) gadget.value = *colour;
    });
  };
  table.setBool = [](HostDialog* dialog, std::int32_t id, std::int32_t value) noexcept {
    Update(dialog, id, [&](Gadget& gadget) { gadget.SetNumber(value != 0 ? 1 : 0); });
  };
  table.setText = [](HostDialog* dialog, std::int32_t id, const HostString* text) noexcept {
    Update(dialog, id, [&](Gadget& gadget) {
      if (std::holds_alternative<std::string>(gadget.value))
        gadget.value = std::string(TextOf(text));
    });
  };
  table.enable = [](HostDialog* dialog, std::int32_t id, std::int32_t on) noexcept {
    Update(dialog, id, [&](Gadget& gadget) { gadget.enabled = on != 0; });
  };
  table.setChannelLink = [](HostDialog* dialog, std::int32_t id, ChannelLink* link) noexcept {
    Update(dialog, id, [&](Gadget& gadget) {
      if (gadget.kind == ElementKind::Link) gadget.link = link;
    });
  };
  table.focus = [](HostDialog* dialog, std::int32_t id) noexcept {
    if (dialog == nullptr) return;
    Guarded([&] {
      Dialog& shown = *Dialog::From(dialog);
      const Gadget* gadget = shown.Find(id);
      if (gadget != nullptr && shown.Service() != nullptr) {
        shown.Service()->FocusChanged(shown, *gadget);
      }
    });
  };
}

void InstallValues(DialogTable& table) noexcept {
  table.getInt = [](const HostDialog* dialog, std::int32_t id, std::int32_t* value) noexcept {
    return Get(dialog, id, value, [](const Gadget& gadget) { return gadget.Integer(); });
  };
  table.getFloat = [](const HostDialog* dialog, std::int32_t id, float* value) noexcept {
    return Get(dialog, id, value, [](const Gadget& gadget) { return gadget.Real(); });
  };
  table.getVector = [](const HostDialog* dialog, std::int32_t id, Vector* colour) noexcept {
    return Get(dialog, id, colour,
               [](const Gadget& gadget) { return std::get_if<Vector>(&gadget.value); });
  };
  table.getBool = [](const HostDialog* dialog, std::int32_t id, std::int32_t* value) noexcept {
    return Get(dialog, id, value, [](const Gadget& gadget) {
      const auto number = gadget.Integer();
      return number ? std::optional(*number != 0 ? 1 : 0) : std::nullopt;
    });
  };
  table.getText = [](const HostDialog* dialog, std::int32_t id) noexcept -> HostString* {
    const Gadget* gadget = dialog == nullptr ? nullptr : Dialog::From(dialog)->Find(id);
    const auto* text = gadget == nullptr ? nullptr : std::get_if<std::string>(&gadget->value);
    return text == nullptr ? EmptyText() : NewText(*text);
  };
}

void InstallUserAreas(DialogTable& table) noexcept {
  table.attachUserArea = [](HostDialog* dialog, std::int32_t id, DialogMessageFunction handler,
                            void* context) noexcept {
    return Guarded<HostUserArea*>(nullptr, [&]() -> HostUserArea* {
      if (dialog == nullptr) return nullptr;
      UserArea* area = Dialog::From(dialog)->Attach(id, handler, context);
      return area == nullptr ? nullptr : area->Handle();
    });
  };
  table.areaSize = [](const HostUserArea* area, std::int32_t* width,
                      std::int32_t* height) noexcept {
    if (width != nullptr) *width = area == nullptr ? 0 : UserArea::From(area)->Width();
    if (height != nullptr) *height = area == nullptr ? 0 : UserArea::From(area)->Height();
  };
  table.redraw = [](HostUserArea* area) noexcept {
    if (area != nullptr) UserArea::From(area)->WantRedraw();
  };
  table.drawBitmap = [](HostUserArea* area, const HostBitmap* bitmap, std::int32_t x,
                        std::int32_t y) noexcept {
    if (area == nullptr || bitmap == nullptr) return;
    Guarded([&] { UserArea::From(area)->Paint(*Bitmap::From(bitmap), x, y); });
  };
  table.sendAction = [](HostUserArea* area, std::int32_t dragging) noexcept {
    if (area == nullptr) return;
    Guarded([&] { UserArea::From(area)->SendAction(dragging != 0); });
  };
  table.setTimer = [](HostUserArea* area, std::int32_t milliseconds) noexcept {
    if (area == nullptr) return;
    Guarded([&] { UserArea::From(area)->SetTimer(milliseconds); });
  };
  table.pollMouse = [](HostUserArea* area, std::int32_t* x, std::int32_t* y,
                       std::int32_t* qualifier) noexcept {
    return Guarded(0, [&] {
      DialogService* service = area == nullptr ? nullptr : UserArea::From(area)->Owner().Service();
      const auto place =
          service == nullptr ? std::nullopt : service->PollMouse(*UserArea::From(area));
      if (!place) return 0;
      if (x != nullptr) *x = place->x;
      if (y != nullptr) *y = place->y;
      if (qualifier != nullptr) *qualifier = place->qualifier;
      return 1;
    });
  };
  table.chooseColour = [](Vector* colour) noexcept {
    return Guarded(0, [&] {
      DialogService* service = CurrentDialogService();
      if (colour == nullptr || service == nullptr) return 0;
      const auto chosen = service->ChooseColour(*colour);
      if (chosen) *colour = *chosen;
      return chosen ? 1 : 0;
    });
  };
}

void InstallForms(DialogFormTable& table) noexcept {
  table.create = [](DialogMessageFunction handler, void* context) noexcept {
    return Guarded<HostDialog*>(nullptr, [&] { return (new Dialog(handler, context))->Handle(); });
  };
  table.free = [](HostDialog* dialog) noexcept { delete Dialog::From(dialog); };
  table.load = [](HostDialog* dialog, HostResources* resources, std::int32_t id) noexcept {
    return Guarded(0, [&] {
      if (dialog == nullptr || resources == nullptr) return 0;
      auto layout = FindDialogLayout(Resources::From(resources)->Folder(), id);
      if (layout == nullptr) return 0;
      Dialog::From(dialog)->Load(std::move(layout));
      return 1;
    });
  };
  table.setTitle = [](HostDialog* dialog, const HostString* title) noexcept {
    if (dialog == nullptr) return;
    Guarded([&] { Dialog::From(dialog)->SetTitle(std::string(TextOf(title))); });
  };
  table.open = [](HostDialog* dialog, std::int32_t x, std::int32_t y) noexcept {
    return Guarded(0,
                   [&] { return dialog != nullptr && Dialog::From(dialog)->Open(x, y) ? 1 : 0; });
  };
  table.close = [](HostDialog* dialog, std::int32_t confirmed) noexcept {
    if (dialog == nullptr) return;
    Guarded([&] { Dialog::From(dialog)->Close(confirmed != 0); });
  };
}

std::int32_t OpenInViewer(const HostFilename* filename) noexcept {
  return Guarded(0, [&] {
    DialogService* service = CurrentDialogService();
    return filename != nullptr && service != nullptr && service->OpenInViewer(PathOf(filename)) ? 1
                                                                                                : 0;
  });
}

// A dialog does not open without the scene of its preview, so there is one, but without objects.
HostDocument* LoadDocument(const HostFilename* filename) noexcept {
  if (ShowsPictures()) return loadDocument != nullptr ? loadDocument(filename) : nullptr;
  return Guarded<HostDocument*>(nullptr, [&]() -> HostDocument* {
    std::error_code error;
    if (!std::filesystem::is_regular_file(PathOf(filename), error)) return nullptr;
    return (new Scene)->Handle();
  });
}

}  // namespace

void InstallDialogs(HostTables& tables) noexcept {
  InstallGadgets(tables.dialog);
  InstallValues(tables.dialog);
  InstallUserAreas(tables.dialog);
  InstallForms(tables.dialogForm);
  InstallPreviewThreads(tables.thread);
  tables.file.openInViewer = OpenInViewer;
  loadDocument = std::exchange(tables.documentList.load, LoadDocument);
}

}  // namespace sorvanix::host
