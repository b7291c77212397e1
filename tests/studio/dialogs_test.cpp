// The module's dialogs in windows: what the user does by mouse and keys makes the same blocks as
// the same list of events without a window.
#include <fmt/format.h>

#include <ostream>
#include <vector>

#include "tests/studio/dialogs_fixture.h"

namespace sorvanix::studio {
namespace {

struct Edit {
  std::string name, graph, events;
  bool changes = true;  ///< the shader, unless it is cancelled
};

void PrintTo(const Edit& edit, std::ostream* stream) { *stream << edit.name; }

class DialogsInWindows : public DialogsTest, public testing::WithParamInterface<Edit> {};

TEST_P(DialogsInWindows, MakeTheSameBlocksAsWithoutAWindow) {
  const auto headless = EditHeadless(GetParam().graph, GetParam().events);
  const auto inWindow = EditInWindow(GetParam().graph, GetParam().events);
  EXPECT_EQ(headless.trouble, "");
  EXPECT_EQ(inWindow.trouble, "");
  EXPECT_EQ(inWindow.confirmed, headless.confirmed);
  EXPECT_EQ(inWindow.block, headless.block);
  const auto untouched =
      EditHeadless(GetParam().graph, headless.confirmed ? R"(["ok"])" : R"(["cancel"])");
  EXPECT_EQ(inWindow.block != untouched.block, inWindow.confirmed && GetParam().changes);
}

const Edit kEdits[] = {
    {"Numbers", R"({"shader":"2D Noise"})",
     R"([{"set":19006,"value":2.5},{"set":19008,"value":40},{"expect":19009,"value":40},
         {"set":19001,"value":"Cell Edge"},{"set":19017,"value":"#101820"},"ok"])"},
    {"NumbersBeyondTheLimits", R"({"shader":"2D Noise"})",
     R"([{"set":19008,"value":1e9},{"set":19010,"value":-1e9},{"set":19003,"value":0},"ok"])"},
    {"ASlider", R"({"shader":"2D Noise"})",
     R"([{"set":19009,"value":40},{"expect":19008,"value":40},"ok"])"},
    {"AChoiceThatDisables", R"({"shader":"2D Noise"})",
     R"([{"set":19001,"value":3},{"expect":19002,"enabled":false},
         {"expect":19016,"enabled":false},{"expect":19006,"enabled":true},"ok"])"},
    {"Cancel", R"({"shader":"2D Noise"})", R"([{"set":19006,"value":2.5},"cancel"])"},
    {"ResetByKeys", R"({"shader":"2D Noise","noiseType":7,"octaves":3})",
     R"([{"key":"R","qualifier":3},"ok"])"},
    {"RevertByKeys", R"({"shader":"2D Noise"})",
     R"([{"set":19006,"value":2.5},{"key":"R","qualifier":2},{"set":19007,"value":2},"ok"])"},
    {"Escape", R"({"shader":"2D Noise"})", R"([{"set":19006,"value":3},{"key":32785}])"},
    {"Tabs", R"({"shader":"Hue"})",
     R"([{"set":24014,"value":"Colorize"},{"set":24008,"value":90},"ok"])"},
    {"Links", R"({"shader":"Hue"})",
     R"([{"set":24017,"value":{"shader":"Tiles"}},{"set":24001,"value":10},"ok"])"},
    {"AClearedLink", R"({"shader":"Hue","input":{"shader":"2D Noise"}})",
     R"([{"set":24017,"value":null},"ok"])"},
    {"AboutInside", R"({"shader":"2D Noise"})",
     R"([{"mouse":"down","area":19022,"x":5,"y":5},{"mouse":"up","area":19022},"cancel",
         {"set":19006,"value":2.5},"ok"])"},
    {"AboutClosedByItsPicture", R"({"shader":"2D Noise"})",
     R"([{"mouse":"down","area":19022,"x":5,"y":5},{"mouse":"up","area":19022},
         {"mouse":"down","area":35000,"x":50,"y":50},{"mouse":"up","area":35000},
         {"set":19006,"value":2.5},"ok"])"},
    {"AKnotAddedColouredAndDragged", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":120,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":120,"y":33},{"mouse":"up","area":18001},
         {"mouse":"double","area":18001,"x":120,"y":33},{"colour":"#ff9040"},
         {"mouse":"down","area":18001,"x":120,"y":33},{"mouse":"move","area":18001,"x":300,"y":33},
         {"mouse":"up","area":18001},{"key":"I","qualifier":2},"ok"])"},
    {"AKnotTornOff", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":100,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":200,"y":33},{"mouse":"move","area":18001,"x":210,"y":90},
         {"mouse":"up","area":18001},"ok"])"},
    {"AKnotTornOffThatComesBack", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":200,"y":33},{"mouse":"move","area":18001,"x":210,"y":90},
         {"mouse":"move","area":18001,"x":220,"y":33},{"mouse":"up","area":18001},"ok"])"},
    {"AKnotDraggedPastAnother", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":100,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":100,"y":33},{"mouse":"move","area":18001,"x":150,"y":33},
         {"mouse":"move","area":18001,"x":290,"y":33},{"mouse":"up","area":18001},"ok"])"},
    {"ABiasDragged", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":234,"y":6},{"mouse":"move","area":18001,"x":100,"y":6},
         {"mouse":"up","area":18001},"ok"])"},
    {"ACopiedKnot", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"down","area":18001,"x":200,"y":33,"qualifier":4},
         {"mouse":"move","area":18001,"x":260,"y":33},{"mouse":"up","area":18001},"ok"])"},
    {"TheWheelOverAKnot", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"wheel","area":18001,"x":200,"y":33,"delta":120},
         {"mouse":"wheel","area":18001,"x":200,"y":33,"delta":120},
         {"mouse":"wheel","area":18001,"x":200,"y":33,"delta":-120},"ok"])"},
    {"TheWheelWithAlt", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"mouse":"wheel","area":18001,"x":200,"y":33,"delta":120,"qualifier":4},"ok"])"},
    {"ArrowsMoveAKnot", R"({"shader":"Gradient"})",
     R"([{"mouse":"down","area":18001,"x":200,"y":18},{"mouse":"up","area":18001},
         {"key":32770,"qualifier":1},{"key":32770,"qualifier":1},{"key":32771,"qualifier":2},
         {"key":32770,"qualifier":1},"ok"])"},
};

INSTANTIATE_TEST_SUITE_P(Each, DialogsInWindows, testing::ValuesIn(kEdits),
                         [](const auto& edit) { return edit.param.name; });

// A Gradient of so many grey knots at equal distances.
std::string Greys(int count) {
  std::string knots;
  for (int i = 0; i < count; ++i) {
    knots += fmt::format(R"({}{{"position":{},"colour":"#808080"}})", i == 0 ? "" : ",",
                         static_cast<double>(i) / (count - 1));
  }
  return fmt::format(R"({{"shader":"Gradient","ramp":[{}]}})", knots);
}

// Black, red and white at pixels 4, 234 and 465 of the area; biases half way between them.
const std::string kThree = R"({"shader":"Gradient","ramp":[{"position":0,"colour":"#000000"},
    {"position":0.5,"colour":"#ff0000"},{"position":1,"colour":"#ffffff"}]})";

struct Point {
  int x, y;
};

// A press at the first point, moves over the others, a release at the last.
std::string Drag(std::initializer_list<Point> points) {
  std::string events;
  const auto add = [&](const char* what, Point at) {
    events += fmt::format(R"({{"mouse":"{}","area":18001,"x":{},"y":{}}},)", what, at.x, at.y);
  };
  add("down", *points.begin());
  for (const Point* at = points.begin() + 1; at < points.end(); ++at) add("move", *at);
  add("up", *(points.end() - 1));
  return events;
}

std::string List(const std::string& events) { return "[" + events + "\"ok\"]"; }

std::vector<Edit> RampEdits() {
  constexpr int kStrip = 18, kKnots = 30, kBiases = 6, kOutside = 60;
  constexpr int kLeft = 4, kMiddle = 234, kBias = 119;
  const std::string twice = R"({"mouse":"double","area":18001,"x":)";
  const std::string repeat = R"({"key":"D","qualifier":2},)";
  const std::string step = R"({"set":18003,"value":"Step"},)";
  return {
      {"OneOfThreeTornOff", kThree, List(Drag({{kMiddle, kKnots}, {kMiddle, kOutside}}))},
      {"OneThatComesBack", kThree,
       List(Drag({{kMiddle, kKnots}, {kMiddle, kOutside}, {kMiddle + 30, kKnots}}))},
      {"OneOfTwoStays", Greys(2), List(Drag({{kLeft, kKnots}, {kLeft, kOutside}})), false},
      {"OneFromFarOutside", kThree, List(Drag({{kMiddle, kKnots}, {600, kKnots}, {-20, kKnots}}))},
      {"AClickOnTheStrip", kThree, List(Drag({{150, kStrip}}))},
      {"AClickBesideTheStrip", kThree, List(Drag({{1, kStrip}})), false},
      {"FiftyAreTheMost", Greys(50), List(Drag({{100, kStrip}, {140, kStrip}})), false},
      {"Repeat", kThree, List(repeat)},
      {"TwentySixAreNotRepeated", Greys(26), List(repeat), false},
      {"ABias", kThree, List(Drag({{kBias, kBiases}, {165, kBiases}}))},
      {"ABiasThatLeaves", kThree, List(Drag({{kBias, kBiases}, {165, kBiases}, {165, kOutside}}))},
      {"StepsHaveNoBias", kThree, List(step + Drag({{kBias, kBiases}}))},
      {"ADoublePressOnABias", kThree, List(Drag({{kBias, kBiases}}) + twice + R"(119,"y":6},)")},
      {"ADoublePressOnAKnot", kThree,
       List(Drag({{kMiddle, kKnots}}) + R"({"colour":[0,1,0]},)" + twice + R"(234,"y":30},)")},
      {"ADoublePressOnTheStrip", kThree,
       List(Drag({{150, kStrip}}) + R"({"colour":[0,0,1]},)" + twice + R"(150,"y":18},)")},
      {"AColourThatIsCancelled", kThree,
       List(Drag({{kMiddle, kKnots}}) + R"({"colour":null},)" + twice + R"(234,"y":30},)")},
      {"FromBiasToBiasByKeys", kThree,
       List(Drag({{kMiddle, kKnots}}) +
            R"({"key":32768,"qualifier":2},{"key":32771,"qualifier":2},{"key":32770,"qualifier":1},
               {"key":32769,"qualifier":2},{"key":32770,"qualifier":1},)")},
      {"KeysThatAreTakenAndIgnored", kThree,
       List(R"({"key":"C","qualifier":3},{"key":"V","qualifier":3},)"), false},
      {"OfFalloff", R"({"shader":"Falloff"})",
       R"([{"mouse":"down","area":20001,"x":100,"y":18},{"mouse":"move","area":20001,"x":180,"y":20},
           {"mouse":"up","area":20001},"ok"])"},
      {"OfFresnel", R"({"shader":"Fresnel"})",
       R"([{"mouse":"down","area":27001,"x":100,"y":18},{"mouse":"move","area":27001,"x":180,"y":20},
           {"mouse":"up","area":27001},"ok"])"},
      {"OfColorizer", R"({"shader":"Colorizer"})",
       R"([{"mouse":"down","area":17001,"x":100,"y":18},{"mouse":"move","area":17001,"x":180,"y":20},
           {"mouse":"up","area":17001},{"set":17005,"value":{"shader":"Hue"}},"ok"])"},
  };
}

INSTANTIATE_TEST_SUITE_P(Ramp, DialogsInWindows, testing::ValuesIn(RampEdits()),
                         [](const auto& edit) { return edit.param.name; });

// The lists that are shipped, each with the shader whose dialog has its gadgets.
std::vector<Edit> ShippedEdits() {
  std::vector<Edit> edits;
  for (const auto& file : std::filesystem::directory_iterator(Examples() / "edits")) {
    const std::string list = ReadAll(file.path());
    const bool isOfGradient = list.find("18001") != std::string::npos;
    edits.push_back({file.path().stem().string(),
                     fmt::format(R"({{"shader":"{}"}})", isOfGradient ? "Gradient" : "2D Noise"),
                     list});
  }
  return edits;
}

INSTANTIATE_TEST_SUITE_P(Shipped, DialogsInWindows, testing::ValuesIn(ShippedEdits()),
                         [](const auto& edit) { return edit.param.name; });

}  // namespace
}  // namespace sorvanix::studio
