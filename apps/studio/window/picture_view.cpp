#include "apps/studio/window/picture_view.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

namespace sorvanix::studio {

namespace {

constexpr int kMargin = 12;  // around a square picture
// The same in light and dark windows: what lies around a colour changes how it looks.
const QColor kSurround(0x30, 0x31, 0x33);
const QColor kOnSurround(0xd0, 0xd2, 0xd6);

}  // namespace

PictureView::PictureView(Ask ask, QWidget* parent) : QWidget(parent), ask_(std::move(ask)) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  refresh_.setSingleShot(true);
  refresh_.setInterval(0);
  connect(&refresh_, &QTimer::timeout, this, &PictureView::Submit);
  connect(&worker_, &PictureWorker::Painted, this, &PictureView::Take);
}

void PictureView::ShowRepeated(int repeats) {
  repeats_ = repeats;
  Refresh();
  update();
}

QRectF PictureView::PictureArea() const {
  if (repeats_ == 0) return rect();
  const int side = std::max(1, std::min(width(), height()) - 2 * kMargin);
  return QRectF((width() - side) / 2, (height() - side) / 2, side, side);
}

QSize PictureView::WantedPixels() const {
  const double scale = devicePixelRatioF() / std::max(1, repeats_);
  const QSizeF size = PictureArea().size() * scale;
  return {std::max(1, static_cast<int>(std::lround(size.width()))),
          std::max(1, static_cast<int>(std::lround(size.height())))};
}

void PictureView::Submit() {
  auto request = ask_(WantedPixels());
  // Moving pictures wait for each other, and for nothing else.
  const bool moves = asked_ && asked_->isDraft;
  if (request && request->isDraft && moves && worker_.IsBusy()) return;
  if (request == asked_) return;
  asked_ = request;
  if (!request) {
    worker_.Cancel();
    image_ = {};
    error_.clear();
    note_.clear();
    update();
    Q_EMIT Settled();
    return;
  }
  worker_.Submit(JobFor(std::move(*request), samples_));
}

void PictureView::Take(const PaintedPass& pass) {
  error_ = pass.error;
  note_ = pass.note;
  if (!pass.image.isNull()) image_ = pass.image;
  update();
  if (!pass.isFinal) return;
  Q_EMIT Settled();
  if (asked_ && asked_->isDraft && isVisible()) Refresh();
}

void PictureView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), kSurround);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  const QRectF area = PictureArea();
  const int repeats = std::max(1, repeats_);
  const QSizeF tile = area.size() / repeats;
  if (!image_.isNull() && error_.isEmpty()) {
    for (int i = 0; i < repeats * repeats; ++i) {
      const QPointF corner(i % repeats * tile.width(), i / repeats * tile.height());
      painter.drawImage(QRectF(area.topLeft() + corner, tile), image_);
    }
  }
  painter.setPen(kOnSurround);
  const QRectF inner = area.adjusted(kMargin, kMargin, -kMargin, -kMargin);
  if (!error_.isEmpty()) {
    painter.drawText(inner, Qt::AlignCenter | Qt::TextWordWrap, error_);
  } else if (!note_.isEmpty()) {
    constexpr int kHow = Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap;
    const QRectF text = painter.boundingRect(inner, kHow, note_);
    painter.fillRect(text.adjusted(-4, -2, 4, 2), kSurround);
    painter.drawText(inner, kHow, note_);
  }
}

void PictureView::resizeEvent(QResizeEvent*) { Refresh(); }

}  // namespace sorvanix::studio
