// The Actions go through the table that all others go through, in groups that are one write each.
#include "sample/sample_diary.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "core/app_state.h"
#include "core/date_time.h"
#include "core/paths.h"
#include "core/settings.h"
#include "core/settings_choices.h"
#include "datafile/data_file.h"
#include "platform/device_paths.h"
#include "platform/files.h"
#include "platform/host.h"
#include "platform/utf.h"
#include "recorder/recorder_state.h"
#include "sample/day_writer.h"
#include "sample/sample_days.h"
#include "sample/wordless_host.h"
#include "store/session.h"

namespace sample {
namespace {

namespace chrono = std::chrono;
using store::Action;

constexpr int kDays = 365;
constexpr size_t kActionsAGroup = 500;

std::u16string_view StartOf(const Action& action) {
  return TextOf(action, store::kStaDateTime);
}

bool RunsMeanwhile(const Action& action) {
  return TextOf(action, store::kCategory2) == kMeanwhile;
}

// What a recorder writes: one after another.
bool IsInChain(const Action& action) {
  return !core::SplitMoment(TextOf(action, store::kEndDateTime)).IsEndOfDay() &&
         !RunsMeanwhile(action);
}

// What had begun by the present moment.
std::vector<Action> YearUntilNow() {
  const platform::LocalTime now = platform::host().Now();
  const std::u16string moment = core::MomentOf(now);
  const chrono::sys_days today = chrono::year(now.year) /
                                 chrono::month(static_cast<unsigned>(now.month)) /
                                 chrono::day(static_cast<unsigned>(now.day));
  std::vector<Action> year;
  for (int i = kDays - 1; i >= 0; --i) {
    std::ranges::move(ActionsOf(today - chrono::days(i)), std::back_inserter(year));
  }
  std::erase_if(year, [&](const Action& action) {
    const bool hasEnded = TextOf(action, store::kEndDateTime) <= moment;
    return StartOf(action) > moment || (RunsMeanwhile(action) && !hasEnded);
  });
  return year;
}

// The last Action of the chain is running: it ends where it starts, and leads nowhere yet. The
// chain are those that began on its day.
core::TextList StartRecorder(core::CAppState& app, std::vector<Action>& year) {
  core::TextList chain;
  const auto last = std::find_if(year.rbegin(), year.rend(), IsInChain);
  if (last == year.rend()) return chain;
  Action& running = *last;
  running[store::kEndDateTime] = running[store::kStaDateTime];
  std::u16string& place = *running[store::kPlace];
  place.resize(std::min(place.find(kMovementSign), place.size()));

  const core::MomentText start = core::SplitMoment(StartOf(running));
  for (const Action& action : year) {
    if (IsInChain(action) && StartOf(action).starts_with(start.date)) {
      chain.Append(*action[store::kActId]);
    }
  }
  app.RcdrPreActId = *running[store::kActId];
  app.RcdrPreDate = start.date;
  app.RcdrPreTime = start.time;
  recorder::RecorderFields fields;
  fields.place = place;
  fields.category1 = *running[store::kCategory1];
  fields.category2 = *running[store::kCategory2];
  recorder::CaptureRecorderFields(app, fields);
  return chain;
}

bool WriteActions(std::vector<Action>& year) {
  store::Engine& engine = *store::dbSession().Session;
  for (size_t i = 0; i < year.size(); ++i) {
    if (i % kActionsAGroup == 0) {
      if (i > 0 && store::Failed(engine.Commit())) return false;
      if (store::Failed(engine.BeginTransaction())) return false;
    }
    if (store::Failed(store::dbSession().UserTable->Insert(year[i]))) return false;
  }
  return year.empty() || !store::Failed(engine.Commit());
}

bool WriteChain(const core::CAppState& app, const core::TextList& chain) {
  const store::CDbSession& session = store::dbSession();
  const int32_t count = static_cast<int32_t>(chain.Count());
  for (int32_t i = 0; i < count; ++i) {
    const std::u16string id = chain.At(static_cast<size_t>(i));
    if (store::Failed(session.RcdrTable->SetRcdrRow(i, id))) return false;
  }
  return !store::Failed(session.LongTable->SetLong(recorder::kHistNumKey, count)) &&
         !store::Failed(session.TextTable->SetText(recorder::kPreActIdKey, app.RcdrPreActId)) &&
         recorder::SaveRecorderValues(app) == 0;
}

bool WriteDataFile(core::CAppState& app, std::u16string_view path, std::vector<Action>& year) {
  const core::TextList chain = StartRecorder(app, year);
  const bool isWritten =
      datafile::CreateDataFile(path) == 0 && WriteActions(year) && WriteChain(app, chain);
  store::DisconnectDataFile();
  if (!isWritten) store::Engine::Remove(path);
  return isWritten;
}

// Lists of the words that the year used, the last of them first.
void RememberWords(core::CAppState& app, const std::vector<Action>& year) {
  for (const Action& action : year) {
    const std::u16string_view place = TextOf(action, store::kPlace);
    if (place.find(kMovementSign) == std::u16string_view::npos) app.PlaceHistory.Add(place);
    app.Category1History.Add(TextOf(action, store::kCategory1));
    app.Category2History.Add(TextOf(action, store::kCategory2));
    app.MemoHistory.Add(core::RemoveLineBreaks(TextOf(action, store::kMemo)));
  }
  for (const std::u16string_view word : {u"打合せ", u"鎌倉", u"飲み会"}) app.FindHistory.Add(word);
}

// A first run's settings, but for the action text: the sample's memos calculate.
bool WriteSettings(core::CAppState& app, const std::vector<Action>& year,
                   std::u16string_view path) {
  app.SeqViewRng = core::kFitsScreen;
  app.TimeInitForNewMode = core::kNewAtClock;
  app.ActTxtMode = core::kActionTextOn;
  RememberWords(app, year);
  return core::WriteSettings(app, path) == 0;
}

std::u16string PathIn(const std::u16string& folder, std::u16string_view name) {
  return folder + u'\\' + std::u16string(name);
}

// The folder's path, made and without a diary; or none, and `why`.
std::optional<std::u16string> PrepareFolder(const std::string& folder, std::string& why) {
  std::error_code error;
  const std::string absolute = std::filesystem::absolute(folder, error).lexically_normal().string();
  std::optional<std::u16string> path = platform::FromHostPath(absolute);
  if (error || !path) {
    why = "the folder needs a name, in UTF-8 and without a backslash";
    return {};
  }
  while (path->size() > 1 && path->ends_with(u'\\')) path->pop_back();
  core::EnsureFolder(*path);
  platform::Files& files = platform::files();
  if ((files.Attributes(*path).value_or(0) & platform::kAttributeDirectory) == 0) {
    why = "the folder cannot be made: " + absolute;
  } else if (files.Exists(PathIn(*path, core::kDefaultDataFile)) ||
             files.Exists(PathIn(*path, core::kSettingsFile))) {
    why = "this folder holds a diary already; a sample diary needs one of its own: " + absolute;
  }
  return why.empty() ? path : std::nullopt;
}

}  // namespace

std::string MakeDiary(const std::string& folder) {
  const WordlessHost host;
  std::string why;
  const std::optional<std::u16string> path = PrepareFolder(folder, why);
  if (!path) return why;
  core::CAppState app;
  core::SetDefaults(app);
  std::vector<Action> year = YearUntilNow();
  if (!WriteDataFile(app, PathIn(*path, core::kDefaultDataFile), year) ||
      !WriteSettings(app, year, PathIn(*path, core::kSettingsFile))) {
    return "the sample diary cannot be written into " + folder +
           (host.LastMessage().empty() ? "" : ": " + platform::ToUtf8(host.LastMessage()));
  }
  return {};
}

}  // namespace sample
