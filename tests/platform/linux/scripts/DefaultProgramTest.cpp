#include "platform/linux/scripts/DefaultProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

const QString page = QStringLiteral("https://example.org/");

/// Folders of a user and of the system, with programs that are there in truth: their names are paths.
struct DefaultProgramTest : testing::Test {
    void write(const QString& path, const QByteArray& text) const {
        const auto whole = root.filePath(path);
        QDir().mkpath(whole.section(u'/', 0, -2));
        QFile file(whole);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    /// A program of that name with an entry below the data folder.
    void install(const QString& name, const QString& data = QStringLiteral("system"),
                 const QByteArray& more = {}) const {
        const auto program = root.filePath(QStringLiteral("bin/") + QString(name).replace(u'/', u'-'));
        write(program.mid(root.path().size() + 1), "#!/bin/true\n");
        QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        write(data + QStringLiteral("/applications/") + name + QStringLiteral(".desktop"),
              "[Desktop Entry]\nExec=" + program.toUtf8() + " %u\n" + more);
    }

    /// The name of the program that opens `location`, or why none does.
    [[nodiscard]] QString programFor(const QString& location) const {
        const auto command = defaultProgramCommand(location, folders);
        return command ? command->constFirst().section(u'/', -1) : QStringLiteral("none: ") + command.error();
    }

    QTemporaryDir root;
    ProgramFolders folders{
        .config = {root.filePath(QStringLiteral("config")), root.filePath(QStringLiteral("etc"))},
        .data = {root.filePath(QStringLiteral("data")), root.filePath(QStringLiteral("system"))},
        .desktops = {QStringLiteral("ubuntu"), QStringLiteral("GNOME")}};
};

constexpr auto choice = "[Default Applications]\nx-scheme-handler/https=";

} // namespace

TEST_F(DefaultProgramTest, TheUsersChoiceCountsFirst) {
    install(QStringLiteral("mine"));
    install(QStringLiteral("desktops"));
    install(QStringLiteral("systems"));
    write(QStringLiteral("system/applications/mimeapps.list"), QByteArray(choice) + "systems.desktop\n");
    EXPECT_EQ(programFor(page), QStringLiteral("systems"));
    write(QStringLiteral("etc/gnome-mimeapps.list"), QByteArray(choice) + "desktops.desktop\n");
    EXPECT_EQ(programFor(page), QStringLiteral("desktops"));
    write(QStringLiteral("config/mimeapps.list"), QByteArray(choice) + "mine.desktop;systems.desktop;\n");
    EXPECT_EQ(programFor(page), QStringLiteral("mine"));
}

TEST_F(DefaultProgramTest, AChoiceThatIsNotInstalledIsPassedOver) {
    install(QStringLiteral("second"));
    install(QStringLiteral("hidden"), QStringLiteral("system"), "Hidden=true\n");
    install(QStringLiteral("absent"), QStringLiteral("system"), "TryExec=/nonexistent/program\n");
    write(QStringLiteral("config/mimeapps.list"),
          QByteArray(choice) +
              "gone.desktop;hidden.desktop;absent.desktop;../second.desktop;second.desktop\n");
    EXPECT_EQ(programFor(page), QStringLiteral("second"));
}

TEST_F(DefaultProgramTest, AnEntryOfTheUserHidesTheSystems) {
    install(QStringLiteral("browser"));
    install(QStringLiteral("browser"), QStringLiteral("data"), "Hidden=true\n");
    write(QStringLiteral("config/mimeapps.list"), QByteArray(choice) + "browser.desktop\n");
    EXPECT_TRUE(programFor(page).startsWith(QStringLiteral("none: ")));
}

TEST_F(DefaultProgramTest, WithoutAChoiceAnyProgramThatCanIsTaken) {
    install(QStringLiteral("able"));
    install(QStringLiteral("added"));
    write(QStringLiteral("system/applications/mimeinfo.cache"),
          "[MIME Cache]\nx-scheme-handler/https=able.desktop;\n");
    EXPECT_EQ(programFor(page), QStringLiteral("able"));
    write(QStringLiteral("config/mimeapps.list"),
          "[Added Associations]\nx-scheme-handler/https=added.desktop;\n");
    EXPECT_EQ(programFor(page), QStringLiteral("added"));
}

TEST_F(DefaultProgramTest, AnAssociationThatTheUserRemovedIsNone) {
    install(QStringLiteral("able"));
    write(QStringLiteral("system/applications/mimeinfo.cache"),
          "[MIME Cache]\nx-scheme-handler/https=able.desktop;\n");
    write(QStringLiteral("config/mimeapps.list"),
          "[Removed Associations]\nx-scheme-handler/https=able.desktop;\n");
    EXPECT_TRUE(programFor(page).startsWith(QStringLiteral("none: ")));
}

TEST_F(DefaultProgramTest, ADashInANameMayBeAFolder) {
    install(QStringLiteral("kde/web/browser"));
    write(QStringLiteral("config/mimeapps.list"), QByteArray(choice) + "kde-web-browser.desktop\n");
    EXPECT_EQ(programFor(page), QStringLiteral("kde-web-browser"));
}

TEST_F(DefaultProgramTest, TheSchemeIsReadInAnyCaseAndGoesOutAsItCame) {
    install(QStringLiteral("browser"));
    write(QStringLiteral("config/mimeapps.list"), QByteArray(choice) + "browser.desktop\n");
    const auto location = QStringLiteral("HTTPS://Example.org/");
    EXPECT_EQ(defaultProgramCommand(location, folders)->constLast(), location);
}

TEST_F(DefaultProgramTest, AnAddressThatNoProgramKnowsIsAnError) {
    install(QStringLiteral("browser"));
    write(QStringLiteral("config/mimeapps.list"), QByteArray(choice) + "browser.desktop\n");
    for (const auto* location : {u"javascript:alert(1)", u"mailto:ann@example.org", u"data:text/html,x",
                                 u"example.org", u"/etc/passwd", u"", u":", u"//example.org", u"1a:b"}) {
        EXPECT_TRUE(programFor(QString::fromUtf16(location)).startsWith(QStringLiteral("none: ")))
            << programFor(QString::fromUtf16(location)).toStdString();
    }
}

TEST_F(DefaultProgramTest, AFileGoesToTheProgramForItsKind) {
    install(QStringLiteral("editor"));
    install(QStringLiteral("files"));
    write(QStringLiteral("config/mimeapps.list"),
          "[Default Applications]\ntext/plain=editor.desktop\ninode/directory=files.desktop\n");
    write(QStringLiteral("home/a note.txt"), "words");
    write(QStringLiteral("home/script.sh"), "#!/bin/sh\n");
    const auto home = QStringLiteral("file://") + root.filePath(QStringLiteral("home"));
    EXPECT_EQ(programFor(home + QStringLiteral("/a%20note.txt")), QStringLiteral("editor"));
    EXPECT_EQ(programFor(home + QStringLiteral("/script.sh")), QStringLiteral("editor")); // a kind of text
    EXPECT_EQ(programFor(home), QStringLiteral("files"));
    EXPECT_EQ(programFor(QStringLiteral("file://localhost") + home.mid(7)), QStringLiteral("files"));
    EXPECT_TRUE(
        programFor(QStringLiteral("file://elsewhere") + home.mid(7)).startsWith(QStringLiteral("none")));
    EXPECT_TRUE(programFor(home + QStringLiteral("/gone.txt")).startsWith(QStringLiteral("none: ")));
}

TEST(LocationScheme, IsTheNameBeforeTheColon) {
    EXPECT_EQ(locationScheme(QStringLiteral("https://x")), QStringLiteral("https"));
    EXPECT_EQ(locationScheme(QStringLiteral("MailTo:x")), QStringLiteral("mailto"));
    EXPECT_EQ(locationScheme(QStringLiteral("svn+ssh-2.0:")), QStringLiteral("svn+ssh-2.0"));
    for (const auto* text :
         {u"", u"https", u":x", u"2x:y", u"a b:c", u"a/b:c", u"ü:x", u" https:x", u"[:x"}) {
        EXPECT_EQ(locationScheme(QString::fromUtf16(text)), QString())
            << QString::fromUtf16(text).toStdString();
    }
}
