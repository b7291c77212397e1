#include "apps/studio/window/export_dialog.h"

#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "host/scene/scene_format.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

constexpr int kSizes[] = {256, 512, 1024, 2048, 4096, 8192};
constexpr int kUsualSize = 1024;
constexpr int kFieldWidth = 320;

QString TextOf(const std::filesystem::path& path) {
  return QString::fromStdString(host::Utf8FromPath(path));
}
std::filesystem::path PathOf(const QString& text) { return host::PathFromUtf8(text.toStdString()); }

void AddDepths(QComboBox& box) {
  const std::pair<const char*, host::PixelDepth> depths[] = {
      {QT_TR_NOOP("8 bits"), host::PixelDepth::Eight},
      {QT_TR_NOOP("16 bits"), host::PixelDepth::Sixteen},
      {QT_TR_NOOP("Half float"), host::PixelDepth::Half},
      {QT_TR_NOOP("Float"), host::PixelDepth::Float}};
  for (const auto& [title, depth] : depths) {
    box.addItem(QObject::tr(title), static_cast<int>(depth));
  }
}

}  // namespace

ExportDialog::ExportDialog(Workshop& workshop, QWidget* parent)
    : QDialog(parent),
      workshop_(workshop),
      buttons_(QDialogButtonBox::Save | QDialogButtonBox::Cancel),
      worker_(workshop.engine.Catalogue()) {
  setWindowTitle(tr("Export Bake"));
  for (std::size_t i = 0; i < host::kChannelNames.size(); ++i) channel_.addItem(ChannelTitle(i));
  channel_.setCurrentIndex(static_cast<int>(workshop.SelectedChannel()));
  for (const int size : kSizes) size_.addItem(tr("%1 \u00d7 %1").arg(size), size);
  size_.setCurrentIndex(size_.findData(kUsualSize));
  samples_.setRange(1, 16);
  samples_.setToolTip(tr("Along each side of a pixel"));
  AddDepths(depth_);
  surface_.addItem(tr("Flat: texture coordinates alone"));
  surface_.addItem(tr("Plane: with a surface, for solid noise"));
  normal_.addItem(tr("OpenGL: green grows upwards"));
  normal_.addItem(tr("DirectX: green grows downwards"));
  QString name = QString::fromStdString(TextMember(*workshop.selection.MaterialJson(), "name"));
  name.replace('/', '_');
  file_.setText(TextOf(workshop.document.Folder() / PathOf(name + ".png")));
  Arrange();
  connect(&channel_, &QComboBox::currentIndexChanged, this, &ExportDialog::ShowWhatFits);
  connect(&buttons_, &QDialogButtonBox::accepted, this, &ExportDialog::Begin);
  connect(&buttons_, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
  connect(&worker_, &BakeWorker::Ended, this, &ExportDialog::End);
  connect(&worker_, &BakeWorker::Progressed, this, [this](int done, int total) {
    progress_.setMaximum(total);
    progress_.setValue(done);
  });
  ShowWhatFits();
}

void ExportDialog::Arrange() {
  auto* browse = new QPushButton(tr("&Browse\u2026"));
  connect(browse, &QPushButton::clicked, this, &ExportDialog::ChooseFile);
  file_.setMinimumWidth(kFieldWidth);
  auto* fileRow = new QHBoxLayout;
  fileRow->addWidget(&file_, 1);
  fileRow->addWidget(browse);
  auto* form = new QFormLayout;
  form->setLabelAlignment(Qt::AlignRight);
  form->addRow(tr("&Channel"), &channel_);
  form->addRow(tr("S&urface"), &surface_);
  form->addRow(tr("&Normal map"), &normal_);
  form->addRow(tr("&Size"), &size_);
  form->addRow(tr("Sa&mples"), &samples_);
  form->addRow(tr("&Depth"), &depth_);
  auto* fileLabel = new QLabel(tr("&File"));
  fileLabel->setBuddy(&file_);
  form->addRow(fileLabel, fileRow);
  problem_.setWordWrap(true);
  progress_.setTextVisible(false);
  progress_.hide();
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addWidget(&problem_);
  layout->addWidget(&progress_);
  layout->addWidget(&buttons_);
}

void ExportDialog::ChooseFile() {
  const QString name = QFileDialog::getSaveFileName(
      this, tr("Export Bake"), file_.text(), tr("Images (*.png *.tif *.exr *.jpg);;All files (*)"));
  if (name.isEmpty()) return;
  chosen_ = name;
  file_.setText(name);
}

// A normal map is the bump channel's, and needs a surface.
void ExportDialog::ShowWhatFits() {
  const bool isBump = channel_.currentIndex() == ChannelBump;
  normal_.setEnabled(isBump);
  if (isBump) surface_.setCurrentIndex(1);
  surface_.setEnabled(!isBump);
}

// What the file dialog chose it has asked about.
bool ExportDialog::MayReplace() {
  std::error_code error;
  const QString name = file_.text();
  if (name == chosen_ || !std::filesystem::exists(PathOf(name), error)) return true;
  return QMessageBox::question(
             this, tr("Export Bake"), tr("\u201c%1\u201d is there already. Replace it?").arg(name),
             QMessageBox::Save | QMessageBox::Cancel, QMessageBox::Cancel) == QMessageBox::Save;
}

void ExportDialog::Begin() {
  if (!MayReplace()) return;
  cli::BakeOptions options;
  options.channel = channel_.currentIndex();
  options.plane = surface_.currentIndex() == 1;
  if (options.channel == ChannelBump) {
    options.normal = normal_.currentIndex() == 0 ? host::NormalConvention::OpenGl
                                                 : host::NormalConvention::DirectX;
  }
  options.picture.width = options.picture.height = size_.currentData().toInt();
  options.picture.samples = samples_.value();
  options.picture.time = workshop_.view.Time();
  options.picture.depth = static_cast<host::PixelDepth>(depth_.currentData().toInt());
  problem_.clear();
  progress_.setValue(0);
  progress_.show();
  buttons_.button(QDialogButtonBox::Save)->setEnabled(false);
  worker_.Begin({.sceneText = workshop_.previews.TextFor(*workshop_.selection.MaterialJson(), {},
                                                         workshop_.document.Scene()),
                 .sceneFile = workshop_.document.File(),
                 .options = options,
                 .file = PathOf(file_.text())});
}

void ExportDialog::End(const QString& error, bool cancelled) {
  buttons_.button(QDialogButtonBox::Save)->setEnabled(true);
  problem_.setText(cancelled ? tr("Cancelled.") : error);
  if (error.isEmpty() && !cancelled) return accept();
  progress_.hide();
}

// The first time it ends the bake, then the dialog.
void ExportDialog::reject() {
  if (worker_.IsRunning()) return worker_.Cancel();
  QDialog::reject();
}

}  // namespace sorvanix::studio
