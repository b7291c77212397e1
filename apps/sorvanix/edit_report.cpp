#include "apps/sorvanix/edit_report.h"

#include <utility>

#include "host/services/filenames.h"
#include "host/services/json_numbers.h"

namespace sorvanix::cli {

namespace {

using host::Json;

Json AsJson(const host::DialogChange& change) {
  return Json(Json::Object{{"event", Json(change.event)},
                           {"dialog", host::JsonOf(change.dialog)},
                           {"gadget", host::JsonOf(change.gadget)},
                           {"value", change.value},
                           {"enabled", Json(change.enabled)}});
}

Json AsJson(const EditedValue& value) {
  return Json(
      Json::Object{{"name", Json(value.name)}, {"before", value.before}, {"after", value.after}});
}

Json AsJson(const host::SavedPicture& picture) {
  return Json(Json::Object{{"file", Json(picture.file)},
                           {"area", host::JsonOf(picture.area)},
                           {"width", host::JsonOf(picture.picture.Width())},
                           {"height", host::JsonOf(picture.picture.Height())}});
}

Json AsJson(const std::string& text) { return Json(text); }
Json AsJson(const std::filesystem::path& file) { return Json(host::Utf8FromPath(file)); }

template <class Items>
Json ListOf(const Items& items) {
  Json::Array list;
  for (const auto& item : items) list.push_back(AsJson(item));
  return Json(std::move(list));
}

}  // namespace

Json ReportOf(const EditOptions& options, const Edited& edited) {
  Json::Object report = {
      {"material", Json(options.material)},  {"confirmed", Json(edited.confirmed)},
      {"values", ListOf(edited.values)},     {"changes", ListOf(edited.changes)},
      {"failures", ListOf(edited.failures)}, {"pictures", ListOf(edited.pictures)}};
  if (!edited.viewed.empty()) report.push_back({"viewed", ListOf(edited.viewed)});
  if (!edited.confirmed || !edited.failures.empty()) return Json(std::move(report));
  report.push_back(options.output.empty() ? host::JsonMember{"result", edited.material}
                                          : host::JsonMember{"output", Json(options.output)});
  return Json(std::move(report));
}

}  // namespace sorvanix::cli
