// Channel links: what stands in one input of a shader, which is nothing, another shader, or a
// bitmap.
//
// A shader in a link has inputs of its own, so links make graphs. A link owns what it holds, so a
// graph is a tree: no link can lead back to itself.
#pragma once

#include <sorvanix/host_render.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <tl/expected.hpp>
#include <variant>

#include "host/channels/bitmap.h"
#include "host/loader/shader.h"
#include "host/services/containers.h"
#include "host/services/handle.h"
#include "host/services/registration.h"
#include "host/services/streams.h"

namespace sorvanix::host {

/// How many shaders may stand one behind the other below the outermost one. Every operation on a
/// graph recurses this deep at most. What is deeper is refused where it would enter: by HoldShader,
/// CopyFrom, Message and Read, which leave the link that stands too deep as it was; the shaders
/// around it go on without it.
inline constexpr int kDeepestGraph = 64;

/// While it lives, links find the shaders that they are told to hold in this registry; without one
/// they know none. One at a time. Links that hold shaders must be gone before the registry is.
class LinkedShaders {
 public:
  explicit LinkedShaders(const ShaderRegistry& registry) noexcept;
  ~LinkedShaders();
  LinkedShaders(const LinkedShaders&) = delete;
  LinkedShaders& operator=(const LinkedShaders&) = delete;
};

/// All but Sample on the main thread, and not while a render of the graph runs.
class Link : public Handled<Link, ChannelLink> {
 public:
  /// A bitmap by name. Its file is opened at once; a link whose file cannot be opened keeps the
  /// name, reads as black and takes part in no render.
  struct LinkedBitmap {
    Filename filename;
    TexturePointer texture;  // null without a file
    std::unique_ptr<Bitmap> bitmap;
  };

  /// An empty link.
  Link() = default;

  bool IsEmpty() const noexcept { return std::holds_alternative<std::monostate>(content_); }
  /// The held shader's id; 0 without a shader.
  std::int32_t PluginId() const noexcept;
  /// What is held, or null when it is something else.
  Shader* HeldShader() noexcept { return std::get_if<Shader>(&content_); }
  const Shader* HeldShader() const noexcept { return std::get_if<Shader>(&content_); }
  const LinkedBitmap* HeldBitmap() const noexcept { return std::get_if<LinkedBitmap>(&content_); }
  /// The picture of a bitmap whose file could be opened, or null.
  Bitmap* Picture() noexcept;

  void Clear() noexcept { content_ = std::monostate(); }
  /// Makes the link hold a new shader with its defaults; false, with nothing changed, when there is
  /// no such shader, when its memory is short, or when it would stand too deep.
  bool HoldShader(std::int32_t pluginId);
  void HoldBitmap(std::string filename);

  /// Takes a copy of what the other holds; false, with nothing changed, when memory is short or the
  /// copy would stand too deep.
  bool CopyFrom(const Link& source);
  /// True when both hold nothing, equal shaders of one kind, or bitmaps of one name.
  bool Equals(const Link& other) const;

  /// A message for the held shader; the answer is the shader's, 0 without one. Three messages are
  /// the link's own, in the form of ids.h:
  ///
  /// - MessageSetParameters takes up the shader that KeyLinkPluginId names, unless the link holds
  ///   one of that kind, passes KeyLinkParameters on to it and confirms them
  ///   (import_confirmation.h). An id of 0 with KeyLinkFilename
  ///   makes it a bitmap, -1 an empty link. What has no key stays as it is. The answer is 0, and
  ///   nothing changed, when that shader cannot be had.
  /// - MessageGetParameters tells what the link holds under the same keys, none for an empty link;
  ///   of an unread shader its id alone.
  /// - MessageDescribeParameters tells the type word of the id, and the shader's type words under
  ///   KeyLinkParameters; none for an empty link.
  std::int32_t Message(std::int32_t id, Container& payload);

  /// Prepares a render of what is held; false when it cannot take part: the shader says so or is
  /// unread, or the bitmap has no file. An empty link takes part: it is black.
  bool InitRender(const RenderInit& init);
  void FreeRender();
  /// The colour of the shader or bitmap at a sample, else black. The shader may write the sample.
  /// Safe on several threads.
  Vector Sample(ChannelSample& sample);

  /// Takes the next value of the stream when it is a link; false when it is none, or cannot be held
  /// here (memory is short, or it would stand too deep): then the link stays as it was. A shader
  /// that is not registered, or that refuses its values (they may be of a later version), is kept
  /// as it is, unread, to be written again.
  bool Read(Stream& stream);
  bool Write(Stream& stream) const;

 private:
  Word HeldId() const noexcept;
  bool SetParameters(const Container& description);
  void GetParameters(Container& description);

  std::variant<std::monostate, Shader, LinkedBitmap, StreamLink> content_;
};

/// Puts the operations on links into the channel table, and reading and writing them into the
/// stream table.
void InstallChannelLinks(ChannelTable& channel, StreamTable& stream) noexcept;

}  // namespace sorvanix::host
