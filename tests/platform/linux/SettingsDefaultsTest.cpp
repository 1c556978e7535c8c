#include "platform/linux/SettingsDefaults.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>

#include <gmock/gmock.h>

#include <limits>

#include <sys/stat.h>

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

    [[nodiscard]] QByteArray contents() const {
        QFile file(folder.filePath(QStringLiteral("brenvale/brenvale.conf")));
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// Runs the event loop until `value` is `expected`, or too long.
    static bool becomes(const qint64& value, qint64 expected) {
        const QDeadlineTimer deadline(10'000);
        while (value != expected && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents | QEventLoop::AllEvents, 100);
        }
        return value == expected;
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

TEST_F(SettingsDefaultsTest, WhatIsNoFileHoldsNobodyUp) {
    QDir(folder.path()).mkpath(QStringLiteral("brenvale"));
    ASSERT_EQ(::mkfifo(folder.filePath(QStringLiteral("brenvale/brenvale.conf")).toUtf8().constData(), 0600),
              0);
    EXPECT_EQ(defaults.integer(u"port"), 0);
    EXPECT_FALSE(defaults.contains(u"port"));
    EXPECT_EQ(defaults.sections().error(), QStringLiteral("the settings file cannot be read"));
    defaults.setInteger(u"port", 9000);
    EXPECT_EQ(defaults.integer(u"port"), 9000); // kept for as long as the process runs
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

TEST_F(SettingsDefaultsTest, KnowsWhetherThereIsAValue) {
    EXPECT_FALSE(defaults.contains(u"port"));
    write("[General]\nport=0\n");
    EXPECT_TRUE(defaults.contains(u"port"));
    EXPECT_FALSE(defaults.contains(u"selectedSettingsTab"));
}

TEST_F(SettingsDefaultsTest, StoresIntegersInTheGeneralSectionAndLeavesTheRest) {
    write("[General]\nport=9000\n\n[Other]\nport=1\n");
    defaults.setInteger(u"selectedSettingsTab", 2);
    defaults.setInteger(u"port", -1);
    EXPECT_EQ(contents(), "[General]\nport=-1\nselectedSettingsTab=2\n\n[Other]\nport=1\n");
    EXPECT_EQ(defaults.integer(u"port"), -1);
}

TEST_F(SettingsDefaultsTest, MakesTheFileThatIsMissing) {
    defaults.setInteger(u"port", 9000);
    EXPECT_EQ(contents(), "[General]\nport=9000\n");
}

TEST_F(SettingsDefaultsTest, WhatNoFileTakesHoldsForTheProcess) {
    QFile inTheWay(folder.filePath(QStringLiteral("brenvale")));
    ASSERT_TRUE(inTheWay.open(QFile::WriteOnly));
    defaults.setInteger(u"port", 9000);
    EXPECT_TRUE(defaults.contains(u"port"));
    EXPECT_EQ(defaults.integer(u"port"), 9000);
    inTheWay.remove();
    defaults.setInteger(u"port", 9001);
    EXPECT_EQ(contents(), "[General]\nport=9001\n");
    write("[General]\nport=10002\n"); // of another size: two writes may fall into one tick of the file's time
    EXPECT_EQ(defaults.integer(u"port"), 10002);
}

TEST_F(SettingsDefaultsTest, AnObserverIsToldAtOnceAndBeforeASetterReturns) {
    std::vector<qint64> seen;
    const auto observation = defaults.observe([&] { seen.push_back(defaults.integer(u"port")); });
    defaults.setInteger(u"port", 9000);
    EXPECT_THAT(seen, testing::ElementsAre(0, 9000));
}

TEST_F(SettingsDefaultsTest, AnObserverIsToldOfOtherProcesses) {
    char name[] = "tests";
    char* arguments[] = {name, nullptr};
    int argumentCount = 1;
    const QCoreApplication application(argumentCount, arguments);
    SettingsDefaults own;
    qint64 seen = -1;
    const auto observation = own.observe([&] { seen = own.integer(u"port"); });
    for (int round = 0; round < 3; ++round) {
        SettingsDefaults().setInteger(u"port", 9000 + round); // replaces the file
        ASSERT_TRUE(becomes(seen, 9000 + round));
        write("[General]\nport=" + QByteArray::number(round) + "\n"); // writes into it
        ASSERT_TRUE(becomes(seen, round));
    }
}

using SettingsSectionsTest = Settings;

TEST_F(SettingsSectionsTest, AreNoneWhereThereIsNoFile) {
    EXPECT_EQ(defaults.sections(), SettingsSections());
}

TEST_F(SettingsSectionsTest, AreAllThatIsWritten) {
    write("[General]\nport=9000\n[Security]\nallow=10.0.0.1\n");
    EXPECT_EQ(defaults.sections(),
              (SettingsSections{
                  {QStringLiteral("General"), {{QStringLiteral("port"), QStringLiteral("9000")}}},
                  {QStringLiteral("Security"), {{QStringLiteral("allow"), QStringLiteral("10.0.0.1")}}}}));
}

TEST_F(SettingsSectionsTest, WhatCannotBeLookedAtIsNotMissing) {
    const auto path = folder.filePath(QStringLiteral("brenvale/brenvale.conf"));
    QDir(folder.path()).mkpath(path);
    EXPECT_EQ(defaults.sections().error(), QStringLiteral("the settings file cannot be read"));
    QDir().rmdir(path);
    QFile::link(QStringLiteral("nowhere"), path);
    EXPECT_EQ(defaults.sections().error(), QStringLiteral("the settings file cannot be read"));
}

TEST_F(SettingsSectionsTest, AFileWithALineThatCannotBeReadIsNotWrittenTo) {
    const QByteArray broken = "[Security]\nallow 10.0.0.1\n";
    write(broken);
    defaults.setInteger(u"selectedSettingsTab", 3);
    EXPECT_EQ(contents(), broken);
    EXPECT_EQ(defaults.integer(u"selectedSettingsTab"), 3);
    EXPECT_FALSE(defaults.sections());
}

TEST_F(SettingsSectionsTest, ARemarkStaysOneWhenQtHasWrittenTheFile) {
    write("[Security]\n# allow=10.0.0.1\nallow=10.0.0.2\n");
    defaults.setInteger(u"selectedSettingsTab", 3);
    EXPECT_EQ(defaults.sections()->value(QStringLiteral("Security")),
              (QMultiMap<QString, QString>{{QStringLiteral("allow"), QStringLiteral("10.0.0.2")}}));
}
