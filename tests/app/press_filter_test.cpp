#include "app/press_filter.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvella {

namespace {

/// A page or sheet is drawn, or a button or key is pressed, which should count or not.
struct Event {
    enum class Kind { drawn, counts, ignored, repeat };
    double time;
    Kind kind;
};

Event drawn(double time) {
    return {time, Event::Kind::drawn};
}
Event counts(double time) {
    return {time, Event::Kind::counts};
}
Event ignored(double time) {
    return {time, Event::Kind::ignored};
}
/// A repeat of a held key, which should never count.
Event repeat(double time) {
    return {time, Event::Kind::repeat};
}

struct Presses {
    std::string name;
    std::vector<Event> events;
};

class PressFilterTest : public ::testing::TestWithParam<Presses> {};

TEST_P(PressFilterTest, CountsOnlyIntendedPresses) {
    PressFilter filter;
    for (const Event& event : GetParam().events) {
        if (event.kind == Event::Kind::drawn) {
            filter.shown(event.time);
            continue;
        }
        EXPECT_EQ(filter.counts(event.time, event.kind == Event::Kind::repeat),
                  event.kind == Event::Kind::counts)
            << "at " << event.time;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Presses, PressFilterTest,
    ::testing::Values(
        Presses{"PressHalfASecondAfterThePage", {drawn(10), counts(10.5)}},
        Presses{"PressSoonAfterThePage", {drawn(10), ignored(10.25)}},
        Presses{"PressBeforeThePage", {drawn(10), ignored(7)}},
        Presses{"PressLongAfterStartUpWithoutAPage", {counts(10)}},
        Presses{"SeriesThatBeganLongAfterThePage",
                {drawn(10), counts(11), counts(11.125), counts(11.25), counts(12)}},
        Presses{"SeriesAcrossAPageChange",
                {drawn(10), counts(11), drawn(11.125), ignored(11.25), ignored(11.625), ignored(12),
                 counts(12.5)}},
        Presses{"SeriesThatBeganTooSoon",
                {drawn(10), ignored(10.375), ignored(10.75), counts(11.25)}},
        Presses{"DeliberatePresses",
                {drawn(10), counts(11), drawn(11.125), counts(11.75), drawn(11.875), counts(12.5)}},
        Presses{"PressesQueuedDuringThePagesWork",
                {drawn(10), counts(11), drawn(14), ignored(12), ignored(13), ignored(14.25),
                 counts(14.75)}},
        Presses{"PressesOutOfOrder", {drawn(10), ignored(10.375), ignored(10.25), ignored(10.75)}},
        Presses{"KeyHeldAcrossAPageChange",
                {drawn(10), counts(11), drawn(11.125), repeat(13), repeat(15), ignored(15.25),
                 counts(15.75)}},
        Presses{"KeyHeldOnOnePage",
                {drawn(10), counts(11), repeat(11.75), repeat(13), counts(13.25)}},
        Presses{"KeyHeldSinceThePreviousPage", {drawn(10), repeat(11), ignored(11.25)}}),
    [](const auto& test) { return test.param.name; });

}  // namespace

}  // namespace morvella
