// What fills a channel of a render or a bake: a shader, or a link that holds a shader or a bitmap.
#pragma once

#include <sorvanix/records.h>

#include "host/channels/channel_link.h"
#include "host/loader/shader.h"

namespace sorvanix::host {

class ChannelSource {
 public:
  virtual ~ChannelSource() = default;

  /// False when it cannot take part in the render.
  virtual bool InitRender(const RenderInit& init) = 0;
  virtual void FreeRender() = 0;
  /// The colour of one sample; safe on several threads.
  virtual Vector Sample(ChannelSample& sample) = 0;
  /// In the bump channel: bends the bumpNormal of the sample's render. A shader does so itself.
  virtual void Bend(ChannelSample& sample) { Sample(sample); }
};

/// A source that takes part in a render as long as this lives.
class PreparedSource {
 public:
  /// The source must outlive it. Ready tells whether the source takes part.
  PreparedSource(ChannelSource& source, const RenderInit& init)
      : source_(&source), ready_(source.InitRender(init)) {}
  ~PreparedSource() { source_->FreeRender(); }
  PreparedSource(const PreparedSource&) = delete;
  PreparedSource& operator=(const PreparedSource&) = delete;

  bool Ready() const noexcept { return ready_; }

 private:
  ChannelSource* source_;
  bool ready_;
};

class ShaderSource : public ChannelSource {
 public:
  explicit ShaderSource(Shader& shader) : shader_(&shader) {}
  bool InitRender(const RenderInit& init) override { return shader_->InitRender(init); }
  void FreeRender() override { shader_->FreeRender(); }
  Vector Sample(ChannelSample& sample) override { return shader_->Output(sample); }

 private:
  Shader* shader_;
};

/// A bitmap in the bump channel is a height: brighter is higher. The slope is that of the
/// brightness over two of its pixels, as steep as shaders of bump make it.
class LinkSource : public ChannelSource {
 public:
  explicit LinkSource(Link& link) : link_(&link) {}
  bool InitRender(const RenderInit& init) override { return link_->InitRender(init); }
  void FreeRender() override { link_->FreeRender(); }
  Vector Sample(ChannelSample& sample) override { return link_->Sample(sample); }
  void Bend(ChannelSample& sample) override;

 private:
  /// How much brighter the link is at `offset` than at the opposite place.
  double Rise(const ChannelSample& sample, const Vector& offset);

  Link* link_;
};

}  // namespace sorvanix::host
