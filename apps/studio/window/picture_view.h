// A widget that shows a picture as large as it fits, and keeps it up to date.
#pragma once

#include <QImage>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <optional>

#include "apps/studio/render/painters.h"

namespace sorvanix::studio {

class PictureView : public QWidget {
  Q_OBJECT

 public:
  /// What the view shows in so many pixels; nothing for an empty view.
  using Ask = std::function<std::optional<PictureRequest>(const QSize& pixels)>;

  PictureView(Ask ask, QWidget* parent = nullptr);

  /// Asks again, once for all calls until the next turn of the event loop. What has not changed is
  /// not painted again.
  void Refresh() { refresh_.start(); }
  /// Pictures are square, and repeated so many times along each side.
  void ShowRepeated(int repeats);
  /// Of the final picture, along each side of a pixel; for those that are asked for from now on.
  void SetSamples(int samples) { samples_ = samples; }
  /// Whether a finer picture will come.
  bool IsBusy() const { return refresh_.isActive() || worker_.IsBusy(); }
  const QImage& Image() const { return image_; }
  /// Why there is no picture, in one line; or empty.
  const QString& Error() const { return error_; }

  QSize sizeHint() const override { return {560, 480}; }
  QSize minimumSizeHint() const override { return {160, 120}; }

 Q_SIGNALS:
  /// The final picture of the last request is there, or an error in its place.
  void Settled();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Submit();
  void Take(const PaintedPass& pass);
  QRectF PictureArea() const;
  QSize WantedPixels() const;

  static constexpr int kUsualSamples = 3;

  Ask ask_;
  std::optional<PictureRequest> asked_;
  QImage image_;
  QString error_;
  QString note_;     // what is missing in the picture
  int repeats_ = 0;  // 0: not square, and not repeated
  int samples_ = kUsualSamples;
  QTimer refresh_;
  PictureWorker worker_;
};

}  // namespace sorvanix::studio
