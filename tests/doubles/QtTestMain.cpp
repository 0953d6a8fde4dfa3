// GoogleTest's entry point with a Qt application around it.

#include <QCoreApplication>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    qSetMessagePattern(u"%{message}"_s); // as the program has it
    const QCoreApplication application(argc, argv);
    const int result = RUN_ALL_TESTS();
    // Tasks that were stopped by the last test still have to unwind.
    for (int round = 0; round < 100; ++round)
        QCoreApplication::processEvents();
    return result;
}
