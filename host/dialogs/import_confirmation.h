// Confirming imports: a shader that took parameters from a file computes what follows from them
// once its dialog is confirmed, so the host opens the dialog without a window and confirms it.
#pragma once

#include "host/loader/shader.h"

namespace sorvanix::host {

/// While it lives, shaders that are made from the parameters in a file are confirmed. One at a
/// time.
class ConfirmedImports {
 public:
  ConfirmedImports() noexcept;
  ~ConfirmedImports();
  ConfirmedImports(const ConfirmedImports&) = delete;
  ConfirmedImports& operator=(const ConfirmedImports&) = delete;
};

/// While it lives, the calling thread's imports are not confirmed: what follows from the parameters
/// is read too.
class UnconfirmedImport {
 public:
  UnconfirmedImport() noexcept;
  ~UnconfirmedImport();
  UnconfirmedImport(const UnconfirmedImport&) = delete;
  UnconfirmedImport& operator=(const UnconfirmedImport&) = delete;

 private:
  bool former_;
};

/// Opens the shader's dialog without a window and confirms it, if imports are confirmed now. A
/// shader without a dialog stays as it is. A message of the dialog is shown once in a process.
void ConfirmImport(Shader& shader);

}  // namespace sorvanix::host
