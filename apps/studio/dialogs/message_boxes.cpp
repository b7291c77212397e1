#include "apps/studio/dialogs/message_boxes.h"

#include <QApplication>
#include <QMessageBox>
#include <QThread>

namespace sorvanix::studio {

// A thread that imports a material may have something to say too. It does not wait for the answer,
// since the main thread may be waiting for it.
void MessageBoxes::Show(std::string_view text, std::int32_t) {
  const auto show = [text = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()))] {
    QMessageBox::information(QApplication::activeWindow(), QApplication::applicationDisplayName(),
                             text);
  };
  if (QThread::currentThread() == qApp->thread()) return show();
  QMetaObject::invokeMethod(qApp, show, Qt::QueuedConnection);
}

}  // namespace sorvanix::studio
