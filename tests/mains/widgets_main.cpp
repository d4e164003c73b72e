#include <gtest/gtest.h>

#include <QApplication>

// Tests of widgets; ctest runs them on a screen in memory.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
