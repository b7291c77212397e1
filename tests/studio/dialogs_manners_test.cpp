// How dialogs behave as windows: what Enter, Escape, the wheel and the focus do, and what becomes
// of a dialog that is closed at an awkward moment.
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <functional>
#include <thread>

#include "apps/studio/dialogs/message_boxes.h"
#include "apps/studio/dialogs/number_field.h"
#include "host/dialogs/preview_threads.h"
#include "tests/studio/dialogs_fixture.h"

namespace sorvanix::studio {
namespace {

constexpr std::int32_t kSpeed = 19006, kContrast = 19008, kContrastSlider = 19009;  // of 2D Noise
constexpr std::int32_t kOctaves = 19002, kPreview = 19021, kTitle = 19022;
constexpr std::int32_t kRamp = 18001;   // of Gradient
constexpr std::int32_t kInput = 24017;  // of Hue

class DialogManners : public DialogsTest {
 protected:
  using Act = std::function<void(DialogWindow&)>;

  /// Opens the dialog of a shader; the acts are done one after the other, each once the one before
  /// has come to pass. They must close it.
  EditedShader EditBy(const std::string& graph, std::vector<Act> acts) {
    acts_ = std::move(acts);
    next_ = 0;
    NextSoon();
    QtDialogs dialogs(Sources());
    host::Shader shader = MakeShader(graph);
    return Edit(shader, dialogs);
  }

  Hand& User() { return *hand_; }

  static DialogWindow* Front() {
    return dynamic_cast<DialogWindow*>(QApplication::activeModalWidget());
  }
  static const host::Gadget& State(const DialogWindow& window, std::int32_t gadget) {
    return *window.Shown().Find(gadget);
  }
  static QWidget& At(const DialogWindow& window, std::int32_t gadget) {
    return *WidgetOf(window, gadget);
  }

  // Whether the preview is up to date is stored too.
  const Act pressEnter_ = [this](DialogWindow& window) {
    host::WaitForPreviews();
    User().Key(window, Qt::Key_Return);
  };
  const Act pressEscape_ = [this](DialogWindow& window) { User().Key(window, Qt::Key_Escape); };

 private:
  void NextSoon() {
    QTimer::singleShot(3, &context_, [this] {
      DialogWindow* window = Front();
      const bool isReady = window != nullptr && window->isVisible() && hand_->IsSettled();
      if (isReady && !window->isActiveWindow()) window->activateWindow();
      if (next_ == acts_.size()) return;
      NextSoon();
      if (isReady && window->isActiveWindow()) acts_[next_++](*window);
    });
  }

  QObject context_;
  std::unique_ptr<Hand> hand_ = MakeHand();
  std::vector<Act> acts_;
  std::size_t next_ = 0;
};

const std::string kNoise = R"({"shader":"2D Noise"})";

TEST_F(DialogManners, EnterConfirmsTheNumberThatIsBeingTyped) {
  const auto edited = EditBy(kNoise, {[&](DialogWindow& window) {
                               User().TypeInto(At(window, kSpeed), "2.5");
                               User().Key(At(window, kSpeed), Qt::Key_Return);
                             }});
  EXPECT_TRUE(edited.confirmed);
  EXPECT_NE(edited.block.find("2.5"), std::string::npos) << edited.block;
}

TEST_F(DialogManners, EscapeCancelsWhileANumberIsBeingTyped) {
  const auto edited = EditBy(kNoise, {[&](DialogWindow& window) {
                               User().TypeInto(At(window, kSpeed), "2.5");
                               User().Key(At(window, kSpeed), Qt::Key_Escape);
                             }});
  EXPECT_FALSE(edited.confirmed);
}

// A real key closes the list before it is a key press.
TEST_F(DialogManners, KeysThatCloseAListAreNotTheDialogs) {
  constexpr std::int32_t kType = 19001;
  const auto open = [&](DialogWindow& window) {
    At(window, kType).setFocus();
    User().Key(At(window, kType), Qt::Key_Space);
  };
  const auto close = [&](DialogWindow& window, Qt::Key key) {
    auto* list = static_cast<QComboBox&>(At(window, kType)).view();
    EXPECT_TRUE(list->isVisible());
    User().Key(*list, key);
  };
  int visible = 0;
  const auto look = [&](DialogWindow& window) { visible += window.isVisible() ? 1 : 0; };
  const auto edited = EditBy(
      kNoise, {open, [&](DialogWindow& window) { close(window, Qt::Key_Return); }, look, open,
               [&](DialogWindow& window) { close(window, Qt::Key_Escape); }, look, pressEnter_});
  EXPECT_EQ(visible, 2);
  EXPECT_TRUE(edited.confirmed);
}

TEST_F(DialogManners, AnArrowStepsFromTheNumberThatIsBeingTyped) {
  const auto edited = EditBy(kNoise, {[&](DialogWindow& window) {
                                        User().TypeInto(At(window, kContrast), "40");
                                        User().Key(At(window, kContrast), Qt::Key_Up);
                                      },
                                      pressEnter_});
  // The step of a percentage is one hundredth.
  EXPECT_EQ(edited.block, EditHeadless(kNoise, R"([{"set":19008,"value":41},"ok"])").block);
}

TEST_F(DialogManners, AClickOnASliderThatMovesNothingChangesNothing) {
  const auto edited = EditBy(R"({"shader":"2D Noise","contrast":0.404})",
                             {[&](DialogWindow& window) {
                                auto& slider = static_cast<QSlider&>(At(window, kContrastSlider));
                                slider.setSliderDown(true);  // as a press on its handle does
                                slider.setSliderDown(false);
                                EXPECT_EQ(State(window, kContrastSlider).Real(), 0.404f);
                              },
                              pressEnter_});
  EXPECT_TRUE(edited.confirmed);
}

TEST_F(DialogManners, TheWheelChangesOnlyWhatHasTheFocus) {
  const auto edited =
      EditBy(kNoise, {[&](DialogWindow& window) { At(window, kOctaves).setFocus(); },
                      [&](DialogWindow& window) {
                        for (const std::int32_t id : {kSpeed, kContrastSlider, 19001}) {
                          QWidget& widget = At(window, id);
                          User().Wheel(widget, widget.rect().center(), -120, {});
                        }
                      },
                      pressEnter_});
  EXPECT_TRUE(edited.confirmed);
  EXPECT_EQ(edited.block, EditHeadless(kNoise, R"(["ok"])").block);
}

TEST_F(DialogManners, WholeNumbersAreShownWithAllTheirDigits) {
  NumberField field;
  field.ShowNumber(1234567, "");
  EXPECT_EQ(field.text(), "1234567");
  field.ShowNumber(-2147483648.0, "");
  EXPECT_EQ(field.text(), "-2147483648");
  field.ShowNumber(9e18, "");
  EXPECT_EQ(field.text(), "9e+18");
  field.ShowNumber(1.0 / 3, " %");
  EXPECT_EQ(field.text(), "0.333333 %");
}

TEST_F(DialogManners, CommasAndUnitsAreUnderstood) {
  NumberField field;
  field.ShowNumber(1, " %");
  double typed = 0;
  QObject::connect(&field, &NumberField::Typed, [&](double number) { typed = number; });
  for (const auto& [text, number] :
       {std::pair{"2,5", 2.5}, std::pair{" 3 %", 3.0}, std::pair{"4%", 4.0}}) {
    field.findChild<QLineEdit*>()->setText(text);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(typed, number) << text;
  }
  for (const char* text : {"", "fast", "1e999", "nan", "inf"}) {
    typed = 0;
    field.findChild<QLineEdit*>()->setText(text);
    QTest::keyClick(&field, Qt::Key_Return);
    EXPECT_EQ(typed, 0) << text;
    EXPECT_EQ(field.text(), "1 %");
  }
}

TEST_F(DialogManners, EnterInAboutClosesItWhereverTheFocusIs) {
  constexpr std::int32_t kVersion = 35006;
  bool wasOpen = false;
  const auto edited = EditBy(kNoise, {[&](DialogWindow& window) {
                                        User().Press(At(window, kTitle), {5, 5}, {});
                                      },
                                      [&](DialogWindow& about) {
                                        wasOpen = WidgetOf(about, kVersion) != nullptr;
                                        User().Release();
                                      },
                                      [&](DialogWindow& about) {
                                        At(about, kVersion).setFocus();
                                        User().Key(At(about, kVersion), Qt::Key_Return);
                                      },
                                      [&](DialogWindow& window) {
                                        EXPECT_NE(WidgetOf(window, kSpeed), nullptr);
                                        User().Key(window, Qt::Key_Return);
                                      }});
  EXPECT_TRUE(wasOpen);
  EXPECT_TRUE(edited.confirmed);
}

TEST_F(DialogManners, ADialogThatClosesDuringADragEndsIt) {
  const auto edited =
      EditBy(R"({"shader":"Gradient"})", {[&](DialogWindow& window) {
                                            User().Press(At(window, kRamp), {120, 18}, {});
                                          },
                                          [&](DialogWindow& window) { window.close(); }});
  User().Release();
  EXPECT_FALSE(edited.confirmed);
}

TEST_F(DialogManners, KeysAndTheWheelWaitForTheEndOfADrag) {
  const std::string graph = R"({"shader":"Gradient"})";
  const auto edited = EditBy(
      graph, {[&](DialogWindow& window) {
                User().Press(At(window, kRamp), {120, 18}, {});
              },
              [&](DialogWindow& window) {
                User().Wheel(At(window, kRamp), {120, 18}, 120, {});
              },
              [&](DialogWindow& window) { User().Key(window, Qt::Key_I, Qt::ControlModifier); },
              [&](DialogWindow& window) { User().Key(window, Qt::Key_Escape); },
              [&](DialogWindow&) { User().Release(); }, pressEnter_});
  EXPECT_TRUE(edited.confirmed);
  EXPECT_EQ(edited.block, EditHeadless(graph, R"([{"mouse":"down","area":18001,"x":120,"y":18},
                                    {"mouse":"up","area":18001},"ok"])")
                              .block);
}

// Such as a message that comes meanwhile.
TEST_F(DialogManners, ADragEndsWhenAnotherWindowComesToTheFront) {
  bool isBoxShown = false;
  const auto edited =
      EditBy(R"({"shader":"Gradient"})", {[&](DialogWindow& window) {
                                            User().Press(At(window, kRamp), {120, 18}, {});
                                          },
                                          [&](DialogWindow& window) {
                                            QMessageBox box(&window);
                                            QTimer::singleShot(50, &box, [&] {
                                              isBoxShown = true;
                                              box.reject();
                                            });
                                            box.exec();
                                          },
                                          pressEnter_});
  User().Release();
  EXPECT_TRUE(isBoxShown);
  EXPECT_TRUE(edited.confirmed);
}

TEST_F(DialogManners, ADialogClosesWhileItsPreviewIsBeingDrawn) {
  const auto edited = EditBy(R"({"shader":"2D Noise","octaves":20})", {[&](DialogWindow& window) {
                               AreaWidget* area = window.Area(*window.Shown().Area(kPreview));
                               User().Click(*area, {50, 50});  // draws it anew
                               window.reject();
                             }});
  EXPECT_FALSE(edited.confirmed);
}

TEST_F(DialogManners, TheInnerDialogOutlivesTheOuterOne) {
  bool wasInside = false;
  const auto edited =
      EditBy(R"({"shader":"Hue","input":{"shader":"2D Noise"}})",
             {[&](DialogWindow& window) {
                // As a closing session does; no user can.
                QTimer::singleShot(100, &window, [&window] { window.reject(); });
                for (auto* button : At(window, kInput).findChildren<QToolButton*>()) {
                  if (button->menu() == nullptr) button->click();
                }
              },
              [&](DialogWindow& inner) {
                wasInside = WidgetOf(inner, kSpeed) != nullptr;
                QTest::qWait(200);
                User().Key(inner, Qt::Key_Escape);
              }});
  EXPECT_TRUE(wasInside);
  EXPECT_FALSE(edited.confirmed);
}

TEST_F(DialogManners, WhatStandsInALinkIsEditedInItsOwnDialog) {
  const std::string graph = R"({"shader":"Hue","input":{"shader":"2D Noise"}})";
  const auto edited =
      EditBy(graph, {[&](DialogWindow& window) {
                       for (auto* button : At(window, kInput).findChildren<QToolButton*>()) {
                         if (button->menu() == nullptr) {
                           User().Click(*button, button->rect().center());
                         }
                       }
                     },
                     [&](DialogWindow& inner) {
                       User().TypeInto(At(inner, kSpeed), "2.5");
                       User().Key(At(inner, kSpeed), Qt::Key_Return);
                     },
                     pressEnter_});
  EXPECT_TRUE(edited.confirmed);
  EXPECT_NE(edited.block.find("2.5"), std::string::npos) << edited.block;
}

TEST_F(DialogManners, ALinkWithAShaderWithoutADialogOffersNoEditing) {
  EditBy(R"({"shader":"Hue","input":{"shader":"Buffy"}})",
         {[&](DialogWindow& window) {
            for (auto* button : At(window, kInput).findChildren<QToolButton*>()) {
              EXPECT_EQ(button->isEnabled(), button->menu() != nullptr);
            }
          },
          pressEscape_});
}

TEST_F(DialogManners, ALongNameInALinkDoesNotWidenTheDialog) {
  const auto file = Folder() / (std::string(200, 'm') + ".png");
  ASSERT_TRUE(QImage(8, 8, QImage::Format_RGB32).save(QString::fromStdString(file.string())));
  int plain = 0, named = 0;
  EditBy(R"({"shader":"Hue"})",
         {[&](DialogWindow& window) { plain = window.width(); }, pressEscape_});
  EditBy(R"({"shader":"Hue","input":")" + file.string() + "\"}",
         {[&](DialogWindow& window) { named = window.width(); }, pressEscape_});
  EXPECT_EQ(named, plain);
}

TEST_F(DialogManners, ANestedDialogBeginsAboveTheOneThatOpenedIt) {
  EditBy(kNoise, {[&](DialogWindow& window) {
                    User().Press(At(window, kTitle), {5, 5}, {});
                  },
                  [&](DialogWindow& about) {
                    EXPECT_NE(dynamic_cast<DialogWindow*>(about.parentWidget()), nullptr);
                    User().Release();
                  },
                  [&](DialogWindow& about) { User().Key(about, Qt::Key_Escape); }, pressEscape_});
}

TEST_F(DialogManners, AMessageOfAnotherThreadIsShownOnTheMainOne) {
  MessageBoxes boxes;
  std::thread([&] { boxes.Show("from afar", 48); }).join();
  bool wasShown = false;
  QTimer::singleShot(50, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    wasShown = box->text() == "from afar";
    box->reject();
  });
  QTest::qWait(200);
  EXPECT_TRUE(wasShown);
}

// A picture of 470 x 50 at two pixels to a point is drawn in squares of four equal pixels.
TEST_F(DialogManners, AreasAreDrawnPixelForPixelAtTwiceTheScale) {
  EditBy(R"({"shader":"Gradient"})",
         {[&](DialogWindow& window) {
            const host::Bitmap& picture = window.Shown().Area(kRamp)->Picture();
            AreaWidget* area = window.Area(*window.Shown().Area(kRamp));
            QImage image(area->size() * 2, QImage::Format_RGB32);
            image.setDevicePixelRatio(2);
            area->render(&image);
            ASSERT_EQ(image.width(), 2 * picture.Width());
            for (int y = 0; y < image.height(); ++y) {
              for (int x = 0; x < image.width(); ++x) {
                const auto& pixel = picture.At(x / 2, y / 2);
                ASSERT_EQ(image.pixel(x, y), qRgb(pixel[0], pixel[1], pixel[2])) << x << ", " << y;
              }
            }
          },
          pressEscape_});
}

}  // namespace
}  // namespace sorvanix::studio
