#include "theme/IconThemeFiles.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace brenvale;

namespace {

struct IconThemeFiles : testing::Test {
    void write(const QString& path, const QByteArray& text) const {
        const QFileInfo info(folder.filePath(path));
        ASSERT_TRUE(QDir().mkpath(info.path()));
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    void writeTheme(const QString& name, const QByteArray& parents) const {
        write(name + QStringLiteral("/index.theme"),
              "[Icon Theme]\nInherits=" + parents +
                  "\nDirectories=16,22,48,symbolic\n[16]\nSize=16\n[22]\nSize=22\n[48]\nSize=48\n[symbolic]"
                  "\nSize=16\n");
    }

    [[nodiscard]] QString fileOf(const char* name, int size = 22) const {
        const auto file = iconThemeFile(QString::fromUtf8(name), size,
                                        {QStringLiteral("desk"), QStringLiteral("last")}, {folder.path()});
        return file.isEmpty() ? file : QDir(folder.path()).relativeFilePath(file);
    }

    QTemporaryDir folder;
    QByteArray plain = R"(<svg fill="currentColor"/>)";
    QByteArray picture = R"(<svg fill="#ff0000"/>)";
};

} // namespace

TEST_F(IconThemeFiles, TheDrawingForTheSizeIsTaken) {
    writeTheme(QStringLiteral("desk"), "");
    write(QStringLiteral("desk/16/a.svg"), plain);
    write(QStringLiteral("desk/22/a.svg"), plain);
    EXPECT_EQ(fileOf("a", 22), QStringLiteral("desk/22/a.svg"));
    EXPECT_EQ(fileOf("a", 16), QStringLiteral("desk/16/a.svg"));
}

TEST_F(IconThemeFiles, PicturesAreNoSymbols) {
    writeTheme(QStringLiteral("desk"), "");
    writeTheme(QStringLiteral("last"), "");
    write(QStringLiteral("desk/22/a.svg"), picture);
    write(QStringLiteral("desk/48/a.svg"), plain);
    write(QStringLiteral("last/22/a.svg"), plain);
    EXPECT_EQ(fileOf("a"), QStringLiteral("last/22/a.svg"));
    write(QStringLiteral("desk/symbolic/a-symbolic.svg"), picture);
    EXPECT_EQ(fileOf("a"), QStringLiteral("desk/symbolic/a-symbolic.svg"));
}

TEST_F(IconThemeFiles, AThemeHasWhatItsParentsHave) {
    writeTheme(QStringLiteral("desk"), "parent");
    writeTheme(QStringLiteral("parent"), "desk");
    writeTheme(QStringLiteral("last"), "");
    write(QStringLiteral("parent/16/a.svg"), plain);
    write(QStringLiteral("last/22/a.svg"), plain);
    EXPECT_EQ(fileOf("a"), QStringLiteral("parent/16/a.svg"));
}

TEST_F(IconThemeFiles, WhatNoThemeHasIsEmpty) {
    writeTheme(QStringLiteral("desk"), "");
    EXPECT_EQ(fileOf("a"), QString());
}

TEST_F(IconThemeFiles, ThemesThatHaveAllSymbolsDrawThem) {
    writeTheme(QStringLiteral("whole"), "");
    writeTheme(QStringLiteral("heir"), "whole");
    for (const auto& name : symbolNames()) {
        write(QStringLiteral("whole/22/%1.svg").arg(name), "<svg fill='currentColor'/>");
    }
    const auto handOf = [this](const char* theme) {
        return themeOfOneHand(QString::fromUtf8(theme), {folder.path()}).toStdString();
    };
    EXPECT_EQ(handOf("whole"), "whole");
    EXPECT_EQ(handOf("heir"), "breeze") << "what it inherits is another's hand";
    QFile::remove(folder.filePath(QStringLiteral("whole/22/go-home.svg")));
    EXPECT_EQ(handOf("whole"), "breeze") << "never a mixture";
    EXPECT_EQ(handOf("none"), "breeze");
    EXPECT_EQ(handOf("breeze-dark"), "breeze");
}
