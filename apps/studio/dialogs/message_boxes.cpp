#include "apps/studio/dialogs/message_boxes.h"

#include <QApplication>
#include <QMessageBox>

namespace sorvanix::studio {

void MessageBoxes::Show(std::string_view text, std::int32_t) {
  QMessageBox::information(QApplication::activeWindow(), QApplication::applicationDisplayName(),
                           QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
}

}  // namespace sorvanix::studio
