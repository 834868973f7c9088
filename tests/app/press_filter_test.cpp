#include "app/press_filter.hpp"

#include <gtest/gtest.h>

namespace morvella {

namespace {

Press click(double time, int clickCount = 1) {
    return {.time = time, .clickCount = clickCount};
}

Press key(double time, char32_t character = U'\r') {
    return {.time = time, .key = character, .doubleClickInterval = 0.5};
}

Press repeat(double time) {
    Press press = key(time);
    press.isRepeat = true;
    return press;
}

class PressFilterTest : public ::testing::Test {
  protected:
    PressFilterTest() { filter.shown(10); }

    PressFilter filter;
};

TEST(PressTest, IsAFirstClickAtTheBeginningUnlessMoreIsSaid) {
    const Press press;
    EXPECT_EQ(press.time, 0);
    EXPECT_EQ(press.clickCount, 1);
    EXPECT_EQ(press.doubleClickInterval, 0);
    EXPECT_TRUE(PressFilter().counts(press)) << "nothing was shown before it";
}

TEST_F(PressFilterTest, LetsAFirstPressThroughAtOnce) {
    EXPECT_TRUE(filter.counts(click(10)));
    EXPECT_TRUE(filter.counts(key(10)));
}

TEST_F(PressFilterTest, HoldsBackWhatWasPressedBeforeThePageWasThere) {
    EXPECT_FALSE(filter.counts(click(9.9)));
    EXPECT_FALSE(filter.counts(key(9.9)));
    filter.shown(12);
    EXPECT_FALSE(filter.counts(click(11.9)));
    EXPECT_TRUE(filter.counts(click(12.1)));
}

TEST_F(PressFilterTest, HoldsBackTheLaterClicksOfAMultipleClick) {
    EXPECT_TRUE(filter.counts(click(11, 1)));
    filter.shown(11.1);
    EXPECT_FALSE(filter.counts(click(11.2, 2)));
    filter.shown(11.3);
    EXPECT_FALSE(filter.counts(click(11.4, 3)));
    EXPECT_TRUE(filter.counts(click(11.5, 1)));
}

TEST_F(PressFilterTest, HoldsBackAHeldKeyHoweverLongItIsHeld) {
    EXPECT_TRUE(filter.counts(key(11)));
    EXPECT_FALSE(filter.counts(repeat(11.6)));
    EXPECT_FALSE(filter.counts(repeat(13)));
    EXPECT_TRUE(filter.counts(key(14)));
}

TEST_F(PressFilterTest, HoldsBackTheSameKeyWithinTheDoubleClickIntervalOfItsLastPress) {
    EXPECT_TRUE(filter.counts(key(11)));
    EXPECT_FALSE(filter.counts(key(11.5)));
    EXPECT_FALSE(filter.counts(key(11.9)));
    EXPECT_TRUE(filter.counts(key(12.5)));
}

TEST_F(PressFilterTest, CountsWhatItHeldBackAsThatKeysLastPress) {
    EXPECT_FALSE(filter.counts(key(9.9)));
    EXPECT_FALSE(filter.counts(key(10.2)));
    EXPECT_TRUE(filter.counts(key(10.8)));
}

TEST_F(PressFilterTest, LooksAtEachKeyByItself) {
    EXPECT_TRUE(filter.counts(key(11, U'\r')));
    EXPECT_TRUE(filter.counts(key(11.1, U' ')));
    EXPECT_FALSE(filter.counts(key(11.2, U'\r')));
    EXPECT_TRUE(filter.counts(click(11.3)));
}

}  // namespace

}  // namespace morvella
