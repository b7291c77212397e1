// The main window under keys, drops and closing.
#include <QApplication>
#include <QDropEvent>
#include <QListWidget>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "apps/studio/program/script.h"
#include "apps/studio/window/drag_data.h"
#include "apps/studio/window/export_dialog.h"
#include "apps/studio/window/graph_tree.h"
#include "apps/studio/window/main_window.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

constexpr int kPatience = 60000;  // ms; only a test that fails takes so long

// Counts how often a dialog was wanted.
class CountingEditor : public ShaderEditor {
 public:
  bool Edit(host::Shader& shader) override {
    edited.push_back(shader.Name());
    return false;
  }
  std::vector<std::string> edited;
};

class WindowTest : public StudioTest {
 protected:
  WindowTest() {
    window_.resize(1200, 800);
    window_.show();
    window_.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window_));
    tree_ = window_.findChild<GraphTree*>();
    tree_->setFocus();
  }
  ~WindowTest() override { window_.NeverAsk(); }

  std::string ShaderAt(const GraphPlace& place) {
    const auto* shader = FindShader(*workshop_.selection.MaterialJson(), place, Catalogue());
    return shader != nullptr ? shader->name : "nothing";
  }

  // Drops onto the row of a channel.
  void DropOnChannel(int row, QMimeData* data) {
    const QPoint at = tree_->visualItemRect(tree_->topLevelItem(row)).center();
    const std::unique_ptr<QMimeData> owned(data);
    QDragEnterEvent enter(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree_->viewport(), &enter);
    QDragMoveEvent move(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree_->viewport(), &move);
    QDropEvent drop(at, Qt::CopyAction, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree_->viewport(), &drop);
    QApplication::processEvents();
  }

  // Presses a button of the next box that opens.
  static void AnswerNextBox(QMessageBox::StandardButton answer) {
    QTimer::singleShot(0, [answer] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(box, nullptr);
      box->button(answer)->click();
    });
  }

  Workshop workshop_{*SharedEngine()};
  CountingEditor editor_;
  MainWindow window_{workshop_, editor_};
  GraphTree* tree_ = nullptr;
  const GraphPlace colour_ = {.channel = "colour", .inputs = {}};
  const GraphPlace alpha_ = {.channel = "alpha", .inputs = {}};
};

constexpr int kAlphaRow = ChannelAlpha;

TEST_F(WindowTest, DeleteEmptiesTheSelectedPlaceAndUndoFillsItAgain) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  QTest::keyClick(tree_, Qt::Key_Delete);
  EXPECT_EQ(ShaderAt(colour_), "nothing");
  QTest::keyClick(&window_, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(ShaderAt(colour_), "Tiles");
}

TEST_F(WindowTest, EnterAndDoubleClickOpenTheDialogOfTheSelectedShader) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  QTest::keyClick(tree_, Qt::Key_Return);
  const QPoint row = tree_->visualItemRect(tree_->topLevelItem(0)).center();
  QTest::mouseClick(tree_->viewport(), Qt::LeftButton, {}, row);
  QTest::mouseDClick(tree_->viewport(), Qt::LeftButton, {}, row);
  EXPECT_EQ(editor_.edited, (std::vector<std::string>(2, "sorvaNIX Tiles")));
}

TEST_F(WindowTest, ArrowKeysSelectPlaces) {
  workshop_.commands.PlaceShader(colour_, "Hue");
  QTest::keyClick(tree_, Qt::Key_Down);
  EXPECT_EQ(workshop_.selection.Place(), colour_.Below("input"));
}

TEST_F(WindowTest, AShaderIsDroppedOntoAChannel) {
  DropOnChannel(kAlphaRow, DragOfShader("Gradient"));
  EXPECT_EQ(ShaderAt(alpha_), "Gradient");
}

TEST_F(WindowTest, AFilterThatIsDroppedGoesAroundWhatStandsThere) {
  DropOnChannel(kAlphaRow, DragOfShader("Gradient"));
  DropOnChannel(kAlphaRow, DragOfShader("Hue"));
  EXPECT_EQ(ShaderAt(alpha_), "Hue");
  EXPECT_EQ(ShaderAt(alpha_.Below("input")), "Gradient");
}

TEST_F(WindowTest, AShaderIsDraggedToAnotherChannel) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  DropOnChannel(kAlphaRow, DragOfPlace(colour_));
  EXPECT_EQ(ShaderAt(alpha_), "Tiles");
  EXPECT_EQ(ShaderAt(colour_), "nothing");
}

TEST_F(WindowTest, AMaterialFileIsDroppedOntoAChannel) {
  const Json file = Parsed(ReadAll(Examples() / "graphs" / "embers.json"));
  DropOnChannel(kAlphaRow, DragOfFile(Examples() / "graphs" / "embers.json"));
  EXPECT_EQ(ShaderAt(alpha_), TextMember(file, "shader"));
}

TEST_F(WindowTest, ASceneFileThatIsDroppedIsOpened) {
  const std::unique_ptr<QMimeData> data(DragOfFile(Examples() / "scenes" / "toy_shelf.json"));
  const QPoint at(5, 5);
  QDragEnterEvent enter(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window_, &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop(at, Qt::CopyAction, data.get(), Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&window_, &drop);
  EXPECT_EQ(workshop_.document.Title(), "toy_shelf.json");
  EXPECT_EQ(window_.windowTitle().left(14), "toy_shelf.json");
}

TEST_F(WindowTest, TheCheckBoxSwitchesTheChannel) {
  tree_->topLevelItem(kAlphaRow)->setCheckState(0, Qt::Checked);
  QApplication::processEvents();
  EXPECT_TRUE(IsChannelOn(*workshop_.selection.MaterialJson(), "alpha"));
}

TEST_F(WindowTest, TypingAnotherNameRenamesTheMaterial) {
  auto* list = window_.findChild<MaterialPanel*>()->findChild<QListWidget*>();
  list->item(0)->setText("Basalt");
  EXPECT_EQ(MaterialNames(workshop_.document.Scene()), std::vector<std::string>{"Basalt"});
  list->item(0)->setText("");
  EXPECT_EQ(list->item(0)->text(), "Basalt") << "a material needs a name";
}

TEST_F(WindowTest, ClosingAsksBeforeChangesAreLost) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  AnswerNextBox(QMessageBox::Cancel);
  EXPECT_FALSE(window_.close());
  EXPECT_TRUE(window_.isVisible());
  AnswerNextBox(QMessageBox::Discard);
  EXPECT_TRUE(window_.close());
}

TEST_F(WindowTest, ClosingWithoutChangesAsksNothing) { EXPECT_TRUE(window_.close()); }

TEST_F(WindowTest, ABadFileIsToldInABox) {
  WriteAll(Folder() / "bad.json", R"({"format":"sorvanix-scene","version":0})");
  QString told;
  QTimer::singleShot(0, [&told] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    told = box->informativeText();
    box->accept();
  });
  const std::string before = workshop_.document.Text();
  EXPECT_FALSE(window_.Files().LoadScene(Folder() / "bad.json"));
  EXPECT_TRUE(told.contains("bad.json:1:38: /version: \"version\" must be 1"))
      << told.toStdString();
  EXPECT_EQ(workshop_.document.Text(), before);
}

TEST_F(WindowTest, PlayingMovesTheTimeAndShowsItsPictures) {
  workshop_.view.SetPlaying(true);
  EXPECT_TRUE(QTest::qWaitFor([this] { return workshop_.view.Time() > 0; }, kPatience));
  workshop_.view.SetPlaying(false);
  const float time = workshop_.view.Time();
  QTest::qWait(60);
  EXPECT_EQ(workshop_.view.Time(), time);
}

TEST_F(WindowTest, TheExportDialogWritesTheFile) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  ExportDialog dialog(workshop_);
  const auto file = Folder() / "tiles.png";
  dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(file.string()));
  dialog.show();
  EXPECT_TRUE(SaveScreenshot(dialog, std::filesystem::path(SORVANIX_SOURCE_FOLDER) / "out" /
                                         "screenshots" / "export.png"));
  QTimer::singleShot(0, [&dialog] {
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
  });
  EXPECT_EQ(dialog.exec(), QDialog::Accepted);
  EXPECT_EQ(QImage(file.c_str()).size(), QSize(1024, 1024));
}

TEST_F(WindowTest, ItsPictureSettles) {
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_.Views().IsBusy(); }, kPatience));
  const QImage& image = window_.Views().RenderView().Image();
  EXPECT_EQ(image.size(), window_.Views().RenderView().size());
}

}  // namespace
}  // namespace sorvanix::studio
