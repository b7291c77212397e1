// Matrix arithmetic: for the renderer, and as the contract's matrix table.
#pragma once

#include <sorvanix/host_render.h>

namespace sorvanix::host {

/// The inverse map; the identity when the axes have no inverse that is finite.
Matrix Inverse(const Matrix& matrix) noexcept;

/// The cofactors of the axes: what takes normals along, up to their length. It turns normals of a
/// mirrored surface round, as the mirroring turns the order of their corners.
Matrix NormalMatrix(const Matrix& matrix) noexcept;

void InstallMatrices(MatrixTable& table) noexcept;

}  // namespace sorvanix::host
