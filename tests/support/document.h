// The examples of the pages under docs/, for the tests that hold a page to its word.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace testing_support {

// The fenced blocks of a page in its order: the word after the fence, and the text in UTF-8.
std::vector<std::pair<std::string, std::string>> ReadDocument(const std::string& page);
// The block of a kind in docs/formats.md; fails the test if there is none.
std::string FormatExample(const std::string& kind);
// The file that such a block shows, in code page 932, or in UTF-8 with its mark if the kind ends in
// "utf8". Fails the test if it lacks the bytes that the page shows after it.
std::string FormatFile(const std::string& kind);

}  // namespace testing_support
