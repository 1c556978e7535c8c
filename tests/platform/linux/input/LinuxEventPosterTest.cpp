#include "platform/linux/input/LinuxEventPoster.h"

#include "fakes/RecordingEventPoster.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

using Event = RecordingEventPoster::Event;

const KeyEvent key{.keyCode = 123, .isDown = true};
const KeyEvent text{.isDown = true, .text = QStringLiteral("text")};
const SystemDefinedEvent systemKey{.flags = 0xa00, .subtype = 8, .data1 = 0x100a00, .data2 = -1};
const MouseEvent mouse{.type = MouseEvent::Type::rightDown, .position = {5, 7}, .button = 1};

struct LinuxPoster : testing::Test {
    LinuxPoster() {
        auto first = std::make_unique<RecordingEventPoster>();
        auto second = std::make_unique<RecordingEventPoster>();
        best = first.get();
        last = second.get();
        LinuxEventPoster::Ways ways;
        ways.push_back(std::move(first));
        ways.push_back(std::move(second));
        poster = std::make_unique<LinuxEventPoster>(std::move(ways));
    }

    void postEachKind() const {
        poster->post(key);
        poster->post(text);
        poster->post(systemKey);
        poster->post(mouse);
    }

    RecordingEventPoster* best; ///< the poster's own, as is the other
    RecordingEventPoster* last;
    std::unique_ptr<LinuxEventPoster> poster;
};

} // namespace

TEST_F(LinuxPoster, PostsEachKindOfEventByTheFirstWayAlone) {
    EXPECT_TRUE(poster->canMakeEvents());
    postEachKind();
    EXPECT_THAT(best->events(), ElementsAre(Event(key), Event(text), Event(systemKey), Event(mouse)));
    EXPECT_THAT(last->events(), IsEmpty());
}

TEST_F(LinuxPoster, PostsByTheNextWayWhereTheFirstDoesNotWork) {
    best->makesEvents = false;
    EXPECT_TRUE(poster->canMakeEvents());
    postEachKind();
    EXPECT_THAT(best->events(), IsEmpty());
    EXPECT_THAT(last->events(), ElementsAre(Event(key), Event(text), Event(systemKey), Event(mouse)));
}

TEST_F(LinuxPoster, ChangesTheWayWhenTheFirstGoesAndWhenItComesBack) {
    poster->post(key);
    best->makesEvents = false;
    poster->post(text);
    best->makesEvents = true;
    poster->post(systemKey);
    EXPECT_THAT(best->events(), ElementsAre(Event(key), Event(systemKey)));
    EXPECT_THAT(last->events(), ElementsAre(Event(text)));
}

TEST_F(LinuxPoster, ThePointerIsThatOfTheWayThatWorks) {
    best->movePointer({1, 2});
    last->movePointer({3, 4});
    EXPECT_EQ(poster->pointerLocation(), QPointF(1, 2));
    best->makesEvents = false;
    EXPECT_EQ(poster->pointerLocation(), QPointF(3, 4));
    last->makesEvents = false;
    EXPECT_EQ(poster->pointerLocation(), QPointF());
}

TEST_F(LinuxPoster, KeepsNothingWhileNoWayWorks) {
    best->makesEvents = false;
    last->makesEvents = false;
    EXPECT_FALSE(poster->canMakeEvents());
    postEachKind();
    best->makesEvents = true;
    last->makesEvents = true;
    poster->post(key);
    EXPECT_THAT(best->events(), ElementsAre(Event(key)));
    EXPECT_THAT(last->events(), IsEmpty());
}

TEST(LinuxPosterWithoutWays, MakesNoEvents) {
    LinuxEventPoster poster({});
    EXPECT_FALSE(poster.canMakeEvents());
    EXPECT_EQ(poster.pointerLocation(), QPointF());
    poster.post(key);
    poster.post(systemKey);
    poster.post(mouse);
}
