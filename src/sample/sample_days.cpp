#include "sample/sample_days.h"

#include <iterator>
#include <string>

#include "core/text.h"
#include "sample/day_writer.h"

namespace sample {
namespace {

namespace chrono = std::chrono;

constexpr Doing kBreakfasts[] = {
    {u"食事", u"朝食", u"トースト、目玉焼き、コーヒー"},
    {u"食事", u"朝食", u"ごはん、みそ汁、納豆"},
    {u"食事", u"朝食", u"バナナとヨーグルト"},
    {u"食事", u"朝食"},
};
constexpr Doing kLunches[] = {
    {u"食事", u"昼食", u"日替わり定食 #Price#円", u"Price:代金:int:850:"},
    {u"食事", u"昼食", u"ざるそば #Price#円", u"Price:代金:int:780:"},
    {u"食事", u"昼食", u"さばのみそ煮定食"},
    {u"食事", u"昼食", u"カレーライス、サラダつき"},
    {u"食事", u"昼食", u"佐藤さん、田中さんと"},
};
constexpr Doing kDinners[] = {
    {u"食事", u"夕食", u"肉じゃが、ほうれん草のおひたし"},
    {u"食事", u"夕食", u"豚肉のしょうが焼き"},
    {u"食事", u"夕食", u"麻婆豆腐と中華スープ"},
    {u"食事", u"夕食", u"鮭の塩焼き、豚汁"},
    {u"食事", u"夕食", u"鍋。白菜が安かった。"},
    {u"食事", u"夕食"},
};
constexpr Doing kMeetings[] = {
    {u"仕事", u"打合せ", u"週次の進みぐあい。次回までに見積りを直す。"},
    {u"仕事", u"打合せ", u"お客さまと仕様の確認\r\n・画面の文字を大きく\r\n・納期は月末"},
    {u"仕事", u"打合せ", u"参加 #Persons#人", u"Persons:人数:int:6:"},
    {u"仕事", u"打合せ", u"新しい企画の相談"},
    {u"仕事", u"打合せ"},
};
constexpr Doing kDesk[] = {
    {u"仕事", u"デスクワーク", u"設計書の見直し"},
    {u"仕事", u"デスクワーク", u"集計表を作る"},
    {u"仕事", u"デスクワーク"},
    {u"仕事", u"資料作り", u"説明会の資料、十二枚目まで"},
    {u"仕事", u"資料作り"},
    {u"仕事", u"電話", u"問い合わせ三件"},
};
constexpr Doing kEvenings[] = {
    {u"趣味", u"読書", u"図書館の本、残り80ページ"},
    {u"趣味", u"読書"},
    {u"趣味", u"映画", u"録画しておいたもの"},
    {u"趣味", u"ギター", u"サビのコードがまだ押さえられない"},
    {u"休み", u"テレビ"},
    {u"家事", u"アイロン"},
};
constexpr Doing kErrands[] = {
    {u"買い物", u"食料品", u"牛乳、卵、豆腐、ねぎ #Price#円", u"Price:代金:int:1268:"},
    {u"買い物", u"食料品"},
    {u"買い物", u"日用品", u"洗剤、電池"},
};
constexpr Doing kAtHome[] = {
    {u"家事", u"掃除", u"窓も拭いた"},
    {u"趣味", u"読書"},
    {u"趣味", u"ギター"},
    {u"家事", u"料理", u"作りおき三品"},
    {u"休み", u"昼寝"},
    {u"趣味", u"写真", u"先月の写真を整理"},
};
constexpr Doing kRun = {u"運動", u"ジョギング", u"#Km#km、川沿いを往復", u"Km:距離:float:5.2:"};

constexpr Sight kKamakuraStation = {u"鎌倉駅", 35.319025, 139.550556, u""};
constexpr Sight kSights[] = {
    {u"鶴岡八幡宮", 35.326111, 139.556389, u"大銀杏の若木が育っていた。\r\n御朱印をいただく。"},
    {u"長谷寺", 35.312500, 139.533056, u"見晴台から海がよく見えた。"},
    {u"高徳院", 35.316667, 139.535833, u"大仏の中に入る。50円。"},
    {u"由比ヶ浜", 35.308900, 139.543000, u"風が強い。貝がらを拾う。"},
    {u"円覚寺", 35.337900, 139.547600, u"石段をのぼって鐘まで。"},
    {u"報国寺", 35.319900, 139.569400, u"竹の庭で抹茶。"},
    {u"銭洗弁天", 35.325700, 139.542000, u"小銭を洗う。"},
};
constexpr Sight kCafes[] = {
    {u"小町通り", 35.321600, 139.553200, u"しらす丼"},
    {u"御成通り", 35.317300, 139.548700, u"あんみつ"},
};

constexpr int Time(int hour, int minute) {
  return hour * 60 + minute;
}

bool IsWeekend(chrono::sys_days date) {
  const chrono::weekday day(date);
  return day == chrono::Saturday || day == chrono::Sunday;
}

struct Holiday {
  unsigned month, day;
  int days;
  Doing doing;
};
constexpr Holiday kHolidays[] = {
    {12, 30, 5, {u"予定", u"休暇", u"冬休み"}},
    {8, 12, 4, {u"予定", u"休暇", u"夏休み"}},
    {5, 3, 3, {u"予定", u"休暇", u"連休"}},
};

// The holiday that the date lies in, or nullptr.
const Holiday* HolidayOf(chrono::sys_days date) {
  const chrono::year year = chrono::year_month_day(date).year();
  for (const Holiday& holiday : kHolidays) {
    for (const chrono::year begins : {year - chrono::years(1), year}) {
      const chrono::sys_days first =
          begins / chrono::month(holiday.month) / chrono::day(holiday.day);
      if (date >= first && date < first + chrono::days(holiday.days)) return &holiday;
    }
  }
  return nullptr;
}

// The first Saturday of each month, and some others.
bool IsTrip(DayWriter& day, chrono::sys_days date) {
  const unsigned ofMonth = static_cast<unsigned>(chrono::year_month_day(date).day());
  const bool more = day.Happens(20);
  return chrono::weekday(date) == chrono::Saturday && (ofMonth <= 7 || more);
}

void Morning(DayWriter& day) {
  day.Do(25, {u"生活", u"したく"});
  day.Do(25, day.OneOf(kBreakfasts));
}

void Evening(DayWriter& day) {
  day.Until(Time(18, 30), day.OneOf(kAtHome));
  day.Do(45, day.OneOf(kDinners));
  day.Do(30, {u"生活", u"入浴"});
  day.Until(Time(22, 30), day.OneOf(kEvenings));
}

void LunchOut(DayWriter& day) {
  day.GoTo(u"定食屋", u"徒歩", 6);
  day.Do(40, day.OneOf(kLunches));
  day.GoTo(u"会社", u"徒歩", 6);
}

// Past midnight.
void Party(DayWriter& day) {
  day.GoTo(u"居酒屋", u"徒歩", 10);
  const int persons = 4 + day.Draw(5);
  const int total = persons * (3200 + 100 * day.Draw(12));
  const std::u16string items = u"Persons:人数:int:" + core::ZeroPadded(persons, 1) +
                               u":Total:合計:int:" + core::ZeroPadded(total, 1) + u":";
  day.Do(190,
         {u"食事", u"飲み会", u"割り勘 #Total / Persons#円（#Persons#人で #Total#円）", items});
  day.Do(100, {u"遊び", u"カラオケ"});
  day.GoTo(u"自宅", u"電車", 65);
}

void Workday(DayWriter& day, bool isFriday) {
  Morning(day);
  day.GoTo(u"会社", u"電車", 62);
  day.Do(30, {u"仕事", u"メール"});
  day.Do(95, day.OneOf(kDesk));
  day.Until(Time(12, 0), day.OneOf(kMeetings));
  if (day.Happens(60)) {
    LunchOut(day);
  } else {
    day.Do(45, {u"食事", u"昼食", u"弁当"});
  }
  day.Do(100, day.OneOf(kDesk));
  day.Do(55, day.OneOf(kMeetings));
  day.Until(Time(18, 0), day.OneOf(kDesk));
  if (isFriday && day.Happens(35)) return Party(day);
  day.GoTo(u"藤沢駅", u"電車", 50);
  if (day.Happens(55)) {
    day.GoTo(u"スーパー", u"徒歩", 5);
    day.Do(25, day.OneOf(kErrands));
  }
  day.GoTo(u"自宅", u"徒歩", 12);
  Evening(day);
}

void DayAtDeskAtHome(DayWriter& day) {
  Morning(day);
  day.Until(Time(8, 45), {u"家事", u"ゴミ出し"});
  day.Do(20, {u"仕事", u"メール"});
  day.Do(110, day.OneOf(kDesk));
  day.Until(Time(12, 0), {u"仕事", u"打合せ", u"ビデオ会議"});
  day.Do(45, {u"食事", u"昼食", u"うどん"});
  day.GoTo(u"公園", u"徒歩", 8);
  day.Do(20, {u"散歩", u"", u"池のカメを数える"});
  day.GoTo(u"自宅", u"徒歩", 8);
  day.Do(120, day.OneOf(kDesk));
  day.Until(Time(17, 20), day.OneOf(kDesk));
  day.Do(40, kRun);
  Evening(day);
}

void Trip(DayWriter& day) {
  Morning(day);
  day.GoTo(u"藤沢駅", u"徒歩", 12);
  day.GoTo(kKamakuraStation, u"電車", 38);
  constexpr int kCount = std::size(kSights);
  int next = day.Draw(kCount);
  const int step = 1 + day.Draw(3);  // never back to one of the four, as they are seven
  const auto visit = [&] {
    const Sight& sight = kSights[next % kCount];
    day.GoTo(sight, u"徒歩", 18);
    day.Do(50, {u"旅行", u"見物", sight.memo});
    next += step;
  };
  visit();
  visit();
  const Sight& cafe = day.OneOf(kCafes);
  day.GoTo(cafe, u"徒歩", 15);
  day.Do(50, {u"食事", u"昼食", cafe.memo});
  visit();
  visit();
  day.GoTo(kKamakuraStation, u"徒歩", 16);
  day.GoTo(u"自宅", u"電車", 52);
  Evening(day);
}

void DayOff(DayWriter& day) {
  Morning(day);
  day.Do(60, {u"家事", u"掃除"});
  if (day.Happens(70)) day.Meanwhile(45, {u"家事", kMeanwhile});
  day.Do(50, kRun);
  day.Until(Time(12, 10), day.OneOf(kAtHome));
  day.Do(40, {u"食事", u"昼食", u"焼きそば"});
  day.Do(70, day.OneOf(kAtHome));
  if (day.Happens(40)) {
    day.GoTo(u"図書館", u"自転車", 12);
    day.Do(70, {u"趣味", u"読書", u"二冊借りる。返却は二週間後。"});
    day.GoTo(u"スーパー", u"自転車", 8);
  } else {
    day.GoTo(u"スーパー", u"自転車", 9);
  }
  day.Do(30, day.OneOf(kErrands));
  day.GoTo(u"自宅", u"自転車", 9);
  Evening(day);
}

// What stands on a calendar for whole days.
void NoteWholeDays(DayWriter& day, chrono::sys_days date, const Holiday* holiday) {
  const chrono::year_month_day parts(date);
  if (holiday != nullptr && parts.month() == chrono::month(holiday->month) &&
      parts.day() == chrono::day(holiday->day)) {
    day.AllDay(holiday->days, holiday->doing);
  }
  if (parts.day() == chrono::day(25)) day.AllDay(1, {u"予定", u"給料日"});
  if (parts.month() == chrono::June && parts.day() == chrono::day(14)) {
    day.AllDay(1, {u"予定", u"誕生日", u"母に電話する"});
  }
}

}  // namespace

std::vector<store::Action> ActionsOf(chrono::sys_days date) {
  const Holiday* const holiday = HolidayOf(date);
  const chrono::weekday weekday(date);
  DayWriter day(date);
  NoteWholeDays(day, date, holiday);
  const bool isFree = IsWeekend(date) || holiday != nullptr;
  day.WakeAt((isFree ? Time(7, 10) : Time(6, 15)) + day.Draw(25));
  if (IsTrip(day, date)) {
    Trip(day);
  } else if (isFree) {
    DayOff(day);
  } else if (weekday == chrono::Wednesday && day.Happens(60)) {
    DayAtDeskAtHome(day);
  } else {
    Workday(day, weekday == chrono::Friday);
  }
  return day.Take();
}

}  // namespace sample
