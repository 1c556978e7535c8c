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
    ASSERT_EQ(::mkfifo(folder.filePath(QStringLiteral("brenvale/brenvale.conf")).toUtf8().constData(), 0600), 0);
    EXPECT_EQ(defaults.integer(u"port"), 0);
    EXPECT_FALSE(defaults.contains(u"port"));
    EXPECT_EQ(defaults.section(u"Security").error(), QStringLiteral("the settings file is no file"));
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

namespace {

using Section = QMultiMap<QString, QString>;

struct SettingsSectionTest : Settings {
    [[nodiscard]] Section securityOf(const QByteArray& contents) const {
        write(contents);
        return defaults.section(u"Security").value_or(Section{{QStringLiteral("error"), QString()}});
    }

    [[nodiscard]] QString errorOf(const QByteArray& contents) const {
        write(contents);
        const auto section = defaults.section(u"Security");
        return section ? QString() : section.error();
    }
};

const auto allow = QStringLiteral("allow");

} // namespace

TEST_F(SettingsSectionTest, IsEmptyWhereThereIsNone) {
    EXPECT_EQ(defaults.section(u"Security"), Section());
    EXPECT_EQ(securityOf("[General]\nport=9000\nallow=1\n[Other]\nallow=2\n"), Section());
}

TEST_F(SettingsSectionTest, HasItsValuesAsTheyAreWritten) {
    EXPECT_EQ(securityOf("[Security]\nallow=10.0.0.1, fd00::/8 10.0.0.2\nremoteControl=false\n"),
              Section({{allow, QStringLiteral("10.0.0.1,fd00::/8 10.0.0.2")},
                       {QStringLiteral("remoteControl"), QStringLiteral("false")}}));
    EXPECT_EQ(securityOf("[Security]\nallow=\n"), Section({{allow, QString()}}));
    EXPECT_EQ(securityOf("[Security]\r\nallow = \"10.0.0.1\" ; a remark\r\n"),
              Section({{allow, QStringLiteral("10.0.0.1")}}));
}

TEST_F(SettingsSectionTest, IsFoundInAnyCaseAndHasAllThatIsThere) {
    EXPECT_EQ(securityOf("[security]\nallow=1\n[SECURITY]\nallow=2\nAllow=3\n").values(allow).size(), 2);
    EXPECT_EQ(securityOf("[security]\nallow=1\n[SECURITY]\nallow=2\nAllow=3\n").size(), 3);
}

TEST_F(SettingsSectionTest, RemarksAreNoFault) {
    EXPECT_EQ(errorOf("# by hand\n; by hand\n[Security]\n  # the phone\nallow=10.0.0.1\n"), QString());
}

TEST_F(SettingsSectionTest, ABrokenLineMayBeMeantForIt) {
    const auto problem = QStringLiteral("the settings file has a line that cannot be read");
    for (const auto* contents : {"[Security\nallow=10.0.0.1\n", "[Security]\nallow 10.0.0.1\n",
                                 "[Security]\nallow\n", "Security]\nallow=10.0.0.1\n", "[General]\nport\n"}) {
        EXPECT_EQ(errorOf(contents), problem) << contents;
        EXPECT_EQ(defaults.section(u"Security").error(), problem) << contents << "the second time too";
    }
}

TEST_F(SettingsSectionTest, AValueThatIsNoTextIsAnError) {
    EXPECT_EQ(errorOf("[Security]\nallow=@Invalid()\n"),
              QStringLiteral("the value of Security/allow is no text"));
}

TEST_F(SettingsSectionTest, WhatIsNoFileIsAnError) {
    QDir(folder.path()).mkpath(QStringLiteral("brenvale/brenvale.conf"));
    EXPECT_EQ(defaults.section(u"Security").error(), QStringLiteral("the settings file cannot be read"));
}
