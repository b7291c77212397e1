// What the module for the loader's tests does, for those who look at it.
#pragma once

#include <sorvanix/host_api.h>

#include <cstdint>

namespace sorvanix::test {

/// A shader with every callback. Its one parameter is a level under key 1000.
inline constexpr std::int32_t kLifeShaderId = 2000001;
/// A shader that only has Output: the texture coordinate as a colour.
inline constexpr std::int32_t kBareShaderId = 2000002;
/// A shader without any callback.
inline constexpr std::int32_t kEmptyShaderId = 2000003;

inline constexpr std::int32_t kLevelKey = 1000;
inline constexpr float kDefaultLevel = 0.5f;
inline constexpr std::uint32_t kLifeInfo = 0x02200003;

/// InitRender refuses a shader at this level.
inline constexpr float kLevelThatCannotRender = -1;

/// The parameter block of the first shader: the parameter, and what happened to the shader.
struct LifeBlock {
  float level;
  std::int32_t initRenders;
  std::int32_t freeRenders;
};

}  // namespace sorvanix::test
