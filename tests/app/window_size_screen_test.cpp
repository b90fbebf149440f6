#include "app/window_size.h"

#include <gtest/gtest.h>

#include <QScreen>

TEST(WindowSize, ComesBackWithinTheScreen) {
  core::CAppState state;
  QWidget first;
  app::ShowAtKeptSize(first, state);
  EXPECT_EQ(first.size(), QSize(240, 320)) << "nothing kept";
  first.resize(350, 280);
  app::KeepSize(first, state);
  first.showMaximized();
  app::KeepSize(first, state);

  QWidget second;
  app::ShowAtKeptSize(second, state);
  EXPECT_TRUE(second.isMaximized());
  EXPECT_EQ(second.normalGeometry().size(), QSize(350, 280)) << "under the maximized one";

  state.WindowMaximized = 0;
  state.WindowWidth = 2000000000;
  QWidget third;
  third.setMinimumSize(240, 300);
  state.WindowHeight = 3;
  app::ShowAtKeptSize(third, state);
  EXPECT_EQ(third.size(), QSize(third.screen()->availableSize().width(), 300));
}
