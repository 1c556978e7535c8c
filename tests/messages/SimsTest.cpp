#include "messages/Sims.h"
#include "fakes/ModelChanges.h"
#include "records/HistoryStore.h"

#include <gmock/gmock.h>

using namespace brenvale;
using testing::ElementsAre;

namespace {

struct TheSims : testing::Test {
    HistoryStore store;
    Sims sims{store};
};

using DialerSims = TheSims;

} // namespace

TEST_F(TheSims, TheFirstOneIsSelectedAtEachChangeOfTheList) {
    EXPECT_EQ(sims.selectedSimSlot(), 0);
    store.availableSIMs.set(
        {{.slot = 3, .carrier = QStringLiteral("A")}, {.slot = 5, .carrier = QStringLiteral("B")}});
    EXPECT_EQ(sims.selectedSimSlot(), 3);
    EXPECT_THAT(sims.simCarriers(), ElementsAre("A", "B"));
    sims.setSelectedSimIndex(1);
    EXPECT_EQ(sims.selectedSimSlot(), 5);
    store.availableSIMs.set(
        {{.slot = 3, .carrier = QStringLiteral("A")}, {.slot = 5, .carrier = QStringLiteral("B")}});
    EXPECT_EQ(sims.selectedSimSlot(), 5) << "the same list is no change";
    store.availableSIMs.set(
        {{.slot = 3, .carrier = QStringLiteral("A2")}, {.slot = 5, .carrier = QStringLiteral("B")}});
    EXPECT_EQ(sims.selectedSimSlot(), 3);
}

TEST_F(TheSims, AnEmptyListLeavesTheSelection) {
    store.availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    store.availableSIMs.set({});
    EXPECT_EQ(sims.selectedSimSlot(), 3);
    EXPECT_EQ(sims.selectedSimIndex(), -1);
    EXPECT_TRUE(sims.simCarriers().isEmpty());
}

TEST_F(TheSims, ThoseThatWereThereBeforeTheWindowAreNoChange) {
    store.availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    const Sims later(store);
    EXPECT_EQ(later.selectedSimSlot(), 0);
    EXPECT_THAT(later.simCarriers(), ElementsAre("A"));
}

TEST_F(TheSims, APlaceThatIsNotThereSelectsNothing) {
    store.availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    sims.setSelectedSimIndex(1);
    sims.setSelectedSimIndex(-1);
    EXPECT_EQ(sims.selectedSimSlot(), 3);
}

TEST_F(TheSims, TellOfEachChangeOnce) {
    const auto told = countSignals(sims, &Sims::simsChanged);
    store.availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    store.availableSIMs.set({{.slot = 3, .carrier = QStringLiteral("A")}});
    EXPECT_EQ(*told, 1);
    sims.setSelectedSimSlot(4);
    sims.setSelectedSimSlot(4);
    EXPECT_EQ(*told, 2);
}

TEST_F(DialerSims, AreShownFromTwoSimsOn) {
    EXPECT_FALSE(sims.showsDialerSims());
    store.availableSIMs.set({{.slot = 3}});
    EXPECT_FALSE(sims.showsDialerSims());
    EXPECT_EQ(sims.selectedSimSlot(), 3);
    store.availableSIMs.set({{.slot = 3}, {.slot = 4}});
    EXPECT_TRUE(sims.showsDialerSims());
}

TEST_F(DialerSims, AreAlwaysTheSlotsZeroAndOne) {
    store.availableSIMs.set({{.slot = 3}, {.slot = 4}, {.slot = 5}});
    EXPECT_EQ(sims.dialerSimIndex(), -1);
    sims.setDialerSimIndex(1);
    EXPECT_EQ(sims.selectedSimSlot(), 1);
    EXPECT_EQ(sims.dialerSimIndex(), 1);
    sims.setDialerSimIndex(2);
    EXPECT_EQ(sims.selectedSimSlot(), 1);
}
