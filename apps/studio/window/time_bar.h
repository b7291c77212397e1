// The time that the views show: a slider, a number, and a button that plays.
#pragma once

#include <QElapsedTimer>
#include <QSlider>
#include <QTimer>
#include <QToolButton>
#include <QWidget>

#include "apps/studio/window/panel_parts.h"
#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class TimeBar : public QWidget {
  Q_OBJECT

 public:
  TimeBar(ViewState& view, QAction* play, QWidget* parent = nullptr);

 private:
  void SetTime(float seconds);
  void Follow();
  void Step();

  ViewState& view_;
  QSlider slider_;
  NumberBox seconds_;
  QToolButton play_;
  QTimer clock_;
  QElapsedTimer sinceStart_;
  float startTime_ = 0;
};

}  // namespace sorvanix::studio
