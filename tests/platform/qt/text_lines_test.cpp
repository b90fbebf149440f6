#include "platform/qt/text_lines.h"

#include <gtest/gtest.h>

#include <QFontMetrics>

#include "platform/qt/qt_text.h"

using namespace platform::qt;

TEST(TextLines, BreakWhereAReaderWould) {
  const QFont font = FixedFont(12);
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"有効なアクションが選択されていません。", "有効なアクションが選択",
       "有効なアクションが\n選択されていません。"},
      {"設定ファイルの書込みに失敗しました。", "設定ファイルの書",
       "設定ファイルの\n書込みに\n失敗しました。"},
      {"/home/diary/user.sdf", "/home/diary/us", "/home/diary/\nuser.sdf"},
      {"\\data\\とても長い名前", "\\data\\とても", "\\data\\とても\n長い名前"},
      {"\\data\\back-up", "\\data\\back-", "\\data\\\nback-up"},
      {"\\data\\user_20261122.sdf", "\\data\\user_2026", "\\data\\user_\n20261122.sdf"},
      {"個を '\\data'", "個を '\\d", "個を \n'\\data'"},
      {"データファイル", "データファ", "データファ\nイル"},
      {"a\n\nb", "ab", "a\n\nb"},
  };
  for (const auto& [text, fits, lines] : rows) {
    const int width = QFontMetrics(font).horizontalAdvance(fits) + 2;
    EXPECT_EQ(BreakIntoLines(text, font, width).toStdString(), lines);
  }
}

TEST(TextLines, CutAtWholeCharactersAndSayThatMoreFollows) {
  const QFont font = FixedFont(12);
  const auto wide = [&](const char* text) { return QFontMetrics(font).horizontalAdvance(text); };
  EXPECT_EQ(FitLines("朝食\r\n昼食\r夕食", font, 100, 3).join('|').toStdString(), "朝食|昼食|夕食");
  EXPECT_EQ(FitLines("朝食\n昼食\n夕食", font, wide("昼食…") + 2, 2).back().toStdString(), "昼食…");
  EXPECT_EQ(FitLines("朝食昼食", font, wide("朝食") + 3, 1).back().toStdString(), "朝…");
  EXPECT_EQ(CutToWidth("図書館", font, wide("図書") + 3).toStdString(), "図書") << "more than 図…";
  EXPECT_EQ(CutToWidth("国立図書館", font, wide("国立図") + 3).toStdString(), "国立…");
  EXPECT_EQ(CutToWidth("𠮷野家", font, wide("𠮷") + 3).toStdString(), "𠮷") << "no half of it";
  EXPECT_EQ(CutToWidth("図", font, 3), QString());
}
