#include <QByteArray>
#include <gtest/gtest.h>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif

// Every test program runs inside a Qt application without a screen, and never sees the user's own settings or files.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  Application application(argc, argv);
  QCoreApplication::setApplicationName(QStringLiteral("quilmora-tests"));
  ::testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
