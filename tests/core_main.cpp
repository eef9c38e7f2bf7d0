#include "support/qtwarnings.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    tavik::test::failOnQtWarnings();
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
