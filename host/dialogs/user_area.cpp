#include "host/dialogs/user_area.h"

#include <sorvanix/ids.h>

#include <algorithm>

#include "host/dialogs/dialog.h"

namespace sorvanix::host {

namespace {

std::int32_t SideFor(std::int32_t ofLayout, const Container& reply, std::int32_t key) {
  const Word asked = std::max(reply.GetInt(key), Word{ofLayout});
  return static_cast<std::int32_t>(std::clamp(asked, Word{0}, Word{kLargestArea}));
}

}  // namespace

UserArea::UserArea(Dialog& dialog, const LayoutElement& element, DialogMessageFunction handler,
                   void* context) noexcept
    : dialog_(dialog),
      id_(element.id),
      handler_(handler),
      context_(context),
      width_(element.width),
      height_(element.height) {}

UserArea::~UserArea() {
  if (DialogService* service = dialog_.Service()) service->Redraws().Remove(this);
}

std::int32_t UserArea::Send(std::int32_t id, const Container& message, Container& reply) {
  return handler_ == nullptr ? 0 : handler_(context_, id, message.Handle(), reply.Handle());
}

void UserArea::Prepare() {
  Container reply;
  Send(AreaMinSize, Container(AreaMinSize), reply);
  Resize(SideFor(width_, reply, AreaWidth), SideFor(height_, reply, AreaHeight));
  Send(AreaInit, Container(AreaInit), reply);
  Send(AreaVisible, Container(AreaVisible), reply);
  WantRedraw();
}

void UserArea::Resize(std::int32_t width, std::int32_t height) {
  width_ = width;
  height_ = height;
  picture_.Init(width, height);  // false for an area without pixels, which stays empty
}

void UserArea::Draw() {
  Container reply;
  Send(AreaDraw, Container(AreaDraw), reply);
}

void UserArea::Press(const MousePlace& place, bool isDouble) {
  SendMouse(MouseLeft, place, InputDouble, isDouble ? 1 : 0);
}

void UserArea::Wheel(const MousePlace& place, std::int32_t delta) {
  SendMouse(MouseWheel, place, InputWheel, delta);
}

void UserArea::SendMouse(std::int32_t channel, const MousePlace& place, std::int32_t key,
                         std::int32_t value) {
  Container message(AreaInput);
  message.Set(InputDevice, Word{DialogMouse});
  message.Set(InputChannel, Word{channel});
  message.Set(InputQualifier, Word{place.qualifier});
  message.Set(InputX, Word{place.x});
  message.Set(InputY, Word{place.y});
  message.Set(key, Word{value});
  Container reply;
  Send(AreaInput, message, reply);
}

void UserArea::Tick() {
  Container reply;
  Send(AreaTimer, Container(AreaTimer), reply);
}

void UserArea::WantRedraw() noexcept {
  DialogService* service = dialog_.Service();
  if (service == nullptr) return;
  Guarded([&] { service->Redraws().Add(this); });
  service->RedrawWanted();
}

void UserArea::Paint(const Bitmap& picture, std::int32_t x, std::int32_t y) {
  // In 64 bits: a place far outside must not wrap around into the area.
  const auto first = [](std::int64_t place) { return std::max<std::int64_t>(place, 0); };
  const auto end = [](std::int64_t place, std::int64_t side, std::int64_t limit) {
    return std::min(place + side, limit);
  };
  for (std::int64_t row = first(y); row < end(y, picture.Height(), height_); ++row) {
    for (std::int64_t column = first(x); column < end(x, picture.Width(), width_); ++column) {
      picture_.Set(
          static_cast<std::int32_t>(column), static_cast<std::int32_t>(row),
          picture.At(static_cast<std::int32_t>(column - x), static_cast<std::int32_t>(row - y)));
    }
  }
  if (DialogService* service = dialog_.Service()) service->PictureChanged(*this);
}

void UserArea::SendAction(bool dragging) {
  Container message(id_);
  message.Set(DialogDragging, Word{dragging ? 1 : 0});
  dialog_.Send(id_, message);
}

void UserArea::SetTimer(std::int32_t milliseconds) {
  timer_ = std::max(milliseconds, 0);
  if (DialogService* service = dialog_.Service()) service->TimerChanged(*this);
}

}  // namespace sorvanix::host
