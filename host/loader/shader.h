// One shader in one channel: its instance from Alloc to Free, and its callbacks as typed calls.
//
// A callback that the shader does not have is the host's to answer: success, with nothing changed.
// All but Output on the main thread, and none of them while a render of the same shader runs.
#pragma once

#include <sorvanix/records.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "host/services/containers.h"
#include "host/services/registration.h"
#include "host/services/streams.h"

namespace sorvanix::host {

class Shader {
 public:
  /// A shader with its defaults; nothing when it has no memory for its parameters. The registration
  /// must outlive it.
  static std::optional<Shader> Create(const RegisteredShader& registered, std::int32_t channel);

  Shader(Shader&& other) noexcept = default;
  Shader& operator=(Shader&& other) noexcept;
  ~Shader();

  std::int32_t PluginId() const noexcept { return registered_->id; }
  const std::string& Name() const noexcept { return registered_->name; }
  std::int32_t Channel() const noexcept { return instance_->channel; }
  /// The instance itself, at one address for all its life.
  ShaderInstance& Instance() noexcept { return *instance_; }
  const ShaderInstance& Instance() const noexcept { return *instance_; }

  /// Takes the other's parameters; false when the two are of different kinds, or one has none.
  bool CopyFrom(const Shader& source);
  /// True when both are of one kind and their parameters are equal.
  bool Equals(const Shader& other) const;

  /// From the stream's present position on. The answer tells whether the shader took part, not
  /// whether the stream held what it looked for.
  bool Read(Stream& stream);
  bool Write(Stream& stream) const;

  /// Opens the shader's dialog; true when the user confirmed. Without a dialog nobody can.
  bool Edit();
  /// The shader's constant word; 0 when it has none.
  std::uint32_t Info() const;

  /// Any message of ids.h. The answer is the shader's own, 1 when it takes no messages.
  std::int32_t Message(std::int32_t id, Container& payload);
  /// Sets the parameters whose keys the container holds; all others stay.
  void SetParameters(const Container& parameters);
  /// All exchanged parameters under their keys.
  Container Parameters();
  /// The shader's type word (DescribeType) of each exchanged parameter, under its key.
  Container ParameterTypes();

  /// Prepares a render, after undoing one that was prepared before; false when the shader cannot
  /// take part. Undone by FreeRender, at the latest when the shader goes.
  bool InitRender(const RenderInit& init);
  void FreeRender();
  /// The colour of one sample; black from a shader without Output. Safe on several threads.
  Vector Output(ChannelSample& sample);

 private:
  Shader(const RegisteredShader& registered, std::int32_t channel);

  const ShaderRecord& record() const noexcept { return registered_->record; }
  void Release() noexcept;

  const RegisteredShader* registered_;
  std::unique_ptr<ShaderInstance> instance_;
  bool prepared_ = false;  // between InitRender and FreeRender
};

}  // namespace sorvanix::host
