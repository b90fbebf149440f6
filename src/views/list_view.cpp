// The fill of the list view.
#include "views/list_view.h"

#include "core/date_time.h"
#include "core/text.h"
#include "platform/late_wait.h"
#include "views/navigation.h"

namespace views {
namespace {

// What stands between the start date and the place: "-mm/dd ", " hh:mm-mm/dd " or " hh:mm-hh:mm ".
std::u16string TimeText(const core::CAppState& app, const core::MomentText& start,
                        const core::MomentText& end) {
  if (end.IsEndOfDay()) return u"-" + std::u16string(end.MonthDay()) + u" ";
  const bool showsEndDate = SpansDays(app) && start.date != end.date;
  return u" " + TimeSpanText(start, false, end, showsEndDate) + u" ";
}

std::u16string RowText(const core::CAppState& app, const store::Action& action) {
  const core::MomentText start = StartOf(action);
  const core::MomentText end = EndOf(action);
  std::u16string text(start.date);
  text += TimeText(app, start, end);
  text += TextOf(action, store::kPlace);
  text += u':';
  text += TextOf(action, store::kCategory1);
  text += u':';
  text += core::RemoveLineBreaks(TextOf(action, store::kMemo));
  return text;
}

}  // namespace

std::u16string ListTitle(const core::CAppState& app) {
  const bool empty = app.IndexCount < 1;
  std::u16string title = core::ZeroPadded(empty ? 0 : app.ListPage + 1, 1) + u"/" +
                         core::ZeroPadded(empty ? 0 : LastPage(app) + 1, 1) + u" - " +
                         core::ZeroPadded(app.IndexCount, 1);
  if (app.IndexCount != app.TotalCount) title += u"(" + core::ZeroPadded(app.TotalCount, 1) + u")";
  return title;
}

ViewRows SetDataListView(const core::CAppState& app) {
  ViewRows rows;
  rows.order = RowOrder::kNewestFirst;
  if (app.IndexCount < 1) return rows;
  const int pageSize = RowsPerPage(app);
  rows.FirstRowIndex = app.IndexCount - pageSize * app.ListPage - 1;
  platform::LateWait wait;
  for (int row = 0; row < pageSize && rows.FirstRowIndex - row >= 0; ++row) {
    store::Action action;
    const RowRead read = ReadAction(app.ActIds.At(static_cast<size_t>(rows.FirstRowIndex - row)),
                                    u"CMainWnd::SetDataListView", action);
    rows.abandoned = read == RowRead::kFailed;
    if (read != RowRead::kRead) break;
    const std::u16string_view id = TextOf(action, store::kActId);
    // Kept on purpose: the remembered row's number is the Action's position and not its row, so
    // that it mostly lies outside the page and nothing is selected.
    if (app.SelActId == id) rows.selectedRow = rows.FirstRowIndex - row;
    rows.RowActIds.emplace_back(id);
    rows.cells.push_back({RowText(app, action)});
    wait.Look();
  }
  return rows;
}

}  // namespace views
