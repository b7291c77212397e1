// How the dialogs look: nothing cut off, and pictures of all of them for people to look at, in
// out/screenshots/dialogs.
#include <fmt/format.h>

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>

#include "apps/studio/window/theme.h"
#include "host/dialogs/preview_threads.h"
#include "tests/studio/dialogs_fixture.h"

namespace sorvanix::studio {
namespace {

// Looks at a dialog, page by page, and cancels it.
class Looker : public QtDialogs {
 public:
  using Look = std::function<void(DialogWindow&, const std::string& page)>;
  Looker(LinkSources sources, Look look) : QtDialogs(std::move(sources)), look_(std::move(look)) {}

  void RunModal(host::Dialog& dialog, std::int32_t x, std::int32_t y) override {
    QTimer::singleShot(0, [this] {
      auto* window = dynamic_cast<DialogWindow*>(QApplication::activeModalWidget());
      ASSERT_NE(window, nullptr);
      host::WaitForPreviews();
      QTest::qWait(20);  // what they want drawn
      LookAtPages(*window);
      window->reject();
    });
    QtDialogs::RunModal(dialog, x, y);
  }

 private:
  void LookAtPages(DialogWindow& window) {
    auto* tabs = window.findChild<QTabWidget*>();
    if (tabs == nullptr) return look_(window, "");
    for (int i = 0; i < tabs->count(); ++i) {
      tabs->setCurrentIndex(i);
      QCoreApplication::processEvents();
      look_(window, "_" + tabs->tabText(i).toLower().replace(' ', '_').toStdString());
    }
  }

  Look look_;
};

// "Bright/Contrast" is bright_contrast.
std::string FileNameOf(const std::string& shader) {
  std::string name;
  for (const char c : shader) {
    const auto letter = static_cast<unsigned char>(c);
    name += std::isalnum(letter) != 0 ? static_cast<char>(std::tolower(letter)) : '_';
  }
  return name;
}

// In so many pixels to the point.
void SavePicture(QWidget& window, const std::string& name, int scale) {
  const auto folder =
      std::filesystem::path(SORVANIX_SOURCE_FOLDER) / "out" / "screenshots" / "dialogs";
  std::filesystem::create_directories(folder);
  QImage image(window.size() * scale, QImage::Format_RGB32);
  image.setDevicePixelRatio(scale);
  window.render(&image);
  EXPECT_TRUE(image.save(QString::fromStdString((folder / (name + ".png")).string())));
}

void SavePictures(DialogWindow& window, const std::string& name) {
  for (const auto& [appearance, suffix] :
       {std::pair{Appearance::Light, "light"}, std::pair{Appearance::Dark, "dark"}}) {
    Show(appearance);
    QCoreApplication::processEvents();
    for (const int scale : {1, 2}) {
      SavePicture(window, fmt::format("{}_{}_{}x", name, suffix, scale), scale);
    }
  }
  Show(Appearance::Light);
}

std::string Describe(const QWidget& widget) {
  return fmt::format("{} {} \"{}\"", widget.metaObject()->className(),
                     widget.objectName().toStdString(), widget.accessibleName().toStdString());
}

// Whatever bears text has room for it, and stands inside its parent.
void ExpectNothingCutOff(const DialogWindow& window) {
  for (const QWidget* widget : window.findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->parentWidget()->inherits("QTabBar")) continue;
    const bool bearsText = widget->inherits("QLabel") || widget->inherits("QAbstractButton") ||
                           widget->inherits("QComboBox") || widget->inherits("QGroupBox");
    if (!bearsText || widget->parentWidget()->inherits("QComboBox")) continue;
    EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << Describe(*widget);
    EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << Describe(*widget);
    EXPECT_TRUE(widget->parentWidget()->rect().contains(widget->geometry())) << Describe(*widget);
  }
}

// A screen of 1366 x 768 less its bars.
void ExpectFitsASmallScreen(const DialogWindow& window) {
  EXPECT_LE(window.width(), 1200);
  EXPECT_LE(window.height(), 680);
}

class DialogPictures : public DialogsTest, public testing::WithParamInterface<std::string> {};

TEST_P(DialogPictures, ShowAllOfTheDialog) {
  int looked = 0;
  Looker looker(Sources(), [&](DialogWindow& window, const std::string& page) {
    ++looked;
    ExpectNothingCutOff(window);
    ExpectFitsASmallScreen(window);
    SavePictures(window, FileNameOf(GetParam()) + page);
  });
  host::Shader shader = MakeShader(fmt::format(R"({{"shader":"{}"}})", GetParam()));
  EXPECT_FALSE(Edit(shader, looker).confirmed);
  EXPECT_GT(looked, 0);
}

// A click on the title strip opens it.
TEST_F(DialogsTest, AboutShowsAllOfItself) {
  constexpr std::int32_t kTitle = 19022;
  bool sawAbout = false;
  Looker looker(Sources(), [&](DialogWindow& window, const std::string&) {
    if (QWidget* title = WidgetOf(window, kTitle)) {
      return QTest::mouseClick(title, Qt::LeftButton, {}, {5, 5});
    }
    sawAbout = true;
    EXPECT_EQ(window.windowTitle(), "About sorvaNIX");
    ExpectNothingCutOff(window);
    SavePictures(window, "about");
  });
  host::Shader shader = MakeShader(R"({"shader":"2D Noise"})");
  Edit(shader, looker);
  EXPECT_TRUE(sawAbout);
}

INSTANTIATE_TEST_SUITE_P(Of, DialogPictures, testing::ValuesIn(ShadersWithDialogs()),
                         [](const auto& shader) { return FileNameOf(shader.param); });

}  // namespace
}  // namespace sorvanix::studio
