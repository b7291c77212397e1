// The About dialog: closes on a click into its picture and on Escape.
#include "module/editors/about_dialog.h"

#include <limits>

#include "module/editors/about_area.h"
#include "module/editors/plugin_files.h"
#include "module/shell/host_container.h"
#include "module/shell/resource_bundle.h"

namespace sorvanix {

namespace {

constexpr std::int32_t kDialogId = 35000;
constexpr std::int32_t kTitleTextId = 10019;
constexpr std::int32_t kAreaGadget = 35000;  // the same number as the dialog's, deliberately
constexpr std::int32_t kDocumentationGadgets[] = {35001, 35002};
constexpr std::int32_t kVersionGadget = 35006;  // of the host
constexpr std::int32_t kCloseGadget = 35007;    // has the focus

// The folder of the documentation stands beside that of the module.
void OpenDocumentation() noexcept {
  const OwnedFilename parent = hostFilenameDirectory(ModuleFolder());
  const OwnedFilename folder = hostFilenameAppend(parent, "Documentation");
  hostOpenInViewer(hostFilenameAppend(folder, "index.html").get());
}

class AboutDialog {
 public:
  explicit AboutDialog(const char* shaderName) noexcept
      : dialog_(Receive, this), area_(dialog_.get(), shaderName) {}

  void Run() noexcept {
    if (!Create()) return;
    ShowVersion();
    hostDialogFocus(dialog_.get(), kCloseGadget);
    hostDialogOpen(dialog_.get());
    area_.Detach();
  }

 private:
  bool Create() noexcept {
    ResourceBundle resources;
    if (!resources.Open(ModuleFolder())) return false;
    if (hostDialogLoad(dialog_.get(), resources.get(), kDialogId) == 0) return false;
    hostDialogSetTitle(dialog_.get(), resources.Text(kTitleTextId).get());
    area_.Attach(dialog_.get(), kAreaGadget);
    return true;
  }

  static std::int32_t Receive(void* context, std::int32_t id, const HostContainer* message,
                              HostContainer*) noexcept {
    return static_cast<AboutDialog*>(context)->Answer(id, message) ? 1 : 0;
  }

  bool Answer(std::int32_t id, const HostContainer* message) noexcept {
    if (id == DialogKey) return Key(hostContainerGetInt(message, InputChannel, 0));
    if (id == kCloseGadget) {
      hostDialogClose(dialog_.get(), true);
      return true;
    }
    for (const std::int32_t gadget : kDocumentationGadgets) {
      if (id != gadget) continue;
      OpenDocumentation();
      return true;
    }
    return false;
  }

  // The widest range that an integer has: the host keeps it, and shows what it told.
  void ShowVersion() noexcept {
    using Range = std::numeric_limits<std::int32_t>;
    hostDialogSetInt(dialog_.get(), kVersionGadget, static_cast<std::int32_t>(hostApi.version),
                     Range::min(), Range::max(), 1);
  }

  bool Key(Word key) noexcept {
    if (key != KeyEscape) return false;
    ShowVersion();
    hostDialogClose(dialog_.get(), false);
    return true;
  }

  OwnedDialog dialog_;
  AboutArea area_;
};

}  // namespace

void ShowAbout(const char* shaderName) noexcept {
  AboutDialog about(shaderName);
  about.Run();
}

}  // namespace sorvanix
