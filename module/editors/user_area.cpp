// From the host's messages to the operations of a user area.
#include "module/editors/user_area.h"

#include "module/shell/host_container.h"

namespace sorvanix {

namespace {

std::int32_t IntOf(const HostContainer* message, std::int32_t key) noexcept {
  return static_cast<std::int32_t>(hostContainerGetInt(message, key, 0));
}

AreaInputEvent EventOf(const HostContainer* message) noexcept {
  return {.device = IntOf(message, InputDevice),
          .channel = IntOf(message, InputChannel),
          .qualifier = IntOf(message, InputQualifier),
          .x = IntOf(message, InputX),
          .y = IntOf(message, InputY),
          .twice = IntOf(message, InputDouble) != 0,
          .wheel = IntOf(message, InputWheel)};
}

}  // namespace

void UserArea::Attach(HostDialog* dialog, std::int32_t gadget) noexcept {
  handle_ = hostAttachUserArea(dialog, gadget, Handle, this);
}

std::int32_t UserArea::Handle(void* context, std::int32_t id, const HostContainer* message,
                              HostContainer* reply) noexcept {
  return static_cast<UserArea*>(context)->Receive(id, message, reply) ? 1 : 0;
}

bool UserArea::Receive(std::int32_t id, const HostContainer* message,
                       HostContainer* reply) noexcept {
  switch (id) {
    case AreaInit:
      return Init();
    case AreaDraw:
      Draw();
      return true;
    case AreaInput:
      return Input(EventOf(message));
    case AreaTimer:
      Timer();
      return true;
    case AreaMinSize: {
      std::int32_t width = 0;
      std::int32_t height = 0;
      if (!GetMinSize(&width, &height)) return false;
      hostContainerSetInt(reply, AreaWidth, width);
      hostContainerSetInt(reply, AreaHeight, height);
      return true;
    }
    default:  // an area has no use for AreaVisible and AreaCast
      return false;
  }
}

}  // namespace sorvanix
