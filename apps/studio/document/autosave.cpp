#include "apps/studio/document/autosave.h"

#include <QDir>
#include <QUuid>
#include <chrono>

#include "apps/studio/document/write_file.h"
#include "host/services/filenames.h"
#include "host/services/text_file.h"

namespace sorvanix::studio {

namespace {

// Soon enough that little is lost, late enough that typing is not followed by writing.
constexpr std::chrono::milliseconds kDelay{1500};

std::filesystem::path PathOf(const QString& name) { return host::PathFromUtf8(name.toStdString()); }

QString LockOf(const QString& file) { return file + ".lock"; }

// What cannot be read leaves the text empty.
void Read(Rescued& rescued) {
  const auto text = host::ReadTextFile(PathOf(rescued.place));
  const auto json = text ? host::ParseJson(*text) : tl::unexpected(host::JsonError{});
  const Json* scene = json ? json->Find("scene") : nullptr;
  if (scene == nullptr) return;
  rescued.text = host::WriteJson(*scene) + '\n';
  rescued.file = host::PathFromUtf8(TextMember(*json, "file"));
  rescued.diskHash = TextMember(*json, "hash");
}

}  // namespace

void Rescued::Forget() { QFile::remove(place); }

QString Rescued::SetAside() {
  const QString aside = place + ".damaged";
  QFile::rename(place, aside);
  return aside;
}

Autosave::Autosave(Document& document, const QString& folder)
    : document_(document),
      file_(QDir(folder).filePath(
          QString("autosave-%1.json").arg(QUuid::createUuid().toString(QUuid::WithoutBraces)))),
      lock_(LockOf(file_)) {
  QDir().mkpath(folder);
  lock_.setStaleLockTime(0);  // a lock is stale when its process is gone, however old it is
  lock_.lock();
  timer_.setSingleShot(true);
  timer_.setInterval(kDelay);
  connect(&timer_, &QTimer::timeout, this, &Autosave::Flush);
  connect(&document_, &Document::MaterialChanged, this, &Autosave::Schedule);
  connect(&document_, &Document::SceneChanged, this, &Autosave::Schedule);
  connect(&document_, &Document::FileChanged, this, &Autosave::Schedule);
}

Autosave::~Autosave() { QFile::remove(file_); }

// Not anew for each change: who never rests is saved too.
void Autosave::Schedule() {
  if (!timer_.isActive()) timer_.start();
}

bool Autosave::Flush() {
  timer_.stop();
  if (!document_.IsModified()) {
    QFile::remove(file_);
    return true;
  }
  const Json::Object rescued = {{"file", Json(host::Utf8FromPath(document_.File()))},
                                {"hash", Json(document_.DiskHash())},
                                {"scene", document_.Scene()}};
  // A full disk must not disturb the work; saving tells about it.
  return WriteFile(PathOf(file_), host::WriteJson(Json(rescued))).has_value();
}

std::vector<Rescued> Autosave::LeftBehind(const QString& folder) {
  std::vector<Rescued> all;
  const QFileInfoList files =
      QDir(folder).entryInfoList({"autosave-*.json"}, QDir::Files, QDir::Time);
  for (const QFileInfo& info : files) {
    Rescued rescued;
    rescued.place = info.filePath();
    rescued.lock = std::make_shared<QLockFile>(LockOf(rescued.place));
    rescued.lock->setStaleLockTime(0);
    if (!rescued.lock->tryLock(0)) continue;  // of a studio that runs
    Read(rescued);
    all.push_back(std::move(rescued));
  }
  return all;
}

}  // namespace sorvanix::studio
