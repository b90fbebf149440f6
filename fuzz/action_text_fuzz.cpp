// Any memo comes to an end, its plain text is kept, a text without code comes back as it was, and
// the same run gives the same text.
#include "actiontext/action_text.h"
#include "actiontext/run.h"
#include "input.h"
#include "platform/host.h"

namespace {

class StillHost : public platform::Host {
 public:
  platform::Answer ShowMessage(const platform::Message&) override { return platform::Answer::kOk; }
  void SetWaitCursor(bool) override {}
  void SignalActivity() override {}
  void PostCommand(platform::WindowId, int) override {}
  void BringForward() override {}
  void OpenLink(const std::u16string&) override {}
  platform::LocalTime Now() override { return {2010, 11, 14, 9, 0, 0}; }
  uint32_t TickCount() override { return 0; }
  void SeedDraw(uint32_t) override {}
  int Draw() override { return 12345; }
  std::u16string ProgramPath() override { return {}; }
  std::u16string HomeFolder() override { return {}; }
  int Dpi() override { return 96; }
  std::vector<std::u16string> FontFamilies() override { return {}; }
};

void Try(std::u16string_view memo, std::u16string_view items) {
  store::Action action;
  action[store::kSubject] = u"会議";
  action[store::kLatitude] = u"35.681237";
  action[store::kMemo] = memo;
  action[store::kExtItems] = items;
  const store::Action before = action;
  const std::u16string shown = actiontext::ParseActionText(action);
  fuzz::Require(action == before);
  fuzz::Require(shown.starts_with(memo.substr(0, memo.find(u'#'))));
  fuzz::Require(shown.size() <= memo.size() + actiontext::kMaxTextWork);
  fuzz::Require(actiontext::ParseActionText(action) == shown);

  std::u16string doubled;
  for (const char16_t c : memo) doubled.append(c == u'#' ? 2 : 1, c);
  action[store::kMemo] = doubled;
  fuzz::Require(actiontext::ParseActionText(action) == memo);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  static StillHost host;
  platform::SetHost(&host);
  const std::u16string wide = fuzz::AsText(data, size);
  Try(wide, wide);

  // Bytes as characters, the upper ones as pieces of code: almost every memo then holds some.
  static constexpr std::u16string_view kPieces[] = {
      u"if (",       u"if(0){",     u"} else {",    u"else if(1){", u"Length(", u"Substring(",
      u"IndexOf(",   u"Rand(",      u"LocalTime()", u"SISubject",   u"SIMemo",  u"SILatitude",
      u"a=",         u"a",          u"s=s+s;",      u"s=\"ab\"+1;", u"\"\\x",   u"\\\"",
      u"==",         u"<=",         u"2147483647",  u"1.5",         u"Persons", u"Note",
      u"- - - - - ", u"((((((((((", u"))))))))))",  u"{ { {",       u"場所",    u"メモ"};
  std::u16string memo;
  for (size_t i = 0; i < size; ++i) {
    if (data[i] < 0x80) {
      memo += static_cast<char16_t>(data[i]);
    } else {
      memo += kPieces[data[i] % std::size(kPieces)];
    }
  }
  Try(memo, u"Persons:人数:int:3:Note:備考:mlstring:\"a\\nb\":F:f:float:1e+300:");
  return 0;
}
