#include "edit/qt/edit_action_screen.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <functional>

#include "edit/edit_fixture.h"
#include "touch/qt/inertial_list_view.h"

namespace edit {
namespace {

using platform::Answer;

// A window as the main window behaves when its frame is closed.
class Window : public QWidget {
 public:
  int closings = 0;

 protected:
  void closeEvent(QCloseEvent* event) override {
    auto* screen = platform::qt::ModalScreen::Topmost();
    event->setAccepted(screen == nullptr || screen->OnWindowClosing());
    if (event->isAccepted()) closings++;
  }
};

class EditActionScreen : public edit_test::EditTest {
 protected:
  EditActionScreen() {
    window.resize(240, 320);
    window.show();
    QApplication::setActiveWindow(&window);
  }

  // Runs the screen on the noon Action and `drive` once it is up; what drives it must end it.
  int Run(const std::function<void()>& drive) {
    app.SelIndex = 1;
    CEditActionDlg dialog(&window, app, kOpenChange);
    QTimer::singleShot(0, &dialog, [&] {
      screen = &dialog;
      drive();
    });
    QTimer::singleShot(5000, &dialog, [&] {
      ADD_FAILURE() << "the screen was not ended";
      dialog.EndScreen(-1);
    });
    return dialog.RunModal();
  }

  template <typename Widget>
  Widget* Find(const char* name) {
    auto* widget = screen->findChild<Widget*>(QString::fromLatin1(name));
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }

  const QAction* MenuItem(int id) {
    for (const QMenu* menu : screen->findChildren<QMenu*>()) {
      for (const QAction* action : menu->actions()) {
        if (action->data().toInt() == id) return action;
      }
    }
    ADD_FAILURE() << "no menu item " << id;
    return nullptr;
  }

  void Tap(const char* name) { Find<QAbstractButton>(name)->click(); }
  std::string Shown(const char* name) {
    return Find<pickers::FieldButton>(name)->accessibleDescription().toStdString();
  }

  static void Press(int key, const QString& text = QString()) {
    QWidget* focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
    QApplication::sendEvent(focus, &press);
  }

  Window window;
  QWidget* screen = nullptr;
};

TEST_F(EditActionScreen, ShowsTheAction) {
  app.PlaceName = u"行き先";
  EXPECT_EQ(Run([&] {
              EXPECT_EQ(Find<QLabel>("1100")->text(), QStringLiteral("変更"));
              EXPECT_EQ(Find<QLabel>("1112")->text(), QStringLiteral("行き先"));
              EXPECT_EQ(Shown("1105"), "2010/06/23");
              EXPECT_EQ(Shown("1110"), "13:00");
              EXPECT_EQ(Shown("1113"), "レストラン");
              EXPECT_TRUE(Find<QAbstractButton>("5007")->isEnabled());
              EXPECT_FALSE(Find<QWidget>("1124")->isVisible());
              EXPECT_TRUE(MenuItem(kIdMenuFollow)->isEnabled());
              EXPECT_TRUE(Find<pickers::FieldButton>("1110")->isEnabled());
              Tap("2");
            }),
            platform::qt::kResultCancel);
}

TEST_F(EditActionScreen, WithListsTimesAndValuesHaveScreensOfTheirOwn) {
  app.ItmSelMode = 2;
  Run([&] {
    const auto pick = [&](const char* field, const std::function<void()>& drive) {
      QWidget* const form = screen;
      QTimer::singleShot(0, form, [&] {
        screen = platform::qt::ModalScreen::Topmost();
        drive();
      });
      form->findChild<QAbstractButton*>(QString::fromLatin1(field))->click();
      screen = form;
    };
    pick("1110", [&] {
      EXPECT_EQ(screen->findChild<QWidget*>(QStringLiteral("extra")), nullptr);
      Find<touch::INERT_LIST_VIEW>("hour")->List().SetTop(11);
      Tap("1");
    });
    EXPECT_EQ(Shown("1110"), "14:00");
    pick("1106", [&] { Tap("extra"); });
    EXPECT_EQ(Shown("1106"), "<終日>");
    pick("1113", [&] {
      Find<QLineEdit>("value")->setText(QStringLiteral("公園"));
      Tap("1");
    });
    pick("1115", [&] {
      Find<QLineEdit>("value")->setText(QStringLiteral("遊び"));
      Tap("2");
    });
    Tap("1102");
  });
  EXPECT_EQ(Stored(noon, store::kEndDateTime), "2010/06/23 24:00:00");
  EXPECT_EQ(Stored(noon, store::kPlace), "公園");
  EXPECT_EQ(Stored(noon, store::kCategory1), "") << "the choice was given up";
  EXPECT_EQ(app.PlaceHistory.Entries().front(), u"公園");
}

TEST_F(EditActionScreen, TypesAPlaceByKeyboardAlone) {
  EXPECT_EQ(Run([&] {
              Find<QWidget>("1113")->setFocus();
              Press(Qt::Key_Return);
              ASSERT_TRUE(Find<QWidget>("1124")->isVisible());
              Press(Qt::Key_X, QStringLiteral("公園"));  // replaces what stood there
              Press(Qt::Key_Return);
              EXPECT_FALSE(Find<QWidget>("1124")->isVisible());
              EXPECT_EQ(Shown("1113"), "公園");
              EXPECT_TRUE(Find<QWidget>("1113")->hasFocus());
              Press(Qt::Key_Return);
              Press(Qt::Key_Y, QStringLiteral("駅"));
              Press(Qt::Key_Escape);  // the editor goes, the screen stays
              EXPECT_EQ(Shown("1113"), "公園");
              Tap("40002");
            }),
            platform::qt::kResultOk);
  EXPECT_EQ(Stored(noon, store::kPlace), "公園");
}

TEST_F(EditActionScreen, PicksADateInTheCalendar) {
  Run([&] {
    Tap("1109");
    auto* calendar = Find<platform::qt::MonthCalendar>("1126");
    ASSERT_TRUE(calendar->isVisible());
    EXPECT_EQ(calendar->Selected(), QDate(2010, 6, 23));
    Press(Qt::Key_Right);
    Press(Qt::Key_Return);
    EXPECT_FALSE(calendar->isVisible());
    EXPECT_EQ(Shown("1109"), "2010/06/24");
    Tap("1109");
    Press(Qt::Key_Right);
    Press(Qt::Key_Escape);
    EXPECT_EQ(Shown("1109"), "2010/06/24") << "a dropped calendar chooses nothing";
    Tap("1109");
    Press(Qt::Key_Down);
    host.answers = {{"変更しますか。", Answer::kNo}};
    Tap("2");  // a command takes the selected day first
    EXPECT_EQ(Shown("1109"), "2010/07/01");
  });
}

TEST_F(EditActionScreen, TheMultiLineEditExchangesNoCharacter) {
  store::Action action = Read(noon);
  action[store::kMemo] = u"一行目\n二\u00A0行目\u2028三行目";
  ASSERT_EQ(Users().Update(noon, action), 0);
  Run([&] {
    Tap("1120");
    Tap("1119");
    ASSERT_TRUE(Find<QWidget>("1123")->isVisible());
    Press(Qt::Key_A, QStringLiteral("!"));
    Press(Qt::Key_Escape);  // keeps what was typed
    Tap("1102");
  });
  EXPECT_EQ(Stored(noon, store::kMemo), "一行目\r\n二\u00A0行目\u2028三行目!");
}

TEST_F(EditActionScreen, ClosesWithItsWindow) {
  Run([&] {
    Find<QWidget>("1115")->setFocus();
    Press(Qt::Key_Return);
    Press(Qt::Key_X, QStringLiteral("食事"));
    host.answers = {Answer::kCancel};
    EXPECT_FALSE(window.close());
    host.answers = {Answer::kNo};
    EXPECT_TRUE(window.close());
  });
  EXPECT_EQ(window.closings, 1);
  window.show();
  Run([&] { Tap("1103"); });
  QApplication::processEvents();
  EXPECT_EQ(window.closings, 2);
}

}  // namespace
}  // namespace edit
