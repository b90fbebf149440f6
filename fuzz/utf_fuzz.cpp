// Every text survives the way to UTF-8 and back, and any bytes can be read.
#include "platform/utf.h"

#include "input.h"
#include "platform/device_paths.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  const std::u16string text = fuzz::AsText(data, size);
  fuzz::Require(platform::ToUtf16(platform::ToUtf8(text)) == text);

  const std::string_view bytes = fuzz::AsBytes(data, size);
  fuzz::Require(platform::ToUtf16(bytes).size() <= size);
  const auto path = platform::FromHostPath(bytes);
  if (path && bytes.find('\0') == bytes.npos) fuzz::Require(platform::ToHostPath(*path) == bytes);
  return 0;
}
