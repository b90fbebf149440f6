// Whatever text is read, the list is sorted, its items are good, and what is written of it reads
// back as the same list, unless a value holds a character that only an escape can bring in.
#include <algorithm>

#include "core/characters.h"
#include "extitems/checks.h"
#include "extitems/text_form.h"
#include "input.h"

namespace {

bool ReadsBack(const extitems::ExtItem& item) {
  return std::all_of(item.value->begin(), item.value->end(),
                     [](char16_t c) { return c < u' ' || core::IsValueCharacter(c); });
}

void Try(std::u16string_view text) {
  extitems::ExtItemList list;
  extitems::ParseExtItems(list, text);
  for (size_t i = 0; i < list.size(); ++i) {
    size_t position = 0;
    fuzz::Require(list[i].value && extitems::CheckExtItem(list[i], position) == 0);
    fuzz::Require(i == 0 || list[i - 1].name < list[i].name);
  }
  if (!std::all_of(list.begin(), list.end(), ReadsBack)) return;
  extitems::ExtItemList back;
  fuzz::Require(extitems::ParseExtItems(back, extitems::WriteExtItems(list)) == 0);
  fuzz::Require(back == list);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  Try(fuzz::AsText(data, size));

  // Bytes as characters, the upper ones as pieces of the form.
  static constexpr std::u16string_view kPieces[] = {u"a:b:int:",
                                                    u"c:d:float:",
                                                    u"e:f:string:\"",
                                                    u"g:h:date:\"",
                                                    u"i:j:time:\"",
                                                    u"k:l:File:",
                                                    u"m:人数:mlstring:\"",
                                                    u"n:o:datetime:\"",
                                                    u"\":",
                                                    u"\\x",
                                                    u"2010/1/2",
                                                    u"7:5:0",
                                                    u"メモ",
                                                    u"\xD83D",
                                                    u"\u00E9"};
  std::u16string text;
  for (size_t i = 0; i < size; ++i) {
    if (data[i] < 0x80) {
      text += static_cast<char16_t>(data[i]);
    } else {
      text += kPieces[data[i] % std::size(kPieces)];
    }
  }
  Try(text);
  return 0;
}
