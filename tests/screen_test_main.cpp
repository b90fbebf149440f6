// The entry of every test binary that shows widgets: one application object for the whole run,
// dressed as the program's own, on no real screen unless the environment names one.
#include <gtest/gtest.h>

#include <QApplication>

#include "platform/qt/application_look.h"
#include "platform/qt/qt_host.h"

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  platform::qt::QtHost host;
  platform::SetHost(&host);
  QApplication app(argc, argv);
  platform::qt::DressApplication(app);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
