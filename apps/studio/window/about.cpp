#include "apps/studio/window/about.h"

#include <QMessageBox>

namespace sorvanix::studio {

void ShowAbout(QWidget* parent) {
  QMessageBox::about(
      parent, QObject::tr("About sorvaNIX"),
      QObject::tr("<h3>sorvaNIX Studio %1</h3>"
                  "<p>Seventeen procedural channel shaders, in their own dialogs.</p>"
                  "<p>Materials made here are scene files, which the command line renders and "
                  "bakes to the same pictures.</p>")
          .arg(SORVANIX_VERSION));
}

}  // namespace sorvanix::studio
