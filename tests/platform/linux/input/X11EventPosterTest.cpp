#include "X11Trial.h"

#include "platform/linux/input/X11Display.h"
#include "platform/linux/input/X11EventPoster.h"

using namespace brenvale;

namespace {

class X11Trial final : public PosterTrial {
public:
    [[nodiscard]] static std::unique_ptr<PosterTrial> make() {
        auto server = std::make_unique<TestXServer>();
        return server->isThere() ? std::unique_ptr<PosterTrial>(new X11Trial(std::move(server))) // NOLINT
                                 : nullptr;
    }

    [[nodiscard]] EventPoster& poster() override { return poster_; }
    [[nodiscard]] QStringList seenUntil(const QString& end) override { return witness_.seenUntil(end); }
    [[nodiscard]] bool stall() override {
        server_->stop();
        return true;
    }
    void resume() override { server_->goOn(); }

private:
    explicit X11Trial(std::unique_ptr<TestXServer> server) : server_(std::move(server)) {}

    std::unique_ptr<TestXServer> server_;
    X11Witness witness_;
    X11EventPoster poster_;
};

/// An X server with a layout of its own and somebody who writes down what comes.
class X11EventPosterTest : public testing::Test {
protected:
    void SetUp() override {
        if (!server_.isThere()) {
            GTEST_SKIP() << "this machine has no Xvfb";
        }
    }

    static void setLayout(const QString& layout, const QString& variant = {}) {
        (void)TestXServer::run(QStringLiteral("setxkbmap"), {layout, QStringLiteral("-variant"), variant});
    }

    static QString layoutOfServer() {
        return TestXServer::run(QStringLiteral("xkbcomp"),
                                {qEnvironmentVariable("DISPLAY"), QStringLiteral("-")});
    }

    /// Whether the server has the layout again soon.
    static bool comesBack(const QString& layout) {
        for (int tries = 0; tries < 500; ++tries) {
            if (layoutOfServer() == layout) {
                return true;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
        }
        return false;
    }

    void waitForFirstKey() {
        for (int tries = 0; tries < 5000 && witness_->lines().isEmpty(); ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
        }
    }

    static void doTool(const QStringList& words) { (void)TestXServer::run(QStringLiteral("xdotool"), words); }

    /// What reached the program as text, after `text` was typed.
    QString typed(const QString& text) {
        poster_->post(KeyEvent{.isDown = true, .text = text});
        poster_->post(KeyEvent{});
        poster_->post(KeyEvent{.keyCode = 53, .isDown = true});
        poster_->post(KeyEvent{.keyCode = 53});
        QString all;
        for (const auto& line : witness_->seenUntil(QStringLiteral("up Escape"))) {
            if (line.startsWith(QStringLiteral("text "))) {
                all += QStringView(line).sliced(5);
            } else if (line == u"down Return") {
                all += u'\n';
            }
        }
        return all;
    }

    void start() {
        witness_ = std::make_unique<X11Witness>();
        poster_ = std::make_unique<X11EventPoster>();
    }

    TestXServer server_;
    std::unique_ptr<X11Witness> witness_;
    std::unique_ptr<X11EventPoster> poster_;
};

const QString anyText =
    QStringLiteral("Hello, Wörld! {[(@)]} ~`^'\" Ελλάδα Привет مرحبا שלום 漢字 👩\u200d👩\u200d👧 "
                   "e\u0301 ﬁ € ñÑ äÄ éÉ ß\nnext");

} // namespace

INSTANTIATE_TEST_SUITE_P(X11, EventPosterContract, testing::Values(MakePosterTrial{"X11", X11Trial::make}));

TEST_F(X11EventPosterTest, EachLayoutTypesAnyText) {
    for (const auto* layout : {"us", "de", "fr", "us,ru", "ru,us", "gr", "dvorak"}) {
        setLayout(QString::fromLatin1(layout));
        start();
        EXPECT_EQ(typed(anyText), anyText) << layout;
    }
}

TEST_F(X11EventPosterTest, TheSecondGroupOfALayoutTypesAnyTextAndStays) {
    setLayout(QStringLiteral("us,ru"));
    start();
    const auto display = X11Display::open();
    ASSERT_NE(display, nullptr);
    display->lockGroup(1);
    const auto text = QStringLiteral("Привет, hello, Привет! 漢字");
    EXPECT_EQ(typed(text), text);
    poster_.reset();
    EXPECT_EQ(display->keyboardState()->lockedGroup, 1);
    EXPECT_EQ(display->keyboardState()->lockedModifiers, 0U);
}

TEST_F(X11EventPosterTest, TheNextStartTakesBackWhatOneLeftThatWasKilledInTheMiddle) {
    const auto before = layoutOfServer();
    witness_ = std::make_unique<X11Witness>();
    QString text;
    for (char16_t character = 0x4e00; character < 0x6000; ++character) {
        text += character;
    }
    TestProgram killed(QStringLiteral(POST_EVENTS), {}, "text \"" + text.toUtf8() + "\"\nstay\n");
    waitForFirstKey();
    killed.end();
    EXPECT_NE(layoutOfServer(), before);
    poster_ = std::make_unique<X11EventPoster>();
    EXPECT_TRUE(comesBack(before));
    EXPECT_TRUE(typed(QStringLiteral(" and on")).endsWith(QStringLiteral(" and on")));
}

TEST_F(X11EventPosterTest, CapsLockAndNumLockChangeNothing) {
    for (const auto* layout : {"us", "de", "fr"}) {
        setLayout(QString::fromLatin1(layout));
        start();
        doTool({QStringLiteral("key"), QStringLiteral("Caps_Lock"), QStringLiteral("Num_Lock")});
        EXPECT_EQ(typed(anyText), anyText) << layout;
        doTool({QStringLiteral("key"), QStringLiteral("Caps_Lock"), QStringLiteral("Num_Lock")});
    }
}

TEST_F(X11EventPosterTest, AHeldShiftOfTheUserChangesNoCharacter) {
    setLayout(QStringLiteral("us"));
    start();
    doTool({QStringLiteral("keydown"), QStringLiteral("Shift_L")});
    poster_->post(KeyEvent{.isDown = true, .text = QStringLiteral("lower UPPER 1!")});
    poster_->post(KeyEvent{.keyCode = 123, .isDown = true});
    poster_->post(KeyEvent{.keyCode = 123});
    const auto lines = witness_->seenUntil(QStringLiteral("up Left shift"));
    EXPECT_EQ(lines, QStringList({QStringLiteral("text lower UPPER 1!"), QStringLiteral("down Left shift"),
                                  QStringLiteral("up Left shift")}))
        << "and it is still the user's";
    doTool({QStringLiteral("keyup"), QStringLiteral("Shift_L")});
}

TEST_F(X11EventPosterTest, AModifierThatTheUserHoldsIsNotReleased) {
    start();
    doTool({QStringLiteral("keydown"), QStringLiteral("Control_L")});
    poster_->post(KeyEvent{.keyCode = 123, .flags = 0x40000, .isDown = true});
    poster_->post(KeyEvent{.keyCode = 123, .flags = 0x40000});
    EXPECT_EQ(witness_->seenUntil(QStringLiteral("up Left ctrl")),
              QStringList({QStringLiteral("down Control"), QStringLiteral("down Left ctrl"),
                           QStringLiteral("up Left ctrl")}));
    doTool({QStringLiteral("keyup"), QStringLiteral("Control_L")});
}

TEST_F(X11EventPosterTest, UnderAHeldControlNoTextIsTyped) {
    start();
    doTool({QStringLiteral("keydown"), QStringLiteral("Control_L")});
    poster_->post(KeyEvent{.isDown = true, .text = QStringLiteral("wq")});
    poster_->post(KeyEvent{.keyCode = 53, .isDown = true});
    poster_->post(KeyEvent{.keyCode = 53});
    EXPECT_EQ(witness_->seenUntil(QStringLiteral("up Escape ctrl")),
              QStringList({QStringLiteral("down Control"), QStringLiteral("down Escape ctrl"),
                           QStringLiteral("up Escape ctrl")}));
    doTool({QStringLiteral("keyup"), QStringLiteral("Control_L")});
}

TEST_F(X11EventPosterTest, AControlThatIsHeldForAMomentStopsATextThatGoesOnThen) {
    constexpr qsizetype length = 20'000;
    start();
    poster_->post(KeyEvent{.isDown = true, .text = QString(length, u'x')});
    poster_->post(KeyEvent{.keyCode = 53, .isDown = true});
    poster_->post(KeyEvent{.keyCode = 53});
    waitForFirstKey();
    doTool({QStringLiteral("keydown"), QStringLiteral("Control_L"), QStringLiteral("sleep"),
            QStringLiteral("0.3"), QStringLiteral("keyup"), QStringLiteral("Control_L")});
    QString all;
    qsizetype underControl = 0;
    bool isHeld = false;
    for (const auto& line : witness_->seenUntil(QStringLiteral("up Escape"))) {
        isHeld = line == QStringLiteral("down Control") || (isHeld && line != QStringLiteral("up Control"));
        if (line.startsWith(QStringLiteral("text "))) {
            all += line.mid(5);
            underControl += isHeld ? line.size() - 5 : 0;
        }
    }
    EXPECT_EQ(all.size(), length);
    EXPECT_LE(underControl, 8) << "what was under way";
}

TEST_F(X11EventPosterTest, EndedInTheMiddleOfATextItLeavesTheLayoutAsBefore) {
    setLayout(QStringLiteral("us,ru"));
    start();
    const auto before = layoutOfServer();
    QString text;
    for (char16_t character = 0x4e00; character < 0x5000; ++character) {
        text += character;
    }
    poster_->post(KeyEvent{.isDown = true, .text = text});
    waitForFirstKey();
    EXPECT_NE(layoutOfServer(), before);
    poster_->end();
    EXPECT_EQ(layoutOfServer(), before);
    EXPECT_FALSE(poster_->canMakeEvents());
    poster_->end();
}

TEST_F(X11EventPosterTest, TheLayoutIsAsBeforeOnceThePosterIsGone) {
    for (const auto* layout : {"us", "de", "us,ru"}) {
        setLayout(QString::fromLatin1(layout));
        start();
        const auto before = layoutOfServer();
        EXPECT_EQ(typed(anyText), anyText);
        EXPECT_NE(layoutOfServer(), before) << "characters that the layout lacks have keys for a while";
        poster_.reset();
        EXPECT_EQ(layoutOfServer(), before) << layout;
    }
}

TEST_F(X11EventPosterTest, TheLayoutIsAsBeforeAMomentAfterTheText) {
    start();
    const auto before = layoutOfServer();
    EXPECT_EQ(typed(anyText), anyText);
    EXPECT_TRUE(comesBack(before));
}

TEST_F(X11EventPosterTest, AKeyThatTheLayoutLacksIsLentOne) {
    const auto layout = layoutOfServer();
    const auto changed =
        QString(layout).replace(QStringLiteral("XF86AudioPlay"), QStringLiteral("XF86AudioMedia"));
    (void)TestProgram(QStringLiteral("xkbcomp"),
                      {QStringLiteral("-w0"), QStringLiteral("-"), qEnvironmentVariable("DISPLAY")},
                      changed.toUtf8())
        .output();
    start();
    for (const qint64 word : {0xa00, 0xb00}) {
        poster_->post(SystemDefinedEvent{.subtype = 8, .data1 = 16 << 16 | word, .data2 = -1});
    }
    EXPECT_EQ(witness_->seenUntil(QStringLiteral("up system16")),
              QStringList({QStringLiteral("down system16"), QStringLiteral("up system16")}));
}

TEST_F(X11EventPosterTest, ALayoutThatChangesBetweenTwoTextsIsFollowed) {
    start();
    for (const auto* layout : {"de", "us", "fr", "us,ru"}) {
        setLayout(QString::fromLatin1(layout));
        witness_.reset();
        witness_ = std::make_unique<X11Witness>(); // which has not seen the end of an earlier text
        EXPECT_EQ(typed(anyText), anyText) << layout;
    }
}

TEST_F(X11EventPosterTest, AServerThatGoesAwayTakesTheTrustAlong) {
    start();
    EXPECT_EQ(typed(QStringLiteral("a")), QStringLiteral("a"));
    EXPECT_TRUE(poster_->canMakeEvents());
    server_.kill();
    for (int tries = 0; tries < 5000 && poster_->canMakeEvents(); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_FALSE(poster_->canMakeEvents());
    poster_->post(KeyEvent{.isDown = true, .text = QStringLiteral("into the void")});
    poster_.reset();
    witness_.reset();
}

TEST_F(X11EventPosterTest, AServerThatHangsDoesNotHoldUpTheEnd) {
    start();
    EXPECT_EQ(typed(QStringLiteral("a")), QStringLiteral("a"));
    server_.stop();
    poster_->post(KeyEvent{.isDown = true, .text = anyText});
    poster_.reset();
    server_.goOn();
}

TEST(X11EventPoster, WithoutAServerNothingCanBePosted) {
    const auto before = qgetenv("DISPLAY");
    qputenv("DISPLAY", ":4711");
    const X11EventPoster poster;
    for (int tries = 0; tries < 5000 && poster.canMakeEvents(); ++tries) {
        std::this_thread::sleep_for(std::chrono::milliseconds(2));
    }
    EXPECT_FALSE(poster.canMakeEvents());
    qputenv("DISPLAY", before);
}
