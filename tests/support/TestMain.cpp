// SPDX-License-Identifier: BSD-3-Clause
// Every test program starts here: with the fonts that the tests know and, where it opens windows,
// without a screen, however it is started. Programs that it starts inherit both.
#include <cstdlib>
#include <gmock/gmock.h>

int main(int count, char** arguments) {
#ifdef TELOP_TEST_FONTS
    setenv("FONTCONFIG_FILE", TELOP_TEST_FONTS, 1);
#endif
#ifdef TELOP_TEST_OFFSCREEN
    setenv("QT_QPA_PLATFORM", "offscreen", 0); // a person may want to see them
#endif
    testing::InitGoogleMock(&count, arguments);
    return RUN_ALL_TESTS();
}
