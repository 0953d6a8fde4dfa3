// GoogleTest's entry point with a Qt application that can have widgets, drawn nowhere.

#include <QApplication>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    qSetMessagePattern(u"%{message}"_s); // as the program has it
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    const int result = RUN_ALL_TESTS();
    for (int round = 0; round < 100; ++round)
        QCoreApplication::processEvents();
    return result;
}
