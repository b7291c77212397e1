#include "apps/studio/window/document_actions.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPointer>

#include "apps/studio/document/recent_files.h"
#include "apps/studio/window/drag_data.h"
#include "apps/studio/window/icons.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace fs = std::filesystem;

namespace {

QString TextOf(const fs::path& path) { return QString::fromStdString(host::Utf8FromPath(path)); }
fs::path PathOf(const QString& text) { return host::PathFromUtf8(text.toStdString()); }

// A number or a name that is being typed is part of the document too.
void TakeWhatIsTyped() {
  const QPointer<QWidget> field = QApplication::focusWidget();
  if (field == nullptr) return;
  field->clearFocus();
  if (field != nullptr && field->isVisible()) field->setFocus();
}

}  // namespace

DocumentActions::DocumentActions(Workshop& workshop, QWidget* window)
    : QObject(window),
      workshop_(workshop),
      window_(window),
      new_(IconOf(Symbol::New), tr("&New")),
      open_(IconOf(Symbol::Open), tr("&Open\u2026")),
      save_(IconOf(Symbol::Save), tr("&Save")),
      saveAs_(tr("Save &As\u2026")),
      recent_(tr("Open &Recent"), window) {
  new_.setShortcut(QKeySequence::New);
  open_.setShortcut(QKeySequence::Open);
  save_.setShortcut(QKeySequence::Save);
  saveAs_.setShortcut(tr("Ctrl+Shift+S"));
  Connect();
}

void DocumentActions::Connect() {
  connect(&new_, &QAction::triggered, this, [this] {
    if (MayLeave()) workshop_.document.New();
  });
  connect(&open_, &QAction::triggered, this, [this] {
    const QString name = QFileDialog::getOpenFileName(
        window_, tr("Open"), TextOf(workshop_.document.Folder()),
        tr("Scenes and materials (*.json *.svx *.c4d);;All files (*)"));
    if (!name.isEmpty()) OpenFile(PathOf(name));
  });
  connect(&save_, &QAction::triggered, this, &DocumentActions::SaveFile);
  connect(&saveAs_, &QAction::triggered, this, &DocumentActions::SaveFileAs);
  connect(&recent_, &QMenu::aboutToShow, this, &DocumentActions::FillRecent);
}

void DocumentActions::FillMenu(QMenu& menu) {
  menu.addAction(&new_);
  menu.addAction(&open_);
  menu.addMenu(&recent_);
  menu.addSeparator();
  menu.addAction(&save_);
  menu.addAction(&saveAs_);
}

void DocumentActions::FillRecent() {
  recent_.clear();
  const QStringList files = RecentFiles();
  for (const QString& file : files) {
    recent_.addAction(file, this, [this, file] { OpenFile(PathOf(file)); });
  }
  if (files.isEmpty()) recent_.addAction(tr("No files yet"))->setEnabled(false);
}

bool DocumentActions::MayLeave() {
  TakeWhatIsTyped();
  if (!workshop_.document.IsModified()) return true;
  const auto answer = QMessageBox::warning(
      window_, tr("Unsaved Changes"),
      tr("Save the changes to \u201c%1\u201d?").arg(workshop_.document.Title()),
      QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Save);
  if (answer == QMessageBox::Save) return SaveFile();
  return answer == QMessageBox::Discard;
}

void DocumentActions::OpenFile(const fs::path& file) {
  std::error_code error;
  if (IsSceneFile(file) || !fs::exists(file, error)) {
    if (MayLeave()) LoadScene(file);
  } else if (const auto added = workshop_.commands.AddMaterialFile(file); !added) {
    Complain(tr("\u201c%1\u201d cannot be added.").arg(TextOf(file.filename())), added.error());
  }
}

bool DocumentActions::LoadScene(const fs::path& file) {
  if (const auto opened = workshop_.document.Open(file); !opened) {
    Complain(tr("\u201c%1\u201d cannot be opened.").arg(TextOf(file.filename())), opened.error());
    return false;
  }
  AddRecentFile(TextOf(workshop_.document.File()));
  if (!workshop_.document.Warnings().empty()) TellWarnings();
  return true;
}

// Beside the work: it goes on without an answer.
void DocumentActions::TellWarnings() {
  auto* box = new QMessageBox(
      QMessageBox::Information, tr("sorvaNIX Studio"),
      tr("\u201c%1\u201d is open. What is doubtful in it is kept.").arg(workshop_.document.Title()),
      QMessageBox::Ok, window_);
  box->setInformativeText(QString::fromStdString(workshop_.document.Warnings()));
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setModal(false);
  box->show();
}

bool DocumentActions::SaveFile() {
  TakeWhatIsTyped();
  const fs::path file = workshop_.document.File();
  if (file.empty()) return SaveFileAs();
  if (workshop_.document.IsChangedOnDisk()) {
    const auto answer =
        QMessageBox::warning(window_, tr("Changed File"),
                             tr("Another program changed \u201c%1\u201d. Replace what it wrote?")
                                 .arg(workshop_.document.Title()),
                             QMessageBox::Save | QMessageBox::Cancel, QMessageBox::Cancel);
    if (answer != QMessageBox::Save) return false;
  }
  return Write(file);
}

bool DocumentActions::SaveFileAs() {
  TakeWhatIsTyped();
  QFileDialog dialog(window_, tr("Save As"), TextOf(workshop_.document.File()),
                     tr("Scenes (*.json);;Compact scenes (*.svx)"));
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix("json");
  connect(&dialog, &QFileDialog::filterSelected, &dialog, [&dialog](const QString& filter) {
    dialog.setDefaultSuffix(filter.contains("svx") ? "svx" : "json");
  });
  if (dialog.exec() != QDialog::Accepted) return false;
  return Write(PathOf(dialog.selectedFiles().constFirst()));
}

bool DocumentActions::Write(const fs::path& file) {
  if (const auto saved = workshop_.document.SaveAs(file); !saved) {
    Complain(tr("The scene cannot be saved."), saved.error());
    return false;
  }
  AddRecentFile(TextOf(workshop_.document.File()));
  Q_EMIT Told(tr("Saved %1").arg(workshop_.document.Title()));
  return true;
}

void DocumentActions::Complain(const QString& what, const std::string& why) {
  QMessageBox box(QMessageBox::Warning, tr("sorvaNIX Studio"), what, QMessageBox::Ok, window_);
  box.setInformativeText(QString::fromStdString(why));
  box.exec();
}

}  // namespace sorvanix::studio
