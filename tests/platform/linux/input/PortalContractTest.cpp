// The desktop's portal behind the contract: a portal of each trial's own, on a bus of our own. Once with a
// clipboard to paste from, and once without, where only what the layout has can be typed.
#include "EventPosterContract.h"
#include "PortalDouble.h"
#include "TestProgram.h"
#include "TestVariable.h"

#include "platform/DispatchQueue.h"
#include "platform/linux/input/ConsentMemory.h"
#include "platform/linux/input/PortalNames.h"
#include "platform/linux/input/RemoteDesktopPortal.h"
#include "platform/linux/input/TextLender.h"

#include <QCoreApplication>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <array>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <thread>

namespace brenvale {

namespace {

/// The main queue, on a thread of its own.
class TestMainQueue final : public DispatchQueue {
public:
    void async(Step step) override {
        const std::scoped_lock lock(mutex_);
        steps_.push_back(std::move(step));
        changed_.notify_all();
    }
    void asyncAfter(std::chrono::milliseconds /*delay*/, Step /*step*/) override {
        ADD_FAILURE() << "nobody has to wait on main";
    }

private:
    void run(const std::stop_token& stop) {
        std::unique_lock lock(mutex_);
        while (changed_.wait(lock, stop, [this] { return !steps_.empty(); })) {
            auto step = std::move(steps_.front());
            steps_.pop_front();
            lock.unlock();
            step();
            lock.lock();
        }
    }

    std::mutex mutex_;
    std::condition_variable_any changed_;
    std::deque<Step> steps_; ///< guarded by mutex_
    std::jthread thread_{[this](const std::stop_token& stop) {
        run(stop);
    }};
};

class TestLender final : public TextLender {
public:
    TestLender(DispatchQueue& main, TestClipboard& clipboard) : main_(main), clipboard_(clipboard) {}

    void lend(const QString& text, std::move_only_function<void(bool)> lent) override {
        main_.async([this, text, lent = std::move(lent)]() mutable {
            clipboard_.put(text);
            lent(true);
        });
    }
    void giveBack() override { clipboard_.put(QStringLiteral("the user's own")); }

private:
    DispatchQueue& main_;
    TestClipboard& clipboard_;
};

/// The session bus of all trials: the bus library remembers the first address that it finds.
class TestBus {
public:
    TestBus() {
        if (QStandardPaths::findExecutable(QStringLiteral("dbus-daemon")).isEmpty()) {
            return;
        }
        Announcement ready;
        program_.emplace(QStringLiteral("dbus-daemon"),
                         QStringList{QStringLiteral("--session"), QStringLiteral("--nofork"),
                                     QStringLiteral("--address=unix:dir=") + folder_.path(),
                                     QStringLiteral("--print-address=%1").arg(ready.descriptor())});
        address_ = ready.wait();
    }

    /// Empty where this machine has none.
    [[nodiscard]] QByteArray address() const { return address_; }
    [[nodiscard]] QByteArray folder() const { return folder_.path().toUtf8(); }

private:
    QTemporaryDir folder_;
    std::optional<TestProgram> program_;
    QByteArray address_;
};

/// Threads of Qt have no event loop without it.
void needApplication() {
    static int count = 1;
    static std::array name{'t', '\0'};
    static std::array<char*, 2> arguments{name.data(), nullptr};
    static const QCoreApplication application(count, arguments.data());
}

template <typename Condition>
void waitUntil(Condition condition) {
    constexpr int patience = 10'000;
    for (int tries = 0; !condition(); ++tries) {
        if (tries == patience) {
            ADD_FAILURE() << "what should come does not";
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

class PortalTrial final : public PosterTrial {
public:
    PortalTrial(const TestBus& bus, bool hasClipboard) : bus_(bus), hasClipboard_(hasClipboard) {
        EXPECT_TRUE(portal_.offer());
        portal_.moveToThread(&thread_);
        thread_.start();
        poster_ = std::make_unique<RemoteDesktopPortal>(main_, hasClipboard_ ? &lender_ : nullptr);
        waitUntil([this] { return poster_->canAsk(); });
        open();
    }

    ~PortalTrial() override {
        poster_.reset();
        thread_.quit();
        thread_.wait();
        QDBusConnection::disconnectFromBus(connectionName);
    }

    PortalTrial(const PortalTrial&) = delete;
    PortalTrial& operator=(const PortalTrial&) = delete;

    [[nodiscard]] EventPoster& poster() override { return *poster_; }
    [[nodiscard]] QStringList seenUntil(const QString& end) override { return seen_.seenUntil(end); }
    [[nodiscard]] bool typesAnyText() const override { return hasClipboard_; }

    [[nodiscard]] bool stall() override {
        portal_.standstill().lock();
        return true;
    }
    void resume() override { portal_.standstill().unlock(); }

    [[nodiscard]] bool forbid() override {
        const std::scoped_lock standing(portal_.standstill());
        closeSession();
        return true;
    }
    void allow() override { open(); }

    [[nodiscard]] RemoteDesktopPortal& portal() { return *poster_; }

    /// The portal's program ends, and the bus knows of none any more.
    void leaveTheBus() {
        QDBusConnection(connectionName).unregisterService(portalService);
        waitUntil([this] { return !poster_->canAsk(); });
    }

    /// While the portal stands still.
    void closeSession() {
        portal_.closeSession();
        waitUntil([this] { return !poster_->canMakeEvents(); });
    }

private:
    static inline const QString connectionName = QStringLiteral("portal of the tests");

    void open() {
        poster_->ask(InputConsent::Occasion::usersWish);
        waitUntil([this] { return poster_->canMakeEvents(); });
    }

    const TestBus& bus_;
    bool hasClipboard_;
    TestVariable address_{"DBUS_SESSION_BUS_ADDRESS", bus_.address()};
    TestVariable state_{"XDG_STATE_HOME", bus_.folder()};
    TestVariable noCompositor_{"WAYLAND_DISPLAY", "none"};
    SeenInput seen_;
    TestClipboard clipboard_;
    TestMainQueue main_;
    TestLender lender_{main_, clipboard_};
    PortalDouble portal_{QDBusConnection::connectToBus(QString::fromUtf8(bus_.address()), connectionName),
                         seen_, clipboard_};
    QThread thread_; ///< the portal's
    std::unique_ptr<RemoteDesktopPortal> poster_;
};

const TestBus& testBus() {
    needApplication();
    static const TestBus bus;
    return bus;
}

std::unique_ptr<PortalTrial> makePortalTrial(bool hasClipboard) {
    const auto& bus = testBus();
    return bus.address().isEmpty() ? nullptr : std::make_unique<PortalTrial>(bus, hasClipboard);
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Portal, EventPosterContract,
                         testing::Values(MakePosterTrial{"Portal", [] {
                                                             return makePortalTrial(true);
                                                         }}));
INSTANTIATE_TEST_SUITE_P(PortalWithoutAClipboard, EventPosterContract,
                         testing::Values(MakePosterTrial{"PortalWithoutAClipboard", [] {
                                                             return makePortalTrial(false);
                                                         }}));

TEST(RemoteDesktopPortal, LeavesTheBusAtItsEnd) {
    auto trial = makePortalTrial(true);
    if (!trial) {
        GTEST_SKIP() << "this machine has no bus";
    }
    const auto name = QStringLiteral("brenvale-input");
    EXPECT_TRUE(QDBusConnection(name).isConnected());
    trial.reset();
    EXPECT_FALSE(QDBusConnection(name).isConnected()) << "the desktop ends the session with the connection";
}

TEST(RemoteDesktopPortal, WhatWaitsWhenTheSessionEndsIsGone) {
    auto trial = makePortalTrial(true);
    if (!trial) {
        GTEST_SKIP() << "this machine has no bus";
    }
    const auto press = [&trial](quint16 key) {
        trial->poster().post(KeyEvent{.keyCode = key, .isDown = true});
        trial->poster().post(KeyEvent{.keyCode = key});
    };
    constexpr quint16 leftKey = 123;
    constexpr quint16 rightKey = 124;
    ASSERT_TRUE(trial->stall());
    press(leftKey);
    trial->closeSession();
    trial->resume();
    trial->allow();
    press(rightKey);
    EXPECT_THAT(trial->seenUntil(QStringLiteral("up Right")), testing::ElementsAre("down Right", "up Right"));
}

/// A bus and a state folder.
struct WithoutAPortal : testing::Test {
    void SetUp() override {
        if (testBus().address().isEmpty()) {
            GTEST_SKIP() << "this machine has no bus";
        }
    }

    QTemporaryDir folder;
    TestVariable address{"DBUS_SESSION_BUS_ADDRESS", testBus().address()};
    TestVariable state{"XDG_STATE_HOME", folder.path().toUtf8()};
    TestMainQueue main;
};

TEST_F(WithoutAPortal, ItIsSoonCertainThatThereIsNobodyToAsk) {
    const RemoteDesktopPortal portal(main, nullptr);
    waitUntil([&] { return portal.hasNobodyToAsk(); });
    EXPECT_FALSE(portal.canAsk());
}

TEST_F(WithoutAPortal, WithoutABusTooThereIsNobodyToAsk) {
    const TestVariable noBus{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere"};
    const RemoteDesktopPortal portal(main, nullptr);
    waitUntil([&] { return portal.hasNobodyToAsk(); });
}

TEST_F(WithoutAPortal, ARefusalStands) {
    ConsentMemory::keepRefusal(true);
    std::atomic<int> calls = 0;
    Subscription subscription;
    {
        RemoteDesktopPortal portal(main, nullptr);
        main.async([&] { subscription = portal.observe([&calls] { ++calls; }); });
        waitUntil([&] { return calls == 2; }); // the first comes at once, the next when there is none
        EXPECT_FALSE(portal.hasNobodyToAsk());
    }
    main.async([&] {
        subscription.reset();
        ++calls;
    });
    waitUntil([&] { return calls == 3; });
}

TEST(RemoteDesktopPortal, WhereThereIsOneOrWasOneNobodyGoesAroundIt) {
    auto trial = makePortalTrial(true);
    if (!trial) {
        GTEST_SKIP() << "this machine has no bus";
    }
    EXPECT_FALSE(trial->portal().hasNobodyToAsk());
    trial->leaveTheBus();
    trial->portal().ask(InputConsent::Occasion::usersWish); // looks for it again, and the bus knows of none
    std::this_thread::sleep_for(
        std::chrono::milliseconds(200)); // nothing tells of an answer that changes nothing
    EXPECT_FALSE(trial->portal().hasNobodyToAsk());
}

} // namespace brenvale
