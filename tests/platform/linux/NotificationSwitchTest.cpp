#include "platform/linux/NotificationSwitch.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(NotificationSwitch, PlasmaSwitchesThePopupsOfOneApplicationOff) {
    EXPECT_EQ(plasmaSwitchesOff("[Applications][org.a.B]\nShowPopups=false\n", "org.a.B"), true);
    EXPECT_EQ(plasmaSwitchesOff("[Applications][org.a.B]\r\nShowPopups[$i] = false\r\n", "org.a.B"), true);
    EXPECT_EQ(plasmaSwitchesOff("[Applications][org.a.B]\nSeen=true\n ShowPopups = x\nShowPopups=true\n",
                                "org.a.B"),
              false);
}

TEST(NotificationSwitch, PlasmaSaysNothingOfOtherApplications) {
    EXPECT_EQ(plasmaSwitchesOff("", "org.a.B"), std::nullopt);
    EXPECT_EQ(
        plasmaSwitchesOff("[Applications][org.a.C]\nShowPopups=false\n[Notifications]\nShowPopups=false\n",
                          "org.a.B"),
        std::nullopt);
    EXPECT_EQ(plasmaSwitchesOff("[Applications][org.a.B]\nSeen=true\n", "org.a.B"), std::nullopt);
}
