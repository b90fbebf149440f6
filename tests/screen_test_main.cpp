// The entry of every test binary that shows widgets: one application object for the whole run.
#include <gtest/gtest.h>

#include <QApplication>

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setStyle("Fusion");
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
