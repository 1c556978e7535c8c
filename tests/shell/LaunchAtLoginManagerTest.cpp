#include "shell/LaunchAtLoginManager.h"
#include "fakes/FakePlatform.h"

#include <gtest/gtest.h>

using namespace brenvale;

TEST(LaunchAtLogin, ReadsAndSetsTheSystemsState) {
    const FakePlatform fake;
    EXPECT_FALSE(LaunchAtLoginManager::isEnabled(fake.platform));
    LaunchAtLoginManager::setEnabled(fake.platform, true);
    EXPECT_TRUE(LaunchAtLoginManager::isEnabled(fake.platform));
    LaunchAtLoginManager::setEnabled(fake.platform, false);
    EXPECT_FALSE(LaunchAtLoginManager::isEnabled(fake.platform));
    EXPECT_TRUE(fake.log.lines().isEmpty());
}

TEST(LaunchAtLogin, AFailureIsLoggedAndNothingElse) {
    FakePlatform fake;
    fake.loginItem.error = QStringLiteral("Permission denied");
    LaunchAtLoginManager::setEnabled(fake.platform, true);
    EXPECT_EQ(fake.log.lines(), QByteArrayList{"LaunchAtLogin error: Permission denied"});
    EXPECT_FALSE(LaunchAtLoginManager::isEnabled(fake.platform));
}
