#pragma once
#include <QTest>

#include "shell/application.hpp"

// Runs a QtTest class inside the program's own application object, so that
// the unhandled path is the real one; offscreen unless told otherwise.
#define DRAV_QTEST_MAIN(TestClass)                                              \
  int main(int argc, char** argv) {                                             \
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen"); \
    drav::Application app(argc, argv);                                          \
    TestClass test;                                                             \
    return QTest::qExec(&test, argc, argv);                                     \
  }
