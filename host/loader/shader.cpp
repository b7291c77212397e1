#include "host/loader/shader.h"

#include <sorvanix/ids.h>

#include <utility>

namespace sorvanix::host {

namespace {

// What a callback answers; `otherwise` from a shader that does not have it.
template <class Result, class Callback, class... Arguments>
Result CallOr(Result otherwise, Callback callback, Arguments... arguments) {
  return callback == nullptr ? otherwise : callback(arguments...);
}

}  // namespace

Shader::Shader(const RegisteredShader& registered, std::int32_t channel)
    : registered_(&registered), instance_(std::make_unique<ShaderInstance>()) {
  instance_->channel = channel;
}

std::optional<Shader> Shader::Create(const RegisteredShader& registered, std::int32_t channel) {
  Shader shader(registered, channel);
  if (CallOr(1, shader.record().Alloc, shader.instance_.get()) != 0) return shader;
  shader.instance_.reset();  // never had a block, so there is none to free
  return std::nullopt;
}

Shader& Shader::operator=(Shader&& other) noexcept {
  Release();
  registered_ = other.registered_;
  instance_ = std::move(other.instance_);
  prepared_ = other.prepared_;
  return *this;
}

Shader::~Shader() { Release(); }

void Shader::Release() noexcept {
  if (instance_ == nullptr) return;
  FreeRender();
  if (record().Free != nullptr) record().Free(instance_.get());
  instance_.reset();
}

bool Shader::CopyFrom(const Shader& source) {
  if (source.PluginId() != PluginId()) return false;
  return CallOr(1, record().Copy, &source.Instance(), &Instance()) != 0;
}

bool Shader::Equals(const Shader& other) const {
  if (other.PluginId() != PluginId()) return false;
  return CallOr(1, record().Compare, &Instance(), &other.Instance()) != 0;
}

bool Shader::Read(Stream& stream) {
  return CallOr(1, record().Read, &Instance(), stream.Handle()) != 0;
}

bool Shader::Write(Stream& stream) const {
  return CallOr(1, record().Write, &Instance(), stream.Handle()) != 0;
}

bool Shader::Edit() { return CallOr(0, record().Edit, &Instance()) != 0; }

std::uint32_t Shader::Info() const { return CallOr(0U, record().GetInfo); }

std::int32_t Shader::Message(std::int32_t id, Container& payload) {
  return CallOr(1, record().Message, &Instance(), id, payload.Handle());
}

void Shader::SetParameters(const Container& parameters) {
  // The message takes a container that may be written to; the caller's own is not.
  Container payload = parameters;
  Message(MessageSetParameters, payload);
}

Container Shader::Parameters() {
  Container parameters(PluginId());
  Message(MessageGetParameters, parameters);
  return parameters;
}

Container Shader::ParameterTypes() {
  Container types(PluginId());
  Message(MessageDescribeParameters, types);
  return types;
}

bool Shader::InitRender(const RenderInit& init) {
  FreeRender();
  prepared_ = true;
  return CallOr(0, record().InitRender, &Instance(), &init) == 0;
}

void Shader::FreeRender() {
  if (!std::exchange(prepared_, false)) return;
  if (record().FreeRender != nullptr) record().FreeRender(&Instance());
}

Vector Shader::Output(ChannelSample& sample) {
  Vector colour = {0, 0, 0};
  if (record().Output != nullptr) record().Output(&colour, &Instance(), &sample);
  return colour;
}

}  // namespace sorvanix::host
