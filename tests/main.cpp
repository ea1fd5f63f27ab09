#include <gtest/gtest.h>

#include "shell/application.h"

int main(int argc, char** argv) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  testing::InitGoogleTest(&argc, argv);
  Application application(argc, argv);
  return RUN_ALL_TESTS();
}
