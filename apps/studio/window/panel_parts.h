// Parts that the panels of the window have in common.
#pragma once

#include <QAction>
#include <QDoubleSpinBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QImage>
#include <QKeyEvent>
#include <QList>
#include <QPixmap>
#include <QToolButton>

namespace sorvanix::studio {

inline constexpr int kPanelMargin = 6;
inline constexpr int kPanelSpacing = 4;

/// A field for a number that leaves undo to the document.
class NumberBox : public QDoubleSpinBox {
 protected:
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ShortcutOverride) {
      const auto* key = static_cast<QKeyEvent*>(event);
      if (key->matches(QKeySequence::Undo) || key->matches(QKeySequence::Redo)) {
        event->ignore();
        return true;
      }
    }
    return QDoubleSpinBox::event(event);
  }
};

/// A row of flat buttons for actions, to the left.
inline QHBoxLayout* ButtonRow(const QList<QAction*>& actions) {
  auto* row = new QHBoxLayout;
  row->setSpacing(2);
  for (QAction* action : actions) {
    auto* button = new QToolButton;
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    row->addWidget(button);
  }
  row->addStretch();
  return row;
}

/// A picture as an icon that is sharp in half as many points as it has pixels. It shows its own
/// colours where its row is selected too.
inline QIcon ThumbnailOf(const QImage& image) {
  QPixmap pixmap = QPixmap::fromImage(image);
  pixmap.setDevicePixelRatio(2);
  QIcon icon(pixmap);
  icon.addPixmap(pixmap, QIcon::Selected);
  return icon;
}

/// What stands for a thumbnail that is not painted yet.
inline QPixmap EmptyThumbnail(int pixels) {
  QPixmap pixmap(pixels, pixels);
  pixmap.fill(QColor(128, 128, 128, 40));
  pixmap.setDevicePixelRatio(2);
  return pixmap;
}

}  // namespace sorvanix::studio
