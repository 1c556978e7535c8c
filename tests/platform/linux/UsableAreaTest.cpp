#include "platform/linux/panels/UsableArea.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

const QRect leftMonitor(0, 0, 1920, 1200);
const QRect rightMonitor(1920, 0, 1600, 1000);

} // namespace

TEST(UsableArea, IsTheMonitorsOwnWhereTheWindowManagerTellsIt) {
    const WorkAreas areas{.ofMonitors = {QRect(1920, 0, 1600, 960), QRect(0, 32, 1920, 1168)},
                          .whole = QRect(0, 32, 3520, 1168)};
    EXPECT_EQ(usableArea(leftMonitor, areas), QRect(0, 32, 1920, 1168));
    EXPECT_EQ(usableArea(rightMonitor, areas), QRect(1920, 0, 1600, 960));
}

TEST(UsableArea, IsElseThePartOfTheWholeThatLiesOnTheMonitor) {
    const WorkAreas areas{.ofMonitors = {}, .whole = QRect(0, 32, 3520, 1168)};
    EXPECT_EQ(usableArea(leftMonitor, areas), QRect(0, 32, 1920, 1168));
    EXPECT_EQ(usableArea(rightMonitor, areas), QRect(1920, 32, 1600, 968));
}

TEST(UsableArea, IsTheWholeMonitorWhereNobodyTells) {
    EXPECT_EQ(usableArea(leftMonitor, {}), leftMonitor);
}

TEST(UsableArea, IsTheWholeMonitorWhereWhatIsToldLiesElsewhere) {
    const WorkAreas areas{.ofMonitors = {QRect(5000, 0, 100, 100)}, .whole = QRect(5000, 0, 100, 100)};
    EXPECT_EQ(usableArea(leftMonitor, areas), leftMonitor);
}
