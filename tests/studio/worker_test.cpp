// The worker that paints pictures, and the one that bakes files: against the command line.
#include <QColorSpace>
#include <QImage>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

#include "apps/studio/render/bake_worker.h"
#include "apps/studio/render/painters.h"
#include "host/channels/channel_link.h"
#include "host/services/stream_json.h"
#include "tests/studio/studio_fixture.h"

namespace sorvanix::studio {
namespace {

constexpr int kPatience = 300000;  // ms; only a test that fails takes so long

class WorkerTest : public StudioTest {
 protected:
  // Takes every answer of a worker.
  struct Answers {
    explicit Answers(PictureWorker& worker) {
      QObject::connect(&worker, &PictureWorker::Painted, &context,
                       [this](const PaintedPass& pass) { passes.push_back(pass); });
    }
    bool WaitForFinal() {
      return QTest::qWaitFor([this] { return !passes.empty() && passes.back().isFinal; },
                             kPatience);
    }
    std::vector<PaintedPass> passes;
    QObject context;
  };

  SceneRequest Still(int width, int height, const char* scene = "still_life.json") const {
    const auto file = Examples() / "scenes" / scene;
    return {.catalogue = &Catalogue(),
            .text = ReadAll(file),
            .file = file,
            .width = width,
            .height = height};
  }

  void RunProgram(const QStringList& arguments) {
    QProcess process;
    process.start(SORVANIX_PROGRAM_PATH, arguments);
    ASSERT_TRUE(process.waitForFinished(kPatience));
    ASSERT_EQ(process.exitCode(), 0) << process.readAllStandardError().toStdString();
  }
};

// Files tell their colour space, pictures of a window have none.
bool SamePixels(const QImage& first, const QImage& second) {
  const auto plain = [](const QImage& image) {
    QImage converted = image.convertToFormat(QImage::Format_RGB888);
    converted.setColorSpace({});
    return converted;
  };
  return plain(first) == plain(second);
}

// 41 / 8 = 5, 41 / 4 = 10, 41 / 2 = 20, and 24 / 8 = 3, 24 / 4 = 6, 24 / 2 = 12.
TEST_F(WorkerTest, PaintsFromCoarseToFine) {
  PictureWorker worker;
  Answers answers(worker);
  worker.Submit(JobFor({.scene = Still(41, 24)}, 2));
  ASSERT_TRUE(answers.WaitForFinal());
  std::vector<QSize> sizes;
  for (const PaintedPass& pass : answers.passes) sizes.push_back(pass.image.size());
  EXPECT_EQ(sizes, (std::vector<QSize>{{5, 3}, {10, 6}, {20, 12}, {41, 24}, {41, 24}}));
  EXPECT_FALSE(worker.IsBusy());
}

TEST_F(WorkerTest, ADraftIsOneQuickPass) {
  PictureWorker worker;
  Answers answers(worker);
  worker.Submit(JobFor({.scene = Still(40, 24), .isDraft = true}, 2));
  ASSERT_TRUE(answers.WaitForFinal());
  ASSERT_EQ(answers.passes.size(), 1U);
  EXPECT_EQ(answers.passes[0].image.size(), QSize(20, 12));
}

TEST_F(WorkerTest, OnlyTheLatestJobAnswers) {
  PictureWorker worker;
  Answers answers(worker);
  std::uint64_t latest = 0;
  for (int width = 300; width > 290; --width) {
    latest = worker.Submit(JobFor({.scene = Still(width, 200)}, 1));
    QTest::qWait(width % 3);  // some are waiting, some half painted, when the next one comes
    answers.passes.clear();
  }
  ASSERT_TRUE(answers.WaitForFinal());
  for (const PaintedPass& pass : answers.passes) EXPECT_EQ(pass.job, latest);
  EXPECT_EQ(answers.passes.back().image.width(), 291);
}

TEST_F(WorkerTest, ACancelledJobAnswersNothing) {
  PictureWorker worker;
  Answers answers(worker);
  worker.Submit(JobFor({.scene = Still(640, 480)}, 4));
  worker.Cancel();
  QTest::qWait(50);
  EXPECT_TRUE(answers.passes.empty());
  EXPECT_FALSE(worker.IsBusy());
}

TEST_F(WorkerTest, AWorkerThatGoesEndsWhatItPaints) {
  auto worker = std::make_unique<PictureWorker>();
  worker->Submit(JobFor({.scene = Still(4000, 4000)}, 16));  // hours
  QTest::qWait(20);
  worker.reset();
}

TEST_F(WorkerTest, ASceneThatCannotBeReadIsAnError) {
  PictureWorker worker;
  Answers answers(worker);
  SceneRequest request = Still(10, 10);
  request.text = "{}";
  worker.Submit(JobFor({.scene = request}, 1));
  ASSERT_TRUE(answers.WaitForFinal());
  EXPECT_TRUE(answers.passes.back().image.isNull());
  EXPECT_FALSE(answers.passes.back().error.isEmpty());
}

TEST_F(WorkerTest, TheFinalPictureIsTheCommandLinesRender) {
  const auto file = Folder() / "render.png";
  const auto scene = Examples() / "scenes" / "still_life.json";
  RunProgram({"render", scene.c_str(), "--size", "160x90", "--samples", "2", "-o", file.c_str()});
  PictureWorker worker;
  Answers answers(worker);
  worker.Submit(JobFor({.scene = Still(160, 90)}, 2));
  ASSERT_TRUE(answers.WaitForFinal());
  EXPECT_TRUE(SamePixels(answers.passes.back().image, QImage(file.c_str())));
}

// A scene whose one material is a material file.
std::string SceneOf(const std::filesystem::path& material) {
  return R"({"format":"sorvanix-scene","version":1,"materials":[{"name":"M","channels":{"colour":
    {"graph":")" +
         material.string() + R"("},"bump":{"graph":")" + material.string() + "\"}}}]}";
}

TEST_F(WorkerTest, TheFlatPictureIsTheCommandLinesBake) {
  const auto material = Examples() / "graphs" / "embers.json", file = Folder() / "bake.png";
  RunProgram({"bake", material.c_str(), "--size", "96", "--samples", "2", "-o", file.c_str()});
  PictureWorker worker;
  Answers answers(worker);
  SceneRequest request = Still(96, 96);
  request.text = SceneOf(material);
  worker.Submit(JobFor({.scene = request, .flatChannel = ChannelColour}, 2));
  ASSERT_TRUE(answers.WaitForFinal());
  EXPECT_TRUE(SamePixels(answers.passes.back().image, QImage(file.c_str())));
}

class ExportTest : public WorkerTest {
 protected:
  // The error.
  QString Export(const std::filesystem::path& material, const cli::BakeOptions& options,
                 const std::filesystem::path& file) {
    BakeWorker worker(Catalogue());
    QSignalSpy ended(&worker, &BakeWorker::Ended);
    worker.Begin(
        {.sceneText = SceneOf(material), .sceneFile = {}, .options = options, .file = file});
    if (!ended.wait(kPatience)) return "never ended";
    return ended[0][0].toString();
  }
};

TEST_F(ExportTest, WritesTheBytesOfTheCommandLinesBake) {
  const auto material = Examples() / "graphs" / "embers.json";
  const auto ours = Folder() / "ours.png", its = Folder() / "its.png";
  cli::BakeOptions options;
  options.picture.width = options.picture.height = 64;
  options.picture.depth = host::PixelDepth::Sixteen;
  EXPECT_EQ(Export(material, options, ours), "");
  RunProgram({"bake", material.c_str(), "--size", "64", "--depth", "16", "-o", its.c_str()});
  EXPECT_EQ(ReadAll(ours), ReadAll(its)) << "pixels and recipe";
}

// A stored state says more than its graph: the views show it, so a bake holds it.
TEST_F(ExportTest, WhatAShaderStoredIsBaked) {
  const Json plain = Parsed(R"({"name":"M","channels":{"colour":{"graph":{"shader":"Tiles"}}}})");
  host::Link link;
  ASSERT_TRUE(link.HoldShader(Shader("Tiles").id));
  host::Container values;
  values.Set(Shader("Tiles").FindParameter("groutColor")->key, Vector{0, 1, 0});
  link.HeldShader()->SetParameters(values);
  host::Stream stream;
  link.HeldShader()->Write(stream);
  const Json stored = PutEdited(plain, "colour", Parsed(R"({"shader":"Tiles"})"),
                                host::StreamToJson(stream.Values()))
                          .value();
  const auto bake = [this](const Json& material, const char* name) {
    cli::BakeOptions options;
    options.picture.width = options.picture.height = 32;
    BakeWorker worker(Catalogue());
    QSignalSpy ended(&worker, &BakeWorker::Ended);
    worker.Begin({.sceneText = OneLine(studio::SceneOf(material, NewScene())),
                  .sceneFile = {},
                  .options = options,
                  .file = Folder() / name});
    EXPECT_TRUE(ended.wait(kPatience));
    EXPECT_EQ(ended[0][0].toString(), "");
    return QImage((Folder() / name).c_str());
  };
  EXPECT_NE(bake(stored, "stored.png"), bake(plain, "plain.png"));
}

TEST_F(ExportTest, WritesTheNormalMapOfTheCommandLine) {
  const auto material = Examples() / "materials" / "leather.json";
  const auto ours = Folder() / "ours.png", its = Folder() / "its.png";
  cli::BakeOptions options;
  options.picture.width = options.picture.height = 64;
  options.channel = ChannelBump;
  options.normal = host::NormalConvention::DirectX;
  options.plane = true;
  EXPECT_EQ(Export(material, options, ours), "");
  RunProgram({"bake", material.c_str(), "--size", "64", "--normal", "directx", "--plane", "-o",
              its.c_str()});
  EXPECT_EQ(ReadAll(ours), ReadAll(its));
}

TEST_F(ExportTest, CancellingLeavesTheFileAsItWas) {
  const auto file = Folder() / "picture.png";
  WriteAll(file, "the former one");
  BakeWorker worker(Catalogue());
  QSignalSpy ended(&worker, &BakeWorker::Ended);
  cli::BakeOptions options;
  options.picture.width = options.picture.height = 4096;
  options.picture.samples = 4;
  worker.Begin({.sceneText = SceneOf(Examples() / "graphs" / "embers.json"),
                .sceneFile = {},
                .options = options,
                .file = file});
  QTest::qWait(50);
  worker.Cancel();
  ASSERT_TRUE(ended.wait(kPatience));
  EXPECT_EQ(ended[0][0].toString(), "");
  EXPECT_TRUE(ended[0][1].toBool());
  EXPECT_EQ(ReadAll(file), "the former one");
}

TEST_F(ExportTest, WhatCannotBeWrittenIsToldBeforeTheWork) {
  const auto material = Examples() / "graphs" / "embers.json";
  cli::BakeOptions options;
  EXPECT_NE(Export(material, options, Folder() / "gone" / "a.png"), "");
  EXPECT_NE(Export(material, options, Folder() / "a.txt"), "");
  options.picture.depth = host::PixelDepth::Float;
  EXPECT_NE(Export(material, options, Folder() / "a.png"), "") << "PNG holds no floats";
}

}  // namespace
}  // namespace sorvanix::studio
