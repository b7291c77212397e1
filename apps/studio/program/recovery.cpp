#include "apps/studio/program/recovery.h"

#include <QMessageBox>

#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

QString Tr(const char* text) { return QObject::tr(text); }

void Tell(QWidget* window, const QString& what, const QString& why) {
  QMessageBox box(QMessageBox::Warning, Tr("Recover Changes"), what, QMessageBox::Ok, window);
  box.setInformativeText(why);
  box.exec();
}

QMessageBox::StandardButton Ask(const Rescued& rescued, QWidget* window) {
  const QString name = rescued.file.empty()
                           ? Tr("a scene without a name")
                           : QString::fromStdString(host::Utf8FromPath(rescued.file.filename()));
  return QMessageBox::question(
      window, Tr("Recover Changes"),
      Tr("The studio did not end well. Recover the unsaved changes to %1?").arg(name),
      QMessageBox::Yes | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Yes);
}

}  // namespace

void OfferRecovery(Document& document, Autosave& autosave, const QString& folder, QWidget* window) {
  for (Rescued& rescued : Autosave::LeftBehind(folder)) {
    if (rescued.IsDamaged()) {
      Tell(window, Tr("Unsaved changes were found, but they are damaged."),
           Tr("They are kept in %1.").arg(rescued.SetAside()));
      continue;
    }
    const auto answer = Ask(rescued, window);
    if (answer == QMessageBox::Discard) rescued.Forget();
    if (answer != QMessageBox::Yes) continue;
    if (const auto opened = document.Recover(rescued.text, rescued.file, rescued.diskHash);
        !opened) {
      Tell(window,
           Tr("The changes cannot be opened now. They are offered again at the next start."),
           QString::fromStdString(opened.error()));
      continue;
    }
    if (autosave.Flush()) rescued.Forget();
    return;
  }
}

}  // namespace sorvanix::studio
