#include "app/window_size.h"

#include <gtest/gtest.h>

#include <QScreen>

TEST(WindowSize, ComesBackWithinTheScreen) {
  core::CAppState state;
  const platform::ScreenPlan plan;
  QWidget first;
  app::ShowAtKeptSize(first, state, plan);
  EXPECT_EQ(first.size(), QSize(240, 320)) << "nothing kept";
  first.resize(350, 280);
  app::KeepSize(first, state, plan);
  first.showMaximized();
  app::KeepSize(first, state, plan);

  QWidget second;
  app::ShowAtKeptSize(second, state, plan);
  EXPECT_TRUE(second.isMaximized());
  EXPECT_EQ(second.normalGeometry().size(), QSize(350, 280)) << "under the maximized one";

  state.WindowMaximized = 0;
  state.WindowWidth = 2000000000;
  QWidget third;
  third.setMinimumSize(240, 300);
  state.WindowHeight = 3;
  app::ShowAtKeptSize(third, state, plan);
  EXPECT_EQ(third.size(), QSize(third.screen()->availableSize().width(), 300));
}

TEST(WindowSize, IsTheSameShareOfTheScreenInItsUsersOwnScale) {
  core::CAppState state;
  state.WindowWidth = 300;
  state.WindowHeight = 250;
  const platform::ScreenPlan ofHalfThePixels{1.0, false, 480, 640};
  QWidget window;
  app::ShowAtKeptSize(window, state, ofHalfThePixels);
  EXPECT_EQ(window.size(), QSize(600, 500));
  app::KeepSize(window, state, ofHalfThePixels);
  EXPECT_EQ(state.WindowWidth, 300);
}
