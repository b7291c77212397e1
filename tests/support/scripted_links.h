// Channel links for tests: a link shows what it is told to, records every read and message, and may
// hold a real shader.
#pragma once

#include <sorvanix/host_api.h>

#include <functional>
#include <string>
#include <vector>

#include "tests/support/fake_data.h"

namespace sorvanix::test {

struct ShaderUnderTest;

/// One read of a link: what it was asked, and what the slot and the render held at that moment.
struct LinkRead {
  int link;  ///< its number, from 1 in the order of creation
  Vector uvw, delta, normal;
  float time;
  std::int32_t tagFlag;
  float blurOffset, blurScale;
  FootprintBlock head;             ///< of the calling CPU's slot, for a link with slots
  Vector hitPoint, localHitPoint;  ///< of the render, if there is one
};

/// What a link holds, and what Copy and the streams take along.
struct LinkContent {
  std::string name;           ///< what Compare goes by; empty for an empty link
  std::int32_t pluginId = 0;  ///< of the shader; 0 for a bitmap and an empty link
  std::int32_t bitmapWidth = 0, bitmapHeight = 0;  ///< above 0 for a bitmap
  Vector colour = {};                              ///< what it shows...
  std::function<Vector(const LinkRead&)> show;     ///< ...unless this is set
  const ShaderRecord* record = nullptr;            ///< of a real shader, which answers all then
  ShaderInstance* instance = nullptr;
};

/// The object behind a ChannelLink.
class ScriptedLink {
 public:
  explicit ScriptedLink(int number) : number(number) {}
  ~ScriptedLink();
  ScriptedLink(const ScriptedLink&) = delete;
  ScriptedLink& operator=(const ScriptedLink&) = delete;

  static ScriptedLink& Of(const ChannelLink* link);
  ChannelLink* handle() { return reinterpret_cast<ChannelLink*>(this); }

  /// Lets the link hold a bitmap, a scripted shader, or a real one (which must outlive it).
  void HoldBitmap(std::int32_t width, std::int32_t height);
  void HoldShader(std::int32_t pluginId);
  void HoldShader(ShaderUnderTest& shader, std::int32_t pluginId);
  /// Lets it hold a real shader of its own.
  void MakeShader(std::int32_t pluginId, const ShaderRecord& record);
  /// Gives the scripted shader slots, which it reports when it is asked.
  void MakeSlots(std::int32_t cpus, std::int32_t stride = SlotStrideNoise);
  FootprintBlock& Slot(std::int32_t cpu);

  const int number;
  LinkContent content;
  FakeContainer parameters;        ///< what it answers to the get and describe messages
  std::int32_t messageAnswer = 1;  ///< the result of its messages
  std::int32_t initAnswer = 0;     ///< the result of its InitRender
  Word slotAddress = 0;            ///< what it reports; MakeSlots sets both
  Word slotStride = 0;
  ShaderInstance instance = {};  ///< of the scripted shader, with a block of 2 kB
  struct Message {
    std::int32_t id;
    FakeContainer payload;  ///< as it came
  };
  std::vector<Message> messages;

 private:
  bool ownsShader_ = false;
  std::vector<std::uint32_t> slots_;
  std::vector<std::uint32_t> block_;
};

const ChannelTable& ScriptedLinkTable();
/// Serves the size of links' bitmaps.
const BitmapTable& ScriptedBitmapTable();

}  // namespace sorvanix::test
