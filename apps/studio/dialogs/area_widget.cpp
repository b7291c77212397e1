#include "apps/studio/dialogs/area_widget.h"

#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "apps/studio/dialogs/key_codes.h"

namespace sorvanix::studio {

namespace {

// Points count from the widget's corner, one to a pixel of the area at every scale of the screen.
host::MousePlace PlaceOf(const QSinglePointEvent& event) {
  return {.x = static_cast<std::int32_t>(std::floor(event.position().x())),
          .y = static_cast<std::int32_t>(std::floor(event.position().y())),
          .qualifier = QualifierOf(event.modifiers())};
}

QImage ImageOf(const host::Bitmap& picture) {
  QImage image(picture.Width(), picture.Height(), QImage::Format_RGB888);
  for (int y = 0; y < image.height(); ++y) {
    uchar* row = image.scanLine(y);
    for (int x = 0; x < image.width(); ++x) {
      for (const std::uint8_t component : picture.At(x, y)) *row++ = component;
    }
  }
  return image;
}

}  // namespace

AreaWidget::AreaWidget(host::UserArea& area, bool spans)
    : area_(area), asked_(area.Width(), area.Height()) {
  setObjectName(QString::number(area.Id()));
  setFocusPolicy(Qt::ClickFocus);
  setMinimumSize(asked_);
  setSizePolicy(spans ? QSizePolicy::Expanding : QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(&timer_, &QTimer::timeout, this, [this] { area_.Tick(); });
  FollowTimer();
}

void AreaWidget::FollowTimer() {
  if (area_.TimerMilliseconds() > 0) {
    timer_.start(area_.TimerMilliseconds());
  } else {
    timer_.stop();
  }
}

// Each pixel becomes a square of pixels on screens with more of them.
void AreaWidget::paintEvent(QPaintEvent*) {
  const QImage picture = ImageOf(area_.Picture());
  QPainter(this).drawImage(QRect({}, picture.size()), picture);
}

void AreaWidget::resizeEvent(QResizeEvent*) {
  const int width = std::min(this->width(), host::kLargestArea);
  const int height = std::min(this->height(), host::kLargestArea);
  if (width == area_.Width() && height == area_.Height()) return;
  area_.Resize(width, height);
  area_.Draw();
}

void AreaWidget::mousePressEvent(QMouseEvent* event) { Press(*event, false); }

void AreaWidget::mouseDoubleClickEvent(QMouseEvent* event) { Press(*event, true); }

void AreaWidget::Press(const QMouseEvent& event, bool isDouble) {
  if (event.button() != Qt::LeftButton || held_) return;
  held_ = true;
  moves_.clear();
  last_ = PlaceOf(event);
  area_.Press(last_, isDouble);  // returns at the end of the drag, if it becomes one
  held_ = false;
}

void AreaWidget::mouseMoveEvent(QMouseEvent* event) {
  if (held_) MoveTo(PlaceOf(*event));
}

// A release at another place is a move there first.
void AreaWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !held_) return;
  MoveTo(PlaceOf(*event));
  LetGo();
}

void AreaWidget::MoveTo(const host::MousePlace& place) {
  if (place.x == last_.x && place.y == last_.y) return;
  last_ = place;
  moves_.push_back(place);
  WakePoll();
}

// Qt and the areas agree: eighths of a degree, 120 to a notch. With Alt held Qt takes the wheel for
// a sideways one. While a handle is dragged, the mouse says where it goes.
void AreaWidget::wheelEvent(QWheelEvent* event) {
  const QPoint turned = event->angleDelta();
  const bool isSideways = turned.y() == 0 && event->modifiers().testFlag(Qt::AltModifier);
  const int delta = isSideways ? turned.x() : turned.y();
  if (delta != 0 && !held_) area_.Wheel(PlaceOf(*event), delta);
}

void AreaWidget::hideEvent(QHideEvent*) { LetGo(); }

void AreaWidget::LetGo() {
  held_ = false;
  WakePoll();
}

// None of the moves is passed over, however many come at once: the one that left the area counts
// although the next one came back.
std::optional<host::MousePlace> AreaWidget::Poll() {
  if (held_ && moves_.empty()) {
    QEventLoop loop;
    polling_ = &loop;
    loop.exec();
    polling_ = nullptr;
  }
  if (moves_.empty()) return std::nullopt;
  const host::MousePlace next = moves_.front();
  moves_.pop_front();
  return next;
}

void AreaWidget::WakePoll() {
  if (polling_ != nullptr) polling_->quit();
}

}  // namespace sorvanix::studio
