// The editors that open in place of a field, whatever the screen is that they stand on.
#include "pickers/qt/field_screen.h"

#include <gtest/gtest.h>

#include "pickers/qt/list_picker.h"
#include "platform/qt/month_calendar.h"
#include "platform/qt/one_line.h"
#include "platform/qt/qt_text.h"
#include "support/fake_host.h"
#include "support/screen_driver.h"

namespace pickers {
namespace {

constexpr int kIdFirst = 1;
constexpr int kIdNext = 2;
constexpr int kIdEditor = 3;

// Two fields below one another, at a height of the test's, and a log of what the editor says.
class Form : public FieldScreen {
 public:
  explicit Form(QWidget* over) : FieldScreen(over) {
    AddField(kIdFirst, u"場所", [this] { open(*editor_, {1, kIdEditor, Field(kIdFirst)}); });
    AddField(kIdNext, u"分類1", [this] { open(*editor_, {2, kIdEditor, Field(kIdNext)}); });
  }

  std::function<void(InlineEditor&, const InlineEditor::Target&)> open;
  int top = 0;
  std::u16string text;
  std::string log;

 protected:
  void LayOut() override {
    QWidget* before = nullptr;
    controls_.Place(kIdFirst, {10, top, width() - 20, 20}, before);
    controls_.Place(kIdNext, {10, top + 20, width() - 20, 20}, before);
  }
  void TakeText(const std::u16string& typed) override { text = typed; }
  void ChooseEditor() override { End("chosen "); }
  void ApplyEditor() override { End("applied "); }
  void DropEditor() override { End("dropped "); }
  void OnClose() override { EndScreen(1); }

 private:
  void End(const char* how) {
    log += how;
    editor_->Close();
  }
};

class FieldScreenTest : public testing::Test, protected testing_support::ScreenDriver {
 protected:
  // Opens the editor of the first field, drives it, and answers what has become of it each time.
  std::string Edit(int top, const std::function<void()>& drive) {
    Form shown(&window);
    form = &shown;
    form->open = open;
    form->top = top;
    Drive(shown, [&] {
      Click("1");
      editor = Find<QWidget>("3");
      EXPECT_TRUE(editor->isVisible());
      drive();
      EXPECT_FALSE(editor->isVisible());
      Press(Qt::Key_Escape);
    });
    return shown.log;
  }
  bool HasFocus(const char* name) { return window.focusWidget() == Find(name); }

  testing_support::FakeHost host;
  std::function<void(InlineEditor&, const InlineEditor::Target&)> open;
  Form* form = nullptr;
  QWidget* editor = nullptr;
};

TEST_F(FieldScreenTest, AListTakesWhatIsTypedAndGivesTheFocusBack) {
  open = [](InlineEditor& list, const InlineEditor::Target& target) {
    list.OpenList(target, {{u"会社", u"公園"}, 0, u"会社", 10, false});
  };
  const std::string log = Edit(30, [&] {
    EXPECT_EQ(editor->geometry().topLeft(), QPoint(10, 30)) << "its line lies over the field";
    window.resize(320, 240);
    QApplication::processEvents();
    EXPECT_EQ(editor->width(), 300) << "the window was turned";
    Press(Qt::Key_X, QStringLiteral("駅"));  // replaces what stood there
    Press(Qt::Key_Return);
    EXPECT_EQ(form->text, u"駅");
    EXPECT_TRUE(HasFocus("1"));
    Click("1");
    Press(Qt::Key_Down);
    EXPECT_EQ(form->text, u"公園");
    Press(Qt::Key_Tab);
    EXPECT_TRUE(HasFocus("2")) << "on from the field";
    Click("2");
    Press(Qt::Key_Escape);
    EXPECT_TRUE(HasFocus("2"));
    Click("1");
    Click("2");
    EXPECT_TRUE(editor->isVisible());
    EXPECT_EQ(editor->y(), 50) << "one editor for both fields";
    Tap(form, {5, 5});
  });
  EXPECT_EQ(log, "chosen applied dropped applied ");
}

TEST_F(FieldScreenTest, AListSelectsAllThatItShowsOfAText) {
  ListPicker list(&window);
  auto* line = list.findChild<QLineEdit*>();
  platform::qt::KeepToOneLine(*line);
  list.Open({}, -1, QStringLiteral("会\t社"), 10, {});
  EXPECT_EQ(line->selectedText(), QStringLiteral("会社"));
}

TEST_F(FieldScreenTest, ACalendarLeavesItsFieldInSight) {
  open = [](InlineEditor& calendar, const InlineEditor::Target& target) {
    calendar.OpenCalendar(target, u"");
  };
  struct Row {
    int height, top, calendar;
  };
  // Below the field, above it, lower than usual, and over it where nothing else is left.
  for (const Row& row :
       {Row{320, 30, 50}, Row{320, 230, 30}, Row{320, 100, 120}, Row{200, 30, 0}}) {
    SCOPED_TRACE(row.calendar);
    window.resize(240, row.height);
    const std::string log = Edit(row.top, [&] {
      EXPECT_EQ(editor->y(), row.calendar);
      Press(Qt::Key_Return);
      EXPECT_EQ(form->text, u"2010/06/23") << "of an empty field the day that is shown";
      Click("1");
      Press(Qt::Key_Right);
      EXPECT_EQ(form->text, u"2010/06/24");
      Press(Qt::Key_Escape);
    });
    EXPECT_EQ(log, "chosen dropped ");
  }
}

TEST_F(FieldScreenTest, AnEditOfSeveralLinesExchangesNoCharacter) {
  open = [](InlineEditor& lines, const InlineEditor::Target& target) {
    lines.OpenLines(target, u"一行目\n二\u00A0行目\u2028三行目");
  };
  const std::string log = Edit(200, [&] {
    EXPECT_EQ(editor->geometry().bottom(), 219) << "it grows upward";
    Press(Qt::Key_Return, QStringLiteral("\r"));
    Press(Qt::Key_A, QStringLiteral("!"));
    EXPECT_EQ(form->text, u"一行目\n二\u00A0行目\u2028三行目\n!");
    Press(Qt::Key_Tab);
  });
  EXPECT_EQ(log, "applied ");
}

}  // namespace
}  // namespace pickers
