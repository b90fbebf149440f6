#include "platform/qt/qt_host.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <csignal>
#include <set>
#include <thread>

#include "platform/qt/end_signals.h"
#include "platform/qt/message_box.h"
#include "platform/qt/modal_screen.h"
#include "platform/qt/qt_text.h"

using platform::Answer;
using platform::Buttons;
using platform::Icon;
using platform::Message;
using platform::qt::QtHost;

namespace {

// Shows a message and runs `act` on its box once it is up.
Answer Show(QtHost& host, const Message& message, std::function<void(QMessageBox&)> act) {
  QTimer::singleShot(0, [&act] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    act(*box);
  });
  return host.ShowMessage(message);
}

void Press(QMessageBox& box, QMessageBox::StandardButton button) {
  box.button(button)->click();
}

}  // namespace

TEST(QtHostMessage, AnswersWhatWasPressedOrWhatClosingMeans) {
  const struct {
    const char* why;
    Buttons buttons;
    QMessageBox::StandardButton press;
    Answer answer;
    Answer closed;
  } rows[] = {
      {"a notice", Buttons::kOk, QMessageBox::Ok, Answer::kOk, Answer::kOk},
      {"OK or not", Buttons::kOkCancel, QMessageBox::Ok, Answer::kOk, Answer::kCancel},
      {"a question", Buttons::kYesNo, QMessageBox::Yes, Answer::kYes, Answer::kNo},
      {"three ways", Buttons::kYesNoCancel, QMessageBox::No, Answer::kNo, Answer::kCancel},
  };
  QtHost host;
  for (const auto& row : rows) {
    SCOPED_TRACE(row.why);
    const Message message{u"本文", u"題", Icon::kQuestion, row.buttons};
    EXPECT_EQ(Show(host, message, [&](QMessageBox& box) { Press(box, row.press); }), row.answer);
    EXPECT_EQ(Show(host, message, [](QMessageBox& box) { box.close(); }), row.closed);
    EXPECT_EQ(Show(host, message, [](QMessageBox& box) { box.done(-1); }), row.closed);
  }
}

TEST(QtHostMessage, StandsOverTheWindowInJapaneseAndFitsTheSmallScreen) {
  const QFont font = QApplication::font();
  QApplication::setFont(platform::qt::FixedFont(20));  // as a desktop's plug-in does
  QtHost host;
  QWidget window;
  window.resize(240, 320);
  window.show();
  host.SetMainWindow(&window);
  const std::u16string path =
      u"\\home\\" + std::u16string(200, u'a') + u"\\とても長い名前\\user.sdf";
  const Message message{u"<終日> '" + path + u"' が\n\n見つかりません。", u"題", Icon::kQuestion,
                        Buttons::kYesNoCancel, 1};
  Show(host, message, [&](QMessageBox& box) {
    EXPECT_EQ(box.parentWidget(), &window);
    EXPECT_EQ(box.windowModality(), Qt::WindowModal);
    EXPECT_EQ(box.windowTitle(), QStringLiteral("題"));
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    EXPECT_EQ(box.button(QMessageBox::Yes)->text(), QStringLiteral("はい(&Y)"));
    EXPECT_EQ(box.button(QMessageBox::Cancel)->text(), QStringLiteral("キャンセル"));
    EXPECT_EQ(box.defaultButton(), box.button(QMessageBox::No));
    EXPECT_EQ(box.text().remove(u'\n'), platform::qt::ToQt(message.text).remove(u'\n'));
    EXPECT_TRUE(box.text().endsWith(QStringLiteral("が\n\n見つかりません。"))) << "where it fits";
    EXPECT_LE(box.width(), 240);
    EXPECT_LE(box.height(), 320);
    EXPECT_GE(box.button(QMessageBox::Yes)->height(), 30);
    box.close();
  });
  QApplication::setFont(font);
}

TEST(QtHostMessage, TakesTheWaitCursorOffAndPutsItBack) {
  QtHost host;
  host.SetWaitCursor(true);
  host.SetWaitCursor(true);
  Show(host, {u"本文", u"題"}, [](QMessageBox& box) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    box.close();
  });
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  host.SetWaitCursor(false);
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  host.SetWaitCursor(false);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(QtHost, DrawsTheWholeRangeTheSameWayFromTheSameSeed) {
  QtHost host;
  host.SeedDraw(7);
  const int first = host.Draw();
  std::set<int> drawn;
  for (int i = 0; i < 1000000; i++) drawn.insert(host.Draw());
  EXPECT_EQ(drawn.size(), 32768u);
  EXPECT_EQ(*drawn.rbegin(), 32767);
  host.SeedDraw(7);
  EXPECT_EQ(host.Draw(), first);
}

TEST(QtHostPost, ReachesAScreenInFrontAndNobodyElse) {
  class Screen : public platform::qt::ModalScreen {
   public:
    using ModalScreen::ModalScreen;
    void OnPosted(int command) override { EndScreen(command); }
  };
  QtHost host;
  QWidget window;
  window.show();
  Screen screen(&window);
  host.PostCommand(Screen(&window).Address(), 1);  // gone by then
  std::thread([&] { host.PostCommand(screen.Address(), 33103); }).join();
  QTimer::singleShot(0, [&] {
    Show(host, {u"本文", u"題", Icon::kNone, Buttons::kOk}, [](QMessageBox& box) {
      // Longer than the screen waits before it looks again whether the message is still there.
      QTimer::singleShot(300, &box, [&box] { Press(box, QMessageBox::Ok); });
    });
    EXPECT_EQ(platform::qt::ModalScreen::Topmost(), &screen) << "it took the command too early";
  });
  EXPECT_EQ(screen.RunModal(), 33103);
}

TEST(EndSignals, ReachTheEventLoopAlsoInsideAMessage) {
  QtHost host;
  int ends = 0;
  platform::qt::EndSignals asked([&ends] {
    ends++;
    QCoreApplication::exit(0);
  });
  const Message question{u"本文", u"題", Icon::kQuestion, Buttons::kYesNo};
  EXPECT_EQ(Show(host, question, [](QMessageBox&) { raise(SIGTERM); }), Answer::kNo);
  EXPECT_EQ(ends, 1);
}
