#include "totals/period.h"

#include "support/fake_host.h"
#include "totals/days.h"

namespace totals {
namespace {

using enum PeriodKind;

Period Of(PeriodKind kind, std::u16string_view day) {
  return PeriodOf(kind, Day(day));
}

TEST(PeriodTest, StepsByItsOwnLength) {
  const std::tuple<Period, const char16_t*, const char16_t*, const char16_t*> cases[] = {
      {Of(kDay, u"2024/02/28"), u"2024/02/28(水)", u"2024/02/29(木)", u"2024/03/06(水)"},
      {Of(kWeek, u"2026/01/01"), u"2025/12/28-2026/01/03", u"2026/01/04-01/10",
       u"2026/01/25-01/31"},
      {Of(kMonth, u"2026/12/31"), u"2026年12月", u"2027年1月", u"2027年12月"},
      {Of(kYear, u"1970/01/01"), u"1970年", u"1971年", u"1980年"},
      {From(Of(kFromTo, u"1969/12/01"), Day(u"1969/12/22")), u"1969/12/22-12/31",
       u"1970/01/01-01/10", u"1970/01/31-02/09"},
  };
  for (const auto& [period, title, next, bigNext] : cases) {
    EXPECT_EQ(TitleOf(period), title);
    EXPECT_EQ(TitleOf(Step(period, 1)), next);
    EXPECT_EQ(TitleOf(BigStep(period, 1)), bigNext);
    EXPECT_EQ(Step(Step(period, 1), -1), period);
  }
  EXPECT_EQ(TitleOf(Step(Of(kMonth, u"9999/12/31"), 1)), u"9999年12月");
  EXPECT_EQ(TitleOf(Step(Of(kDay, u"1900/01/01"), -1)), u"1900/01/01(月)");
  EXPECT_EQ(TitleOf(BigStep(From(Of(kFromTo, u"9999/12/01"), Day(u"1900/01/01")), 1)),
            u"1900/01/01-9999/12/31");
}

TEST(PeriodTest, FromAndToStayInOrder) {
  const Period period = Of(kFromTo, u"2026/11/20");
  EXPECT_EQ(TitleOf(From(period, Day(u"2026/12/24"))), u"2026/12/24-12/24");
  EXPECT_EQ(TitleOf(To(period, Day(u"2026/10/24"))), u"2026/10/24-10/24");
}

TEST(PeriodTest, StandsWhereTheViewDoes) {
  testing_support::FakeHost host;
  core::CAppState app;
  core::SetCurrentDay({2026, 2, 31});
  const std::pair<int, const char16_t*> cases[] = {{core::kViewDay, u"2026/02/28(土)"},
                                                   {core::kViewWeek, u"2026/02/25-03/03"},
                                                   {core::kViewMonth, u"2026年2月"},
                                                   {core::kViewMap, u"2026/02/28(土)"}};
  for (const auto& [view, title] : cases) {
    app.CurView = view;
    EXPECT_EQ(TitleOf(PeriodOfView(app)), title);
  }
  app.CurView = core::kViewList;
  EXPECT_EQ(PeriodOfView(app).kind, kAll);
  app.FindWhere = u"1";
  EXPECT_EQ(PeriodOfView(app).kind, kFind);
}

TEST(PeriodTest, HasAsManyColumnsAsAPictureCanShow) {
  const Period longest = From(Of(kFromTo, u"9999/12/01"), Day(u"1900/01/01"));
  struct Case {
    Period period;
    size_t columns;
    const char16_t *first, *second, *drilled;
  };
  const Case cases[] = {
      {Of(kDay, u"2026/11/20"), 1, u"20", u"", u"2026/11/20(金)"},
      {Of(kMonth, u"2026/11/20"), 30, u"1", u"2", u"2026/11/01(日)"},
      {From(Of(kFromTo, u"2026/11/20"), Day(u"2026/08/05")), 18, u"8/5", u"8/9",
       u"2026/08/02-08/08"},
      {Of(kYear, u"2026/11/20"), 12, u"1月", u"2月", u"2026年1月"},
      {{kAll, Day(u"1976/05/05"), Day(u"2026/05/05")}, 51, u"1976", u"1977", u"1976年"},
      {{kFind, Day(u"1905/05/05"), Day(u"2026/05/05")},
       13,
       u"1900",
       u"1910",
       u"1900/01/01-1909/12/31"},
      {longest, 81, u"1900", u"2000", u"1900/01/01-1999/12/31"},
  };
  for (const Case& row : cases) {
    const ColumnPlan plan = PlanColumns(row.period);
    SCOPED_TRACE(platform::ToUtf8(TitleOf(row.period)));
    ASSERT_EQ(plan.edges.size(), row.columns + 1);
    EXPECT_EQ(plan.edges.back(), row.period.after);
    EXPECT_EQ(ColumnText(plan, 0), row.first);
    EXPECT_EQ(row.columns > 1 ? ColumnText(plan, 1) : u"", row.second);
    EXPECT_EQ(TitleOf(PeriodOfColumn(plan, 0)), row.drilled);
  }
}

TEST(PeriodTest, MonthsOfSeveralYearsAreToldApart) {
  const auto texts = [](const Period& period, int step) {
    const ColumnPlan plan = PlanColumns(period);
    std::u16string told;
    for (size_t column = 0; column + 1 < plan.edges.size(); ++column) {
      if (HasText(plan, column, step)) told += ColumnText(plan, column) + u" ";
    }
    return told;
  };
  const Period months{kAll, Day(u"2024/11/21"), Day(u"2026/02/02")};
  EXPECT_EQ(texts(months, 1).substr(0, 20), u"11月 12月 2025 2月 3月 4");
  EXPECT_EQ(texts(months, 5), u"2025 7月 2026 ");
  EXPECT_EQ(texts(months, 13), u"2026 ");
  EXPECT_EQ(texts(Of(kYear, u"2026/11/20"), 2), u"1月 3月 5月 7月 9月 11月 ");
}

}  // namespace
}  // namespace totals
