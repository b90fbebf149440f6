#include "reliability/judgement.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace reliability {
namespace {

bool IsAction(const std::string& line) {
  return line.starts_with("Action ");
}

// "file NAME" of a line on a file; empty for others.
std::string FileOf(const std::string& line) {
  return line.starts_with("file ") ? line.substr(0, line.find(' ', 5)) : std::string();
}

// What a killed command leaves. It stays until its user removes it: its name is never taken again.
bool IsUnfinished(const std::string& line) {
  const std::string name = FileOf(line);
  return name.find(".new") != name.npos || name.find(".restore") != name.npos ||
         name.find("$$Tmp") != name.npos;
}

bool IsExported(const std::string& line) {
  return FileOf(line) == "file out.csv";
}

// The recorder names an Action of its chain, and the running one, in commits of their own; one that
// is gone it passes over.
bool NamesOneOf(const Picture& actions, const std::string& line) {
  if (!line.starts_with("chain ") && !line.starts_with("running ")) return false;
  const size_t words = line.starts_with("chain ") ? line.find(' ', 6) : line.find(' ');
  const std::string named = line.substr(words + 1);
  return named == "gone" || actions.contains("Action " + named);
}

std::set<std::string> FilesOf(const Picture& picture) {
  std::set<std::string> files;
  for (const std::string& line : picture) files.insert(FileOf(line));
  return files;
}

// Files that stand before and after, whatever becomes of their content.
std::string LostFiles(const Picture& before, const Picture& after, const Picture& found) {
  const std::set<std::string> later = FilesOf(after), left = FilesOf(found);
  std::string text;
  for (const std::string& file : FilesOf(before)) {
    if (later.contains(file) && !left.contains(file)) text += "\n    lost: " + file;
  }
  return text;
}

}  // namespace

std::string Missing(const char* word, const Picture& a, const Picture& b) {
  Picture missing;
  std::ranges::set_difference(a, b, std::inserter(missing, missing.end()));
  std::string text;
  for (const std::string& line : missing) {
    text += std::string("\n    ") + word + ": " +
            line.substr(0, std::min<size_t>(line.find('\n'), 120));
  }
  return text;
}

long CountActions(const Picture& picture) {
  return std::ranges::count_if(picture, IsAction);
}

std::string Between(const Picture& before, const Picture& after, const Picture& found,
                    bool killed) {
  Picture least, most;
  std::ranges::set_intersection(before, after, std::inserter(least, least.end()));
  std::ranges::set_union(before, after, std::inserter(most, most.end()));
  std::string wrong = Missing("lost", least, found) + LostFiles(before, after, found);
  if (CountActions(found) < std::min(CountActions(before), CountActions(after))) {
    wrong += "\n    fewer Actions than before and after";
  }
  Picture strange = found;
  std::erase_if(strange, [&](const std::string& line) {
    const bool isPart = IsExported(line) && std::ranges::none_of(before, IsExported);
    return isPart || NamesOneOf(most, line) || (killed && IsUnfinished(line));
  });
  return wrong + Missing("strange", strange, most);
}

}  // namespace reliability
