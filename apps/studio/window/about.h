// The box that tells what this program is.
#pragma once

class QWidget;

namespace sorvanix::studio {

void ShowAbout(QWidget* parent);

}  // namespace sorvanix::studio
