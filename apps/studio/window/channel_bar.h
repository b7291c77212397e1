// Strength and colour of the selected channel.
#pragma once

#include <QDoubleSpinBox>
#include <QToolButton>
#include <QWidget>

#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class ChannelBar : public QWidget {
  Q_OBJECT

 public:
  explicit ChannelBar(Workshop& workshop, QWidget* parent = nullptr);

 private:
  void ShowChannel();
  void ChooseColour();

  Workshop& workshop_;
  QDoubleSpinBox strength_;
  QToolButton colour_;
};

}  // namespace sorvanix::studio
