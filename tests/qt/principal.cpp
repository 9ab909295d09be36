// Tests of windows: real widgets, real key presses and clicks, on a screen that nobody sees.
#include <QApplication>
#include <clocale>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  std::setlocale(LC_NUMERIC, "C");  // Qt takes the user's: simulated instruments speak with points
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
