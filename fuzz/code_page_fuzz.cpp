// Any bytes can be read and any text written, and what was read once is written and read again
// without a further change.
#include "platform/code_page.h"

#include "input.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string read = platform::DecodeCodePage(fuzz::AsBytes(data, size));
  fuzz::Require(read.size() <= size);
  fuzz::Require(platform::DecodeCodePage(platform::EncodeCodePage(read)) == read);

  const std::u16string text = fuzz::AsText(data, size);
  const std::string written = platform::EncodeCodePage(text);
  fuzz::Require(written.size() <= text.size() * 2);
  fuzz::Require(platform::EncodeCodePage(platform::DecodeCodePage(written)) == written);
  return 0;
}
