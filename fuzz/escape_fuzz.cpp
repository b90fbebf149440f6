// Every text survives its escape form, which is one line; any text can be read as one.
#include <algorithm>

#include "core/text.h"
#include "input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = fuzz::AsText(data, size);
  const std::u16string escaped = core::EscapeText(text);
  fuzz::Require(std::all_of(escaped.begin(), escaped.end(), [](char16_t c) { return c >= u' '; }));
  fuzz::Require(core::UnescapeText(escaped) == text);
  fuzz::Require(core::UnescapeText(text).size() <= text.size());

  // Bytes as characters: escapes come up far more often so.
  const std::u16string narrow(data, data + size);
  fuzz::Require(core::UnescapeText(narrow).size() <= narrow.size());
  return 0;
}
