#include "platform/Script.h"

#include <gmock/gmock.h>

using namespace brenvale;

namespace {

QString opening(const QString& location) {
    return QStringLiteral("open location \"") + location + u'"';
}

std::optional<QString> locationOf(const QString& source) {
    const auto script = readScript(source);
    const auto* location = script ? std::get_if<OpenLocation>(&*script) : nullptr;
    return location == nullptr ? std::nullopt : std::optional(location->location);
}

bool isRefused(const QString& source) {
    const auto script = readScript(source);
    return !script && !script.error().isEmpty();
}

const QString louder =
    QStringLiteral("set volume output volume (output volume of (get volume settings) + 5)");
const QString quieter =
    QStringLiteral("set volume output volume (output volume of (get volume settings) - 5)");
const QString emptying = QStringLiteral("tell application \"Finder\" to empty trash");
const QString locking = QStringLiteral("tell application \"System Events\" to lock screen");
const QString sleeping = QStringLiteral("tell application \"System Events\" to sleep");

} // namespace

TEST(Script, TheVolumeChangesByTheTermGiven) {
    EXPECT_EQ(readScript(louder), Script(ChangeOutputVolume{5}));
    EXPECT_EQ(readScript(quieter), Script(ChangeOutputVolume{-5}));
}

TEST(Script, TheFixedFormsAreKnown) {
    EXPECT_EQ(readScript(emptying), Script(EmptyTrash{}));
    EXPECT_EQ(readScript(locking), Script(LockScreen{}));
    EXPECT_EQ(readScript(sleeping), Script(Sleep{}));
}

TEST(Script, ALocationIsTakenCharacterForCharacter) {
    for (const auto* location : {u"https://example.org/", u"https://example.org/a b?c=%20%25&d=1#e+f",
                                 u"http://[2001:db8::1]:8080/", u"mailto:ann@example.org?subject=Hi%20there",
                                 u" padded ", u"no-scheme", u"https://example.org/\\n\\", u"a\nb\tc\r",
                                 u"$(id) `id` ; & | ' %u %s", u"https://пример.рф/ü/😀"}) {
        const QString text = QString::fromUtf16(location);
        EXPECT_EQ(locationOf(opening(text)), text);
    }
}

TEST(Script, ALocationMayBeLong) {
    const auto location = QStringLiteral("https://example.org/?q=") + QString(1'000'000, u'x');
    EXPECT_EQ(locationOf(opening(location)), location);
}

TEST(Script, AQuoteInALocationIsRefused) {
    EXPECT_TRUE(isRefused(opening(QStringLiteral("https://example.org/\""))));
    EXPECT_TRUE(isRefused(opening(QStringLiteral("\"https://example.org/"))));
    EXPECT_TRUE(isRefused(opening(QStringLiteral("https://example.org/\\\"x"))));
    EXPECT_TRUE(isRefused(opening(QStringLiteral("x\"\ndo shell script \"id"))));
    EXPECT_TRUE(isRefused(opening(QStringLiteral("\""))));
}

TEST(Script, ALocationThatNoProgramCanBeGivenIsRefused) {
    EXPECT_TRUE(isRefused(opening({})));
    EXPECT_TRUE(isRefused(opening(QStringLiteral("a") + QChar(0) + u'b')));
    EXPECT_TRUE(isRefused(opening(QStringLiteral("a") + QChar(0xd800))));
    EXPECT_TRUE(isRefused(opening(QChar(0xdc00) + QStringLiteral("a"))));
}

TEST(Script, ASourceThatEndsEarlyIsRefused) {
    for (const auto& source :
         {louder, quieter, emptying, locking, sleeping, opening(QStringLiteral("https://example.org/"))}) {
        for (qsizetype length = 0; length < source.size(); ++length) {
            EXPECT_TRUE(isRefused(source.first(length))) << source.first(length).toStdString();
        }
    }
}

TEST(Script, AnythingBeforeOrBehindIsRefused) {
    for (const auto& source :
         {louder, quieter, emptying, locking, sleeping, opening(QStringLiteral("https://example.org/"))}) {
        for (const auto* more : {u" ", u"\n", u"\"", u"x", u"\ndo shell script \"id\"", u" -- note"}) {
            EXPECT_TRUE(isRefused(source + QString::fromUtf16(more))) << source.toStdString();
            EXPECT_TRUE(isRefused(QString::fromUtf16(more) + source)) << source.toStdString();
        }
        EXPECT_TRUE(isRefused(source + QChar(0)));
        EXPECT_TRUE(isRefused(source + u'\n' + source));
    }
}

TEST(Script, AnythingElseIsRefused) {
    for (const auto* source :
         {u"", u"set volume output volume 50",
          u"SET VOLUME OUTPUT VOLUME (output volume of (get volume settings) + 5)",
          u"set volume output volume (output volume of (get volume settings) + 6)",
          u"set volume output volume (output volume of (get volume settings) + 50)",
          u"set volume output volume (output volume of (get volume settings) +  5)",
          u"tell application \"Finder\" to sleep", u"tell application \"System Events\" to empty trash",
          u"tell application \"System Events\" to restart", u"do shell script \"id\"",
          u"open location https://example.org/", u"open  location \"https://example.org/\"",
          u"Open Location \"https://example.org/\"", u"open location \u201chttps://example.org/\u201d"}) {
        EXPECT_TRUE(isRefused(QString::fromUtf16(source))) << QString::fromUtf16(source).toStdString();
    }
}
