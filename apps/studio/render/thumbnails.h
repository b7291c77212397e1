// Small pictures of materials and shaders, painted one after the other when there is time for it.
#pragma once

#include <QCache>
#include <QHash>
#include <QObject>
#include <QPixmap>
#include <QString>
#include <deque>

#include "apps/studio/render/painters.h"

namespace sorvanix::studio {

/// When a thumbnail is painted: before those that nobody waits for, or after all others.
enum class Turn { Next, Last };

class Thumbnails : public QObject {
  Q_OBJECT

 public:
  Thumbnails();

  /// The picture that belongs to a place of a window, such as "material 2". It is there at once
  /// when the same was painted before, else Ready tells when; a later request for the place
  /// replaces it.
  void Ask(const QString& place, const SceneRequest& request, Turn turn = Turn::Next);
  bool IsBusy() const { return !waiting_.empty(); }

 Q_SIGNALS:
  void Ready(const QString& place, const QImage& image);

 private:
  struct Asked {
    QString place;
    QString hash;  // of all that the picture depends on, but for the content of other files
    SceneRequest request;
    Turn turn;
  };

  void Next();
  void Take(const PaintedPass& pass);

  std::deque<Asked> waiting_;  // the first one is being painted
  QCache<QString, QImage> painted_;
  PictureWorker worker_;
};

}  // namespace sorvanix::studio
