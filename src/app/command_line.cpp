#include "app/command_line.h"

#include <getopt.h>

#include <array>
#include <cstdlib>
#include <string_view>

namespace app {
namespace {

enum Word {
  kHelp = 'h',
  kVersion = 'v',
  kFolder = 'f',
  kNew = 'n',
  kRecorder = 'r',
  kSample = 's'
};

constexpr std::array<option, 7> kWords = {{{"help", no_argument, nullptr, kHelp},
                                           {"version", no_argument, nullptr, kVersion},
                                           {"folder", required_argument, nullptr, kFolder},
                                           {"new", no_argument, nullptr, kNew},
                                           {"recorder", no_argument, nullptr, kRecorder},
                                           {"sample", required_argument, nullptr, kSample},
                                           {nullptr, 0, nullptr, 0}}};

constexpr char kHelpInEnglish[] = R"(Usage: morvenly [OPTION]...
A pocket diary of actions.

      --new             open the screen for a new Action
      --recorder        open the recorder
      --folder FOLDER   keep settings and diary in FOLDER
      --sample FOLDER   make a sample diary in the new FOLDER, and end
      --help            show this, and end
      --version         show the version, and end

With --new or --recorder, a program that is already running opens the screen.
)";

constexpr char kHelpInJapanese[] = R"(使い方: morvenly [オプション]...
日々の行動を簡単に書きとめておくアプリケーション。

      --new             新規作成の画面を開く
      --recorder        レコーダーを開く
      --folder フォルダ 設定と日記をそのフォルダに置く
      --sample フォルダ 新しいフォルダに見本の日記を作って終わる
      --help            この説明を表示して終わる
      --version         バージョンを表示して終わる

起動中のときは、--new と --recorder の画面をそのプログラムが開きます。
)";

bool SpeaksJapanese() {
  for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
    const char* value = std::getenv(name);
    if (value != nullptr && *value != '\0') return std::string_view(value).starts_with("ja");
  }
  return false;
}

void Take(int word, CommandLine& line) {
  switch (word) {
    case kHelp:
      line.wantsHelp = true;
      break;
    case kVersion:
      line.wantsVersion = true;
      break;
    case kFolder:
      line.folder = optarg;
      break;
    case kNew:
      line.firstScreen = FirstScreen::kNewAction;
      break;
    case kRecorder:
      line.firstScreen = FirstScreen::kRecorder;
      break;
    case kSample:
      line.sampleFolder = optarg;
      break;
    default:
      break;
  }
}

CommandLine Refused(const std::string& why) {
  CommandLine line;
  line.refused = why;
  return line;
}

}  // namespace

CommandLine ReadCommandLine(int argc, char* const* argv) {
  CommandLine line;
  optind = 0;  // scan from the start
  opterr = 0;
  while (true) {
    const int at = optind == 0 ? 1 : optind;
    const int word = getopt_long(argc, argv, "+:", kWords.data(), nullptr);
    if (word == -1) break;
    if (word == ':') return Refused(std::string(argv[at]) + " needs a folder");
    if (word == '?') return Refused(std::string(argv[at]) + " means nothing here");
    const bool isNextWord = optarg != nullptr && optarg == argv[optind - 1];
    if (optarg != nullptr &&
        (*optarg == '\0' || (isNextWord && std::string_view(optarg).starts_with("--"))))
      return Refused(std::string(argv[at]) + " needs a folder");
    Take(word, line);
  }
  if (optind < argc) return Refused(std::string(argv[optind]) + " means nothing here");
  return line;
}

std::string HelpText() {
  return SpeaksJapanese() ? kHelpInJapanese : kHelpInEnglish;
}

}  // namespace app
