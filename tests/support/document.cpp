#include "support/document.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "platform/code_page.h"
#include "platform/utf.h"

namespace testing_support {
namespace {

std::string Replaced(std::string text, std::string_view from, std::string_view to) {
  for (size_t at = 0; (at = text.find(from, at)) != text.npos; at += to.size()) {
    text.replace(at, from.size(), to);
  }
  return text;
}

}  // namespace

std::vector<std::pair<std::string, std::string>> ReadDocument(const std::string& page) {
  std::ifstream document(std::string(MORVENLY_DOCS "/") + page);
  EXPECT_TRUE(document) << "docs/" << page << " is missing";
  std::vector<std::pair<std::string, std::string>> blocks;
  bool isOpen = false;
  for (std::string line; std::getline(document, line);) {
    const bool isFence = line.starts_with("```");
    isOpen = isOpen != isFence;
    if (isFence && isOpen) blocks.push_back({line.substr(3), ""});
    if (!isFence && isOpen) blocks.back().second += line + "\n";
  }
  return blocks;
}

std::string FormatExample(const std::string& kind) {
  for (const auto& [name, text] : ReadDocument("formats.md")) {
    if (name == kind) return text;
  }
  ADD_FAILURE() << "no " << kind << " in docs/formats.md";
  return "";
}

std::string FormatFile(const std::string& kind) {
  const std::string lines = Replaced(Replaced(FormatExample(kind), "␉", "\t"), "\n", "\r\n");
  const std::string bytes = kind.ends_with("utf8")
                                ? "\xEF\xBB\xBF" + lines
                                : platform::EncodeCodePage(platform::ToUtf16(lines));
  std::string shown;
  for (const auto& [name, text] : ReadDocument("formats.md")) {
    if (name != "bytes") shown = name;
    if (name != "bytes" || shown != kind) continue;
    std::istringstream digits(text);
    std::string piece;
    for (unsigned byte; digits >> std::hex >> byte;) piece += static_cast<char>(byte);
    EXPECT_NE(bytes.find(piece), bytes.npos) << text;
  }
  return bytes;
}

}  // namespace testing_support
