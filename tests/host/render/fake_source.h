// A channel source made of a function, which keeps count of what a render does with it.
#pragma once

#include <functional>
#include <utility>

#include "host/render/channel_source.h"

namespace sorvanix::host {

struct FakeSource : ChannelSource {
  explicit FakeSource(std::function<Vector(ChannelSample&)> function)
      : sample(std::move(function)) {}

  bool InitRender(const RenderInit& init) override {
    ++inits;
    initContext = init.render;
    return takesPart;
  }
  void FreeRender() override { ++frees; }
  Vector Sample(ChannelSample& s) override { return sample(s); }

  std::function<Vector(ChannelSample&)> sample;
  bool takesPart = true;
  int inits = 0, frees = 0;
  RenderContext* initContext = nullptr;
};

}  // namespace sorvanix::host
