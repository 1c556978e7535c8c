#include "platform/linux/SettingsDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <limits>

using namespace brenvale;

namespace {

struct Settings : testing::Test {
    Settings() { qputenv("XDG_CONFIG_HOME", folder.path().toUtf8()); }
    ~Settings() override { qunsetenv("XDG_CONFIG_HOME"); }

    void write(const QByteArray& contents) const {
        QDir(folder.path()).mkpath(QStringLiteral("brenvale"));
        QFile file(folder.filePath(QStringLiteral("brenvale/brenvale.conf")));
        ASSERT_TRUE(file.open(QFile::WriteOnly));
        file.write(contents);
    }

    QTemporaryDir folder;
    SettingsDefaults defaults;
};

} // namespace

using SettingsDefaultsTest = Settings;

TEST_F(SettingsDefaultsTest, AMissingFileOrKeyIsZero) {
    EXPECT_EQ(defaults.integer(u"port"), 0);
    write("[General]\nother=5\n");
    EXPECT_EQ(defaults.integer(u"port"), 0);
}

TEST_F(SettingsDefaultsTest, ReadsIntegersOfTheGeneralSection) {
    write("[General]\nport=9000\nselectedSettingsTab=-7\n[Other]\nport=1\n");
    EXPECT_EQ(defaults.integer(u"port"), 9000);
    EXPECT_EQ(defaults.integer(u"selectedSettingsTab"), -7);
}

TEST_F(SettingsDefaultsTest, WhatIsNoIntegerIsZero) {
    for (const auto* value : {"", "many", "80.5", "1, 2", "99999999999999999999.5"}) {
        write(QByteArray("[General]\nport=") + value + "\n");
        EXPECT_EQ(defaults.integer(u"port"), 0) << value;
    }
}

TEST_F(SettingsDefaultsTest, AnIntegerBeyond64BitsIsTheNearest) {
    write("[General]\nport=99999999999999999999\n");
    EXPECT_EQ(defaults.integer(u"port"), std::numeric_limits<qint64>::max());
    write("[General]\nport=-99999999999999999999\n");
    EXPECT_EQ(defaults.integer(u"port"), std::numeric_limits<qint64>::min());
}

TEST_F(SettingsDefaultsTest, AChangeByAnotherProcessIsSeenAtOnce) {
    write("[General]\nport=9000\n");
    EXPECT_EQ(defaults.integer(u"port"), 9000);
    write("[General]\nport=19000\n");
    EXPECT_EQ(defaults.integer(u"port"), 19000);
}
