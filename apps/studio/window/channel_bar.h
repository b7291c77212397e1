// Strength and colour of the selected channel.
#pragma once

#include <QToolButton>
#include <QWidget>

#include "apps/studio/window/panel_parts.h"
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
  NumberBox strength_;
  QToolButton colour_;
};

}  // namespace sorvanix::studio
