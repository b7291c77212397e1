// Links: a button that tells what feeds an input, with a menu to change that.
#include <QCoreApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QMenu>
#include <QMessageBox>
#include <QToolButton>

#include "apps/studio/dialogs/gadget_kinds.h"
#include "host/channels/channel_link.h"
#include "host/dialogs/link_content.h"
#include "host/dialogs/preview_threads.h"
#include "host/services/filenames.h"

namespace sorvanix::studio {

namespace {

using host::Json;

constexpr std::pair<const char*, const char*> kCategories[] = {
    {"generator", QT_TRANSLATE_NOOP("Link", "&Generators")},
    {"surface", QT_TRANSLATE_NOOP("Link", "&Surface")},
    {"filter", QT_TRANSLATE_NOOP("Link", "&Filters")}};

// A long name, such as a file's, is shortened and does not widen the dialog.
class NameButton : public QToolButton {
 public:
  void ShowName(const QString& name) {
    name_ = name;
    Fit();
  }
  QSize sizeHint() const override {
    constexpr int kLetters = 12;
    return {fontMetrics().horizontalAdvance('m') * kLetters, QToolButton::sizeHint().height()};
  }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QToolButton::resizeEvent(event);
    Fit();
  }

 private:
  void Fit() {
    constexpr int kFrameAndArrow = 28;
    const QString shown =
        fontMetrics().elidedText(name_, Qt::ElideMiddle, width() - kFrameAndArrow);
    setText(shown);
    setToolTip(shown == name_ ? QString() : name_);
  }

  QString name_;
};

class LinkView : public GadgetView {
 public:
  LinkView(const ShownGadget& gadget, const LinkSources& sources)
      : GadgetView(new QWidget, gadget),
        sources_(sources),
        content_(new NameButton),
        edit_(new QToolButton) {
    auto* row = new QHBoxLayout(Widget());
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(content_, 1);
    row->addWidget(edit_);
    content_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    content_->setPopupMode(QToolButton::InstantPopup);
    content_->setToolButtonStyle(Qt::ToolButtonTextOnly);
    edit_->setText(tr("Edit\u2026"));
    edit_->setToolTip(tr("Opens the dialog of the shader that stands here."));
    Widget()->setFocusProxy(content_);
    for (QToolButton* button : {static_cast<QToolButton*>(content_), edit_})
      button->setFocusPolicy(Qt::StrongFocus);
    connect(edit_, &QToolButton::clicked, this, [this] { Edit(); });
    MakeMenu();
  }

 private:
  static QString tr(const char* text) { return QCoreApplication::translate("Link", text); }

  host::Link* HeldLink() const {
    ChannelLink* link = Shown().State().link;
    return link == nullptr ? nullptr : host::Link::From(link);
  }

  void MakeMenu() {
    auto* menu = new QMenu(content_);
    for (const auto& [category, title] : kCategories) {
      QMenu* shaders = menu->addMenu(tr(title));
      for (const host::ShaderDescription& shader : sources_.catalogue.Shaders()) {
        if (shader.category != category) continue;
        const Json graph(Json::Object{{"shader", Json(shader.name)}});
        shaders->addAction(QString::fromStdString(shader.name), this,
                           [this, graph] { Fill(graph); });
      }
    }
    menu->addAction(tr("Load &Picture\u2026"), this, [this] { LoadPicture(); });
    menu->addSeparator();
    editAction_ = menu->addAction(tr("&Edit\u2026"), this, [this] { Edit(); });
    clear_ = menu->addAction(tr("&Clear"), this, [this] { Fill(Json()); });
    content_->setMenu(menu);
  }

  void Fill(const Json& content) {
    host::Link* link = HeldLink();
    if (link == nullptr) return;
    if (const auto error = host::FillLink(*link, content, sources_.catalogue, sources_.places())) {
      QMessageBox::warning(Widget()->window(), Widget()->window()->windowTitle(),
                           QString::fromStdString(error->message));
      Shown().LinkChanged();  // the previews were stopped for it
      return;
    }
    Shown().LinkChanged();
  }

  void LoadPicture() {
    const auto folder = sources_.places().file.parent_path();
    const QString file = QFileDialog::getOpenFileName(
        Widget()->window(), tr("Load a Picture"),
        QString::fromStdString(host::Utf8FromPath(folder)),
        tr("Pictures (*.png *.jpg *.jpeg *.tif *.tiff *.exr *.hdr *.tx);;All files (*)"));
    if (!file.isEmpty()) Fill(Json(file.toStdString()));
  }

  void Edit() {
    host::Link* link = HeldLink();
    if (link == nullptr || link->HeldShader() == nullptr) return;
    // The dialog around this one draws with the shader that may change. A command makes it draw
    // again, after a cancelled edit too.
    host::StopPreviews();
    link->HeldShader()->Edit();
    Shown().LinkChanged();
  }

  void Show(const host::Gadget&) override {
    const host::Link* link = HeldLink();
    content_->ShowName(NameIn(link));
    edit_->setEnabled(HasDialog(link));
    editAction_->setEnabled(HasDialog(link));
    clear_->setEnabled(link != nullptr && !link->IsEmpty());
  }

  // A shader without parameters has nothing to edit.
  bool HasDialog(const host::Link* link) const {
    if (link == nullptr || link->HeldShader() == nullptr) return false;
    const auto* shader = sources_.catalogue.Find(link->PluginId());
    return shader != nullptr && !(shader->parameters.empty() && shader->inputs.empty());
  }

  QString NameIn(const host::Link* link) const {
    if (link == nullptr || link->IsEmpty()) return tr("None");
    if (const auto* bitmap = link->HeldBitmap()) {
      const auto file = host::PathFromUtf8(bitmap->filename.path).filename();
      return QString::fromStdString(host::Utf8FromPath(file));
    }
    const auto* shader = sources_.catalogue.Find(link->PluginId());
    return shader == nullptr ? tr("Unknown Shader") : QString::fromStdString(shader->name);
  }

  const LinkSources& sources_;
  NameButton* content_;
  QToolButton* edit_;
  QAction *editAction_ = nullptr, *clear_ = nullptr;
};

}  // namespace

GadgetView* MakeLinkView(const ShownGadget& gadget, const LinkSources& sources) {
  return new LinkView(gadget, sources);
}

}  // namespace sorvanix::studio
