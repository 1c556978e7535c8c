#include "platform/linux/scripts/ProgramEntry.h"

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

const QString address = QStringLiteral("https://example.org/a  b?c=%20%25&d='$(id)'\\;#e");

std::optional<ProgramEntry> entry(const QByteArray& lines) {
    return readProgramEntry("[Desktop Entry]\nType=Application\n" + lines, QStringLiteral("/apps/x.desktop"));
}

QStringList commandOf(const QByteArray& exec, const QString& localPath = {}) {
    return programCommand(*entry("Name=My Browser\nIcon=globe\nExec=" + exec + "\n"), address, localPath);
}

using List = QStringList;

} // namespace

TEST(ProgramEntry, TheAddressIsOneArgumentCharacterForCharacter) {
    EXPECT_EQ(commandOf("browser %u"), (List{"browser", address}));
    EXPECT_EQ(commandOf("browser --new %U"), (List{"browser", "--new", address}));
    EXPECT_EQ(commandOf("browser --url=%u end"), (List{"browser", "--url=" + address, "end"}));
}

TEST(ProgramEntry, AProgramForFilesGetsThePathWhereThereIsOne) {
    EXPECT_EQ(commandOf("viewer %f", QStringLiteral("/a b")), (List{"viewer", "/a b"}));
    EXPECT_EQ(commandOf("viewer %F", QStringLiteral("/a b")), (List{"viewer", "/a b"}));
    EXPECT_EQ(commandOf("viewer %f"), (List{"viewer", address}));
    EXPECT_EQ(commandOf("viewer %u", QStringLiteral("/a b")), (List{"viewer", address}));
}

TEST(ProgramEntry, AProgramThatNamesNoAddressGetsItLast) {
    EXPECT_EQ(commandOf("browser --new"), (List{"browser", "--new", address}));
    EXPECT_EQ(commandOf("viewer", QStringLiteral("/a b")), (List{"viewer", "/a b"}));
}

TEST(ProgramEntry, TheOtherCodesStandForWhatTheyStandFor) {
    EXPECT_EQ(commandOf("browser %i %c %k %d %u"),
              (List{"browser", "--icon", "globe", "My Browser", "/apps/x.desktop", address}));
    EXPECT_EQ(commandOf("browser 100%% %u"), (List{"browser", "100%", address}));
}

TEST(ProgramEntry, QuotesHoldAnArgumentTogether) {
    EXPECT_EQ(commandOf(R"("/opt/my browser/run" "" "a\\"b\\$c\\\\d" %u)"),
              (List{"/opt/my browser/run", "", R"(a"b$c\d)", address}));
    EXPECT_EQ(commandOf("sh -c \"$(id) | cat > x; echo\" %u"),
              (List{"sh", "-c", "$(id) | cat > x; echo", address}));
}

TEST(ProgramEntry, SpacesBetweenArgumentsCountForNothing) {
    EXPECT_EQ(commandOf("  browser \t  --x   %u  "), (List{"browser", "--x", address}));
    EXPECT_EQ(commandOf("browser\\s--x %u"), (List{"browser", "--x", address}));
}

TEST(ProgramEntry, ABrokenCommandLineIsNone) {
    EXPECT_EQ(commandOf("\"browser %u"), List());
    EXPECT_EQ(commandOf("\\s"), List());
}

TEST(ProgramEntry, WhatCantBeStartedAsItIsIsNoProgram) {
    EXPECT_TRUE(entry("Exec=browser\n"));
    EXPECT_FALSE(entry("Name=No command\n"));
    EXPECT_FALSE(entry("Exec=browser\nHidden=true\n"));
    EXPECT_FALSE(entry("Exec=lynx\nTerminal=true\n"));
    EXPECT_TRUE(entry("Exec=browser\nNoDisplay=true\nHidden=false\nTerminal=false\n"));
    EXPECT_FALSE(readProgramEntry("[Desktop Action new]\nExec=browser\n", {}));
}
