#include <gtest/gtest.h>

#include <QCoreApplication>

// Tests whose objects need an event loop and no screen.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  const QCoreApplication application(argc, argv);
  return RUN_ALL_TESTS();
}
