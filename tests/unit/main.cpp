// Runs the unit tests.
#include "harness/jvm.h"

#include <gtest/gtest.h>

const char* const CLASS_PATH = ZERLIN_CLASSPATH;

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
