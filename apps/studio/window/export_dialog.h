// Bakes a channel of the selected material into an image file, with progress and a way out.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QSpinBox>

#include "apps/studio/render/bake_worker.h"
#include "apps/studio/window/workshop.h"

namespace sorvanix::studio {

class ExportDialog : public QDialog {
  Q_OBJECT

 public:
  explicit ExportDialog(Workshop& workshop, QWidget* parent = nullptr);

  void reject() override;

 private:
  void Arrange();
  void ChooseFile();
  void ShowWhatFits();
  bool MayReplace();
  void Begin();
  void End(const QString& error, bool cancelled);

  Workshop& workshop_;
  QComboBox channel_, surface_, normal_, size_, depth_;
  QSpinBox samples_;
  QLineEdit file_;
  QString chosen_;  // by the file dialog
  QProgressBar progress_;
  QLabel problem_;
  QDialogButtonBox buttons_;
  BakeWorker worker_;
};

}  // namespace sorvanix::studio
