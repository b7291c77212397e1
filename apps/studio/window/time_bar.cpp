#include "apps/studio/window/time_bar.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <cmath>

namespace sorvanix::studio {

namespace {

constexpr int kFramesPerSecond = 25;
constexpr int kSeconds = 10;  // then playing begins again

}  // namespace

TimeBar::TimeBar(ViewState& view, QAction* play, QWidget* parent)
    : QWidget(parent), view_(view), slider_(Qt::Horizontal) {
  slider_.setRange(0, kSeconds * kFramesPerSecond);
  slider_.setPageStep(kFramesPerSecond);
  slider_.setAccessibleName(tr("Time"));
  seconds_.setRange(0, kSeconds);
  seconds_.setSingleStep(1.0 / kFramesPerSecond);
  seconds_.setSuffix(tr(" s"));
  seconds_.setAccessibleName(tr("Time in seconds"));
  play_.setDefaultAction(play);
  play_.setAutoRaise(true);

  auto* label = new QLabel(tr("T&ime"));
  label->setBuddy(&slider_);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(8, 4, 8, 4);
  layout->addWidget(&play_);
  layout->addWidget(label);
  layout->addWidget(&slider_, 1);
  layout->addWidget(&seconds_);

  connect(&slider_, &QSlider::valueChanged, this,
          [this](int frame) { SetTime(static_cast<float>(frame) / kFramesPerSecond); });
  connect(&seconds_, &QDoubleSpinBox::valueChanged, this,
          [this](double seconds) { SetTime(static_cast<float>(seconds)); });
  connect(&view_, &ViewState::Changed, this, &TimeBar::Follow);
  clock_.setInterval(1000 / kFramesPerSecond);
  connect(&clock_, &QTimer::timeout, this, &TimeBar::Step);
}

// Playing goes on from there.
void TimeBar::SetTime(float seconds) {
  startTime_ = seconds;
  sinceStart_.start();
  view_.SetTime(seconds);
}

void TimeBar::Follow() {
  const QSignalBlocker blockSlider(slider_), blockSeconds(seconds_);
  slider_.setValue(static_cast<int>(std::lround(view_.Time() * kFramesPerSecond)));
  seconds_.setValue(static_cast<double>(view_.Time()));
  if (view_.IsPlaying() == clock_.isActive()) return;
  if (view_.IsPlaying()) {
    startTime_ = view_.Time();
    sinceStart_.start();
    clock_.start();
  } else {
    clock_.stop();
  }
}

// By the clock, not by frames: a slow picture skips some.
void TimeBar::Step() {
  const double now =
      static_cast<double>(startTime_) + static_cast<double>(sinceStart_.elapsed()) / 1000;
  view_.SetTime(static_cast<float>(std::fmod(now, kSeconds)));
}

}  // namespace sorvanix::studio
