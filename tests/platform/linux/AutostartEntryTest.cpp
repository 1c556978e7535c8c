#include "platform/linux/AutostartEntry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

/// A configuration folder of its own.
struct AutostartEntryTest : testing::Test {
    AutostartEntryTest() { qputenv("XDG_CONFIG_HOME", folder.path().toUtf8()); }
    ~AutostartEntryTest() override { qunsetenv("XDG_CONFIG_HOME"); }

    void write(const QByteArray& text) const {
        QDir().mkpath(folder.filePath(QStringLiteral("autostart")));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    [[nodiscard]] QByteArray text() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    int argumentCount = 1;
    QByteArray programName = "linux-tests";
    char* arguments[1] = {programName.data()};
    QCoreApplication application{argumentCount, arguments};
    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("autostart/org.brenvale.Brenvale.desktop"));
    AutostartEntry entry;
};

} // namespace

TEST_F(AutostartEntryTest, IsOffWhereThereIsNoEntry) {
    EXPECT_FALSE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, RegisteringWritesAValidEntryForThisProgram) {
    ASSERT_TRUE(entry.registerItem());
    EXPECT_TRUE(entry.isEnabled());
    EXPECT_TRUE(
        text().contains("Exec=\"" + QCoreApplication::applicationFilePath().toUtf8() + "\" --background\n"))
        << text().toStdString();
    EXPECT_TRUE(text().contains("\nTryExec=" + QCoreApplication::applicationFilePath().toUtf8() + "\n"))
        << "a removed program is passed over: " << text().toStdString();
    QProcess validator;
    validator.start(QStringLiteral("desktop-file-validate"), {path});
    ASSERT_TRUE(validator.waitForFinished());
    EXPECT_EQ(validator.exitCode(), 0) << validator.readAllStandardOutput().toStdString();
}

TEST_F(AutostartEntryTest, UnregisteringTakesItAway) {
    ASSERT_TRUE(entry.registerItem());
    ASSERT_TRUE(entry.unregisterItem());
    EXPECT_FALSE(entry.isEnabled());
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(AutostartEntryTest, AHiddenEntryIsOff) {
    write("[Desktop Entry]\nType=Application\nName=Brenvale\nExec=brenvale\nHidden=true\n");
    EXPECT_FALSE(entry.isEnabled());
    ASSERT_TRUE(entry.registerItem());
    EXPECT_TRUE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, AnEntryThatTheDesktopSwitchedOffIsOff) {
    write(
        "[Desktop Entry]\nType=Application\nName=Brenvale\nExec=brenvale\nX-GNOME-Autostart-enabled=false\n");
    EXPECT_FALSE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, AnEntryWithoutACommandIsOff) {
    write("");
    EXPECT_FALSE(entry.isEnabled());
    write("[Desktop Entry]\nType=Application\nName=Brenvale\n[Desktop Action x]\nExec=brenvale\n");
    EXPECT_FALSE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, QuotesInTheCommandHideNothing) {
    write("[Desktop Entry]\nExec=\"/a\\\\\"b\"\nIcon=c\\\nHidden = true\r\n");
    EXPECT_FALSE(entry.isEnabled());
}

TEST_F(AutostartEntryTest, UnregisteringWhatIsNotEnabledIsTheSystemsErrorAndChangesNothing) {
    EXPECT_EQ(entry.unregisterItem().error(), QStringLiteral("No such file or directory"));
    const QByteArray hidden = "[Desktop Entry]\nExec=brenvale\nHidden=true\n";
    write(hidden);
    EXPECT_EQ(entry.unregisterItem().error(), QStringLiteral("No such file or directory"));
    EXPECT_EQ(text(), hidden);
}

TEST_F(AutostartEntryTest, AFolderThatCannotBeMadeIsTheSystemsError) {
    QFile obstacle(folder.filePath(QStringLiteral("autostart")));
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    const auto result = entry.registerItem();
    ASSERT_FALSE(result);
    EXPECT_FALSE(result.error().isEmpty());
    EXPECT_FALSE(entry.isEnabled());
}

TEST(AutostartExec, TextsAreEscapedAsTheDesktopEntryWantsThem) {
    EXPECT_EQ(entryString(QStringLiteral("/usr/bin/brenvale")), QStringLiteral("/usr/bin/brenvale"));
    EXPECT_EQ(entryString(QStringLiteral("/my apps/100%")), QStringLiteral("/my apps/100%"));
    EXPECT_EQ(entryString(QStringLiteral("/a\nb\tc\\d")), QStringLiteral(R"(/a\nb\tc\\d)"));
}

TEST(AutostartExec, WordsAreQuotedAsTheDesktopEntryWantsThem) {
    EXPECT_EQ(execWord(QStringLiteral("/usr/bin/brenvale")), QStringLiteral("\"/usr/bin/brenvale\""));
    EXPECT_EQ(execWord(QStringLiteral("/my apps/100%")), QStringLiteral("\"/my apps/100%%\""));
    EXPECT_EQ(execWord(QStringLiteral("/a\nb\tc")), QStringLiteral(R"("/a\nb\tc")"));
    EXPECT_EQ(execWord(QStringLiteral("/a\"b")), QStringLiteral(R"("/a\\"b")"));
    EXPECT_EQ(execWord(QStringLiteral("/a$b`c")), QStringLiteral(R"("/a\\$b\\`c")"));
    EXPECT_EQ(execWord(QStringLiteral(R"(/a\b)")), QStringLiteral(R"("/a\\\\b")"));
}
