// Two shaders made for tests of links: one that tells what it is asked, and one that scales what
// stands in its input. They are registered without a module.
#pragma once

#include <sorvanix/records.h>

#include <memory>
#include <vector>

#include "host/channels/channel_link.h"
#include "host/host.h"
#include "host/services/shader_catalogue.h"

namespace sorvanix::host::fake {

/// Answers its own value in red and the sample's u and v in green and blue. Takes part in a render
/// while its value is not negative.
inline constexpr std::int32_t kProbe = 5001;
/// Answers its input times its factor, in the way of a filter.
inline constexpr std::int32_t kScale = 5002;
/// An id that nobody registers.
inline constexpr std::int32_t kUnknown = 5003;

inline constexpr std::int32_t kKeyValue = 1000;   // of Probe: a float, 0.25 at first
inline constexpr std::int32_t kKeyFactor = 1000;  // of Scale: a float, 0.5 at first
inline constexpr std::int32_t kKeyInput = 1001;   // of Scale
inline constexpr float kRefusedValue = -77;       // in a stream that Probe does not read
inline constexpr std::int32_t kPing = 77;         // a message that Probe answers with 78

/// The last sample that a Probe was asked for.
inline ChannelSample lastSample;
inline RenderContext* preparedRender = nullptr;  // of a Probe between InitRender and FreeRender
inline int preparedCount = 0;

/// A colour for every bitmap file whose name does not begin with "missing"; looked up values go to
/// lastLookup.
inline TextureLookup lastLookup;
tl::expected<TexturePointer, std::string> OpenTexture(const std::filesystem::path& file);

/// A host with links, bitmaps and dialogs, whose links know the two shaders.
class LinkHost {
 public:
  LinkHost();
  ~LinkHost();

  const HostTables& Tables() const { return host_.Tables(); }
  std::size_t LiveBlocks() const { return host_.Memory().liveBlocks; }
  Shader Create(std::int32_t pluginId) const {
    return *Shader::Create(*registry_.Find(pluginId), ChannelColour);
  }

 private:
  Host host_;
  ShaderRegistry registry_;
  std::unique_ptr<LinkedShaders> links_;
};

/// The two shaders as material files name them: "Probe" with "value", "Scale" with "factor" and
/// "input". "Colours" is in the catalogue alone: it has a "ramp" of up to four knots.
const ShaderCatalogue& Catalogue();

/// The container of a link that holds a Probe with a value.
Container ProbeDescription(float value);
/// The container of a link that holds a Scale whose input is described.
Container ScaleDescription(float factor, const Container& input);
/// The container of a link that holds a bitmap.
Container BitmapDescription(const char* filename);

}  // namespace sorvanix::host::fake
