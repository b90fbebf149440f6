// The driver: plain text is copied up to the next "#", code is handed on.
#include "actiontext/action_text.h"

#include <algorithm>
#include <string_view>

#include "actiontext/run.h"
#include "actiontext/statements.h"

namespace actiontext {

std::u16string ParseActionText(const store::Action& action) {
  const std::u16string_view text = store::TextOf(action, store::kMemo);
  std::u16string out;
  size_t cursor = std::min(text.find(u'#'), text.size());
  if (cursor == text.size()) return std::u16string(text);

  ActionTextRun run(action);
  out.reserve(text.size());
  out += text.substr(0, cursor);
  while (cursor < text.size()) {
    ++cursor;
    if (cursor >= text.size()) break;  // a "#" at the very end is dropped
    if (text[cursor] == u'#') {
      out += u'#';
    } else {
      EvalEmbeddedBlock(run, out, text, cursor);
    }
    // Kept on purpose: whatever the code stopped on is stepped over, not only its closing "#".
    const size_t plain = std::min(cursor + 1, text.size());
    cursor = std::min(text.find(u'#', plain), text.size());
    out += text.substr(plain, cursor - plain);
  }
  return out;
}

}  // namespace actiontext
