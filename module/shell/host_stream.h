// Host operations that store and restore typed values of a document, in order.
//
// Writes and reads answer nonzero on success; a failed read leaves its destination alone.
#pragma once

#include "module/shell/host_call.h"

namespace sorvanix {

inline std::int32_t hostWriteInt(HostStream* stream, std::int32_t value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::writeInt, 0, stream, value);
}
inline std::int32_t hostWriteFloat(HostStream* stream, float value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::writeFloat, 0, stream, value);
}
inline std::int32_t hostWriteBool(HostStream* stream, std::int32_t value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::writeBool, 0, stream, value);
}
inline std::int32_t hostWriteVector(HostStream* stream, const Vector& value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::writeVector, 0, stream, &value);
}
inline std::int32_t hostWriteMatrix(HostStream* stream, const Matrix& value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::writeMatrix, 0, stream, &value);
}
inline std::int32_t hostWriteString(HostStream* stream, const HostString* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::writeString, 0, stream, value);
}
/// Stores what the link holds, its shader's own saved form included.
inline std::int32_t hostWriteChannelLink(HostStream* stream, const ChannelLink* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::writeChannelLink, 0, stream, value);
}

inline std::int32_t hostReadInt(HostStream* stream, std::int32_t* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::readInt, 0, stream, value);
}
inline std::int32_t hostReadFloat(HostStream* stream, float* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::readFloat, 0, stream, value);
}
inline std::int32_t hostReadBool(HostStream* stream, std::int32_t* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::readBool, 0, stream, value);
}
inline std::int32_t hostReadVector(HostStream* stream, Vector* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::readVector, 0, stream, value);
}
inline std::int32_t hostReadMatrix(HostStream* stream, Matrix* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::readMatrix, 0, stream, value);
}
inline std::int32_t hostReadString(HostStream* stream, HostString* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::readString, 0, stream, value);
}
inline std::int32_t hostReadChannelLink(HostStream* stream, ChannelLink* value) noexcept {
  return hostCallOn(hostApi.stream, &StreamTable::readChannelLink, 0, stream, value);
}

}  // namespace sorvanix
