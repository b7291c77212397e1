// The icons of the window: drawn as lines in the colour of text, sharp at every size.
#pragma once

#include <QIcon>

namespace sorvanix::studio {

enum class Symbol {
  New,
  Open,
  Save,
  Undo,
  Redo,
  Add,
  Duplicate,
  Delete,
  Edit,
  Wrap,
  Play,
  Pause,
  Export,
  Mesh
};

QIcon IconOf(Symbol symbol);

}  // namespace sorvanix::studio
