// What the words after the program's name ask for.
#pragma once

#include <optional>
#include <string>

namespace app {

// What a start opens over the main window.
enum class FirstScreen : char { kBySetting = 's', kNewAction = 'n', kRecorder = 'r' };

struct CommandLine {
  bool wantsHelp = false;
  bool wantsVersion = false;
  FirstScreen firstScreen = FirstScreen::kBySetting;
  std::optional<std::string> folder;        // where everything of the user's lies, as typed
  std::optional<std::string> sampleFolder;  // the folder of a sample diary to make, as typed
  std::optional<std::string> refused;       // why the words mean nothing; the rest is unset then
};

// Of two that contradict each other the last one counts.
CommandLine ReadCommandLine(int argc, char* const* argv);

// What --help shows, in Japanese or English as the user's locale says.
std::string HelpText();

}  // namespace app
