// The main window under keys, drops and closing.
#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QDropEvent>
#include <QLabel>
#include <QListWidget>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QSet>
#include <QSettings>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include "apps/studio/program/script.h"
#include "apps/studio/window/channel_bar.h"
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
    window_.Views().SetSamples(1);
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
  void DropOnChannel(int row, QMimeData* data, Qt::DropAction action = Qt::MoveAction) {
    const QPoint at = tree_->visualItemRect(tree_->topLevelItem(row)).center();
    const std::unique_ptr<QMimeData> owned(data);
    QDragEnterEvent enter(at, action, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree_->viewport(), &enter);
    QDragMoveEvent move(at, action, data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(tree_->viewport(), &move);
    QDropEvent drop(at, action, data, Qt::LeftButton, Qt::NoModifier);
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
  EXPECT_EQ(tree_->defaultDropAction(), Qt::MoveAction) << "what a mouse does without a key";
}

TEST_F(WindowTest, AShaderIsCopiedToAnotherChannel) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  DropOnChannel(kAlphaRow, DragOfPlace(colour_), Qt::CopyAction);
  EXPECT_EQ(ShaderAt(alpha_), "Tiles");
  EXPECT_EQ(ShaderAt(colour_), "Tiles");
}

TEST_F(WindowTest, KeysCutCopyAndPasteShaders) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  QTest::keyClick(tree_, Qt::Key_X, Qt::ControlModifier);
  EXPECT_EQ(ShaderAt(colour_), "nothing");
  workshop_.selection.SetPlace(alpha_);
  QTest::keyClick(tree_, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(ShaderAt(alpha_), "Tiles");
  QTest::keyClick(tree_, Qt::Key_C, Qt::ControlModifier);
  workshop_.selection.SetPlace(colour_);
  QTest::keyClick(tree_, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(ShaderAt(colour_), "Tiles");
  EXPECT_EQ(ShaderAt(alpha_), "Tiles");
}

TEST_F(WindowTest, PastingWhatIsNoGraphChangesNothing) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  const std::string before = workshop_.document.Text();
  for (const char* text : {"null", "7", "words", "{\"shader\":\"Nothing\"}", "{}"}) {
    QApplication::clipboard()->setText(text);
    QTest::keyClick(tree_, Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(workshop_.document.Text(), before) << text;
  }
}

// The shelf does by a double click what it does by a drag.
TEST_F(WindowTest, AFilterThatIsChosenGoesAroundWhatStandsThere) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  workshop_.commands.TakeShader(colour_, "Hue");
  EXPECT_EQ(ShaderAt(colour_), "Hue");
  EXPECT_EQ(ShaderAt(colour_.Below("input")), "Tiles");
  workshop_.commands.TakeShader(colour_, "Gradient");
  EXPECT_EQ(ShaderAt(colour_), "Gradient");
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
  QApplication::processEvents();
  EXPECT_EQ(workshop_.document.Title(), "toy_shelf.json");
  EXPECT_EQ(window_.windowTitle().left(14), "toy_shelf.json");
}

TEST_F(WindowTest, TheCheckBoxSwitchesTheChannel) {
  tree_->topLevelItem(kAlphaRow)->setCheckState(0, Qt::Checked);
  QApplication::processEvents();
  EXPECT_TRUE(IsChannelOn(*workshop_.selection.MaterialJson(), "alpha"));
}

TEST_F(WindowTest, SpaceSwitchesTheChannel) {
  const auto isOn = [this] { return IsChannelOn(*workshop_.selection.MaterialJson(), "alpha"); };
  workshop_.selection.SetPlace(alpha_);
  for (const int column : {0, 1}) {
    tree_->setCurrentItem(tree_->topLevelItem(kAlphaRow), column);
    const bool was = isOn();
    QTest::keyClick(tree_, Qt::Key_Space);
    QApplication::processEvents();
    EXPECT_EQ(isOn(), !was) << "column " << column;
  }
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

TEST_F(WindowTest, WhatIsTypedIsSavedToo) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  const auto file = Folder() / "typed.json";
  ASSERT_TRUE(workshop_.document.SaveAs(file));
  ASSERT_THAT(ReadAll(file), testing::Not(testing::HasSubstr("0.8")));
  auto* strength = window_.findChild<ChannelBar*>()->findChild<QDoubleSpinBox*>();
  strength->setFocus();
  strength->selectAll();
  QTest::keyClicks(strength, "80");
  ASSERT_TRUE(window_.Files().SaveFile());
  EXPECT_THAT(ReadAll(file), testing::HasSubstr("0.8"));
}

TEST_F(WindowTest, ClosingWithoutChangesAsksNothing) { EXPECT_TRUE(window_.close()); }

// What the next box tells, which is then accepted.
void AcceptNextBox(QString& told) {
  QTimer::singleShot(0, [&told] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    told = box->informativeText();
    box->accept();
  });
}

TEST_F(WindowTest, ABadFileIsToldInABox) {
  WriteAll(Folder() / "bad.json", R"({"format":"sorvanix-scene","version":0})");
  QString told;
  AcceptNextBox(told);
  const std::string before = workshop_.document.Text();
  EXPECT_FALSE(window_.Files().LoadScene(Folder() / "bad.json"));
  EXPECT_TRUE(told.contains("bad.json:1:38: /version: \"version\" must be 1"))
      << told.toStdString();
  EXPECT_EQ(workshop_.document.Text(), before);
}

TEST_F(WindowTest, ABadMaterialFileIsToldInABoxWithItsPlace) {
  WriteAll(Folder() / "bad.json", R"({"shader":"2D Nose"})");
  QString told;
  AcceptNextBox(told);
  window_.Files().OpenFile(Folder() / "bad.json");
  EXPECT_TRUE(told.contains("bad.json:1:11: /shader")) << told.toStdString();
  EXPECT_EQ(workshop_.document.Materials().size(), 1U);
}

TEST_F(WindowTest, WhatAnotherProgramWroteIsReplacedOnlyWhenTheUserSaysSo) {
  const auto file = Folder() / "scene.json";
  ASSERT_TRUE(workshop_.document.SaveAs(file));
  workshop_.commands.PlaceShader(colour_, "Tiles");
  WriteAll(file, "of another program");
  AnswerNextBox(QMessageBox::Cancel);
  EXPECT_FALSE(window_.Files().SaveFile());
  EXPECT_EQ(ReadAll(file), "of another program");
  AnswerNextBox(QMessageBox::Save);
  EXPECT_TRUE(window_.Files().SaveFile());
  EXPECT_EQ(ReadAll(file), workshop_.document.Text());
}

constexpr const char* kLater = R"({"format":"sorvanix-scene","version":2,"materials":[{"name":"M",
  "finish":3,"channels":{"colour":{"graph":{"shader":"Tiles","glow":2}},
  "alpha":{"on":false,"graph":{"shader":"Fabric","weave":4}}}}]})";

TEST_F(WindowTest, ASceneOfALaterProgramIsShownWithItsWarnings) {
  WriteAll(Folder() / "later.json", kLater);
  ASSERT_TRUE(window_.Files().LoadScene(Folder() / "later.json"));
  auto* box = window_.findChild<QMessageBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_FALSE(box->isModal());
  EXPECT_TRUE(box->informativeText().contains("Fabric")) << box->informativeText().toStdString();
  box->close();
  EXPECT_TRUE(tree_->topLevelItem(kAlphaRow)->text(1).contains("Fabric"));
  EXPECT_EQ(ShaderAt(colour_), "Tiles");
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window_.Views().IsBusy(); }, kPatience));
  EXPECT_FALSE(window_.Views().RenderView().Image().isNull());
  EXPECT_EQ(window_.Views().RenderView().Error(), "");
}

TEST_F(WindowTest, TheDocumentationIsWhereThePlugInOpensIt) {
  const std::filesystem::path module = SORVANIX_MODULE_PATH;
  EXPECT_EQ(SharedEngine()->DocumentationPage(),
            module.parent_path().parent_path() / "Documentation" / "index.html");
}

// Of every menu, and of what is seen beside the menu bar at a time.
TEST_F(WindowTest, NoTwoMnemonicsAreTheSame) {
  const auto keyOf = [](const QString& text) { return QKeySequence::mnemonic(text).toString(); };
  const auto expectDifferent = [&](const QStringList& texts, const QString& where) {
    QSet<QString> keys;
    for (const QString& text : texts) {
      const QString key = keyOf(text);
      if (key.isEmpty()) continue;
      EXPECT_FALSE(keys.contains(key)) << where.toStdString() << ": " << text.toStdString();
      keys.insert(key);
    }
  };
  for (const QMenu* menu : window_.findChildren<QMenu*>()) {
    QStringList texts;
    for (const QAction* action : menu->actions()) texts << action->text();
    expectDifferent(texts, menu->title());
  }
  QStringList shown;
  for (const QAction* action : window_.menuBar()->actions()) shown << action->text();
  for (const QLabel* label : window_.findChildren<QLabel*>()) shown << label->text();
  for (const QTabWidget* tabs : window_.findChildren<QTabWidget*>()) {
    for (int i = 0; i < tabs->count(); ++i) shown << tabs->tabText(i);
  }
  for (const QAbstractButton* button : window_.findChildren<QAbstractButton*>()) {
    shown << button->text();
  }
  expectDifferent(shown, "window");
}

TEST_F(WindowTest, NoTwoShortcutsAreTheSame) {
  QSet<QKeySequence> taken;
  QSet<QAction*> actions;
  for (const QMenu* menu : window_.findChildren<QMenu*>()) {
    for (QAction* action : menu->actions()) actions.insert(action);
  }
  for (const QAction* action : actions) {
    if (action->shortcutContext() != Qt::WindowShortcut) continue;
    for (const QKeySequence& key : action->shortcuts()) {
      EXPECT_FALSE(taken.contains(key)) << key.toString().toStdString();
      taken.insert(key);
    }
  }
  EXPECT_GT(taken.size(), 15);
}

TEST_F(WindowTest, EveryPresetCanBePlaced) {
  const auto presets = PresetItems({Examples() / "graphs", Examples() / "materials"}, Catalogue());
  EXPECT_GT(presets.size(), 50U);
  for (const ShelfItem& preset : presets) {
    const int steps = workshop_.document.History().count();
    workshop_.commands.PlaceFile(colour_, preset.file);
    EXPECT_EQ(workshop_.document.History().count(), steps + 1) << preset.file;
  }
}

// For those who hear the window, and for those who wonder what a button does.
TEST_F(WindowTest, EveryControlHasANameAndEveryButtonATip) {
  for (QWidget* widget : window_.findChildren<QWidget*>()) {
    if (!widget->isVisible() || widget->focusPolicy() == Qt::NoFocus) continue;
    if (qobject_cast<QTabBar*>(widget) != nullptr) continue;
    if (QString(widget->objectName()).startsWith("qt_")) continue;  // Qt's own
    const QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(widget);
    ASSERT_NE(seen, nullptr);
    EXPECT_FALSE(seen->text(QAccessible::Name).isEmpty())
        << widget->metaObject()->className() << ' ' << widget->toolTip().toStdString();
  }
  for (const QToolButton* button : window_.findChildren<QToolButton*>()) {
    if (!button->isVisible()) continue;
    EXPECT_FALSE(button->toolTip().isEmpty()) << button->text().toStdString();
  }
}

// Every control is reached by Tab: it comes round to where it began.
TEST_F(WindowTest, TabGoesThroughAllPanels) {
  QSet<QString> seen;
  for (int i = 0; i < 60; ++i) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_NE(QApplication::focusWidget(), nullptr);
    seen.insert(QApplication::focusWidget()->accessibleName());
  }
  for (const char* name : {"Channels", "Materials", "Shaders", "Time", "Colour of the channel"}) {
    EXPECT_TRUE(seen.contains(name)) << name;
  }
}

TEST_F(WindowTest, TheLayoutIsKeptForTheNextStart) {
  auto* dock = window_.findChild<QDockWidget*>("Shelf");
  ASSERT_NE(dock, nullptr);
  dock->close();
  EXPECT_TRUE(window_.close());
  MainWindow next(workshop_, editor_);
  next.RestoreLayout();
  EXPECT_TRUE(next.findChild<QDockWidget*>("Shelf")->isHidden());
  EXPECT_FALSE(next.findChild<QDockWidget*>("Channels")->isHidden());
  QSettings().clear();
}

TEST_F(WindowTest, ClosingDoesNotWaitForPictures) {
  for (int i = 0; i < 5; ++i) {
    Workshop workshop(*SharedEngine());
    MainWindow window(workshop, editor_);
    window.show();
    ASSERT_TRUE(workshop.document.Open(Examples() / "scenes" / "still_life.json"));
    workshop.view.SetObject({.kind = PreviewObject::Kind::Scene, .mesh = {}});
    QTest::qWait(20 * i);
    EXPECT_TRUE(window.Views().IsBusy() || workshop.thumbnails.IsBusy());
    EXPECT_TRUE(window.close());
  }
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

TEST_F(WindowTest, TheExportDialogAsksBeforeItReplacesAFile) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  ExportDialog dialog(workshop_);
  const auto file = Folder() / "tiles.png";
  WriteAll(file, "the former one");
  dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(file.string()));
  dialog.show();
  AnswerNextBox(QMessageBox::Cancel);
  dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
  EXPECT_EQ(ReadAll(file), "the former one");
}

TEST_F(WindowTest, AnExportDialogThatGoesEndsItsBake) {
  workshop_.commands.PlaceShader(colour_, "Tiles");
  const auto file = Folder() / "tiles.png";
  {
    ExportDialog dialog(workshop_);
    dialog.findChild<QLineEdit*>()->setText(QString::fromStdString(file.string()));
    dialog.findChild<QSpinBox*>()->setValue(16);  // samples: minutes
    dialog.show();
    dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save)->click();
    QTest::qWait(20);
  }
  EXPECT_TRUE(std::filesystem::is_empty(Folder()));
}

TEST_F(WindowTest, ItsPictureSettles) {
  EXPECT_TRUE(QTest::qWaitFor([this] { return !window_.Views().IsBusy(); }, kPatience));
  const QImage& image = window_.Views().RenderView().Image();
  EXPECT_EQ(image.size(), window_.Views().RenderView().size());
}

}  // namespace
}  // namespace sorvanix::studio
