#include "platform/linux/input/UinputEventPoster.h"

#include "fakes/FakeConsent.h"

#include <gmock/gmock.h>

#include <condition_variable>
#include <mutex>

#include <linux/uinput.h>

using namespace brenvale;
using testing::ElementsAre;
using testing::ElementsAreArray;

namespace {

/// What the kernel is asked, in words. Outlives the poster that owns the calls.
class Record {
public:
    void add(const QString& line) {
        const std::scoped_lock lock(mutex_);
        lines_ << line;
        changed_.notify_all();
    }

    /// All lines from the first event on, once the last is `end`.
    QStringList eventsUntil(const QString& end) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, std::chrono::seconds(20),
                          [&] { return !lines_.isEmpty() && lines_.last() == end; });
        return lines_.sliced(lines_.lastIndexOf(QStringLiteral("create")) + 1);
    }

    void waitFor(const QString& line) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, std::chrono::seconds(20), [&] { return lines_.contains(line); });
    }

    QStringList lines() {
        const std::scoped_lock lock(mutex_);
        return lines_;
    }

private:
    std::mutex mutex_;
    std::condition_variable changed_;
    QStringList lines_;
};

QString nameOf(unsigned long request, std::uintptr_t argument) {
    const auto number = QString::number(argument);
    switch (request) {
    case UI_SET_EVBIT:
        return QStringLiteral("type ") + number;
    case UI_SET_KEYBIT:
        return QStringLiteral("key ") + number;
    case UI_SET_RELBIT:
        return QStringLiteral("axis ") + number;
    case UI_DEV_SETUP:
        return QStringLiteral("setup ") +
               QString::fromLatin1(
                   reinterpret_cast<uinput_setup*>(argument)->name); // NOLINT: as ioctl takes it
    case UI_DEV_CREATE:
        return QStringLiteral("create");
    case UI_DEV_DESTROY:
        return QStringLiteral("destroy");
    default:
        return QStringLiteral("unknown");
    }
}

class RecordingKernel final : public KernelInput {
public:
    explicit RecordingKernel(Record& record) : record_(record) {}

    bool open() override {
        record_.add(QStringLiteral("open"));
        return canOpen;
    }
    bool control(unsigned long request, std::uintptr_t argument) override {
        record_.add(nameOf(request, argument));
        return refused != request;
    }
    bool write(std::span<const input_event> events) override {
        isBusy_ = busyFor > 0;
        if (isBusy_) {
            --busyFor;
            return false;
        }
        QStringList words;
        for (const auto& event : events) {
            words << QStringLiteral("%1:%2:%3").arg(event.type).arg(event.code).arg(event.value);
        }
        record_.add(words.join(u' '));
        return canWrite;
    }
    [[nodiscard]] bool isBusy() const override { return isBusy_; }
    void close() override { record_.add(QStringLiteral("close")); }

    bool canOpen = true;
    bool canWrite = true;
    int busyFor = 0; ///< so many events are not taken
    unsigned long refused = 0;

private:
    Record& record_;
    bool isBusy_ = false;
};

struct Uinput : testing::Test {
    Record record;
    std::unique_ptr<RecordingKernel> kernel = std::make_unique<RecordingKernel>(record);
};

QString key(int code, int value) {
    return QStringLiteral("1:%1:%2 0:0:0").arg(code).arg(value);
}

QStringList presses(const QList<int>& codes) {
    QStringList lines;
    for (const int code : codes) {
        lines << key(code, 1) << key(code, 0);
    }
    return lines;
}

} // namespace

TEST_F(Uinput, SaysWhatTheDeviceCanBeforeItIsMade) {
    {
        UinputDevice device(*kernel);
        EXPECT_TRUE(device.create());
    }
    const auto lines = record.lines();
    EXPECT_THAT(lines.first(5), ElementsAre("open", "type 1", "type 2", "axis 0", "axis 1"));
    EXPECT_TRUE(lines.contains(QStringLiteral("key 272")) && lines.contains(QStringLiteral("key 164")));
    EXPECT_THAT(lines.last(4), ElementsAre("setup Brenvale", "create", "destroy", "close"));
}

TEST_F(Uinput, AKernelThatRefusesLeavesNothingOpen) {
    for (const auto request :
         std::initializer_list<unsigned long>{UI_SET_EVBIT, UI_SET_KEYBIT, UI_DEV_SETUP, UI_DEV_CREATE}) {
        kernel->refused = request;
        {
            UinputDevice device(*kernel);
            EXPECT_FALSE(device.create());
        }
        EXPECT_EQ(record.lines().last(), QStringLiteral("close"));
        EXPECT_FALSE(record.lines().contains(QStringLiteral("destroy")));
    }
}

TEST_F(Uinput, AFileThatCannotBeOpenedMakesNoEvents) {
    kernel->canOpen = false;
    const UinputEventPoster poster(std::move(kernel));
    EXPECT_FALSE(poster.canMakeEvents());
    EXPECT_THAT(record.lines(), ElementsAre("open"));
}

TEST_F(Uinput, WorksWhereTheUserMightBeAskedOnlyOnceNobodyCanBe) {
    FakeConsent consent;
    UinputEventPoster poster(std::move(kernel), &consent);
    for (const bool hasDialog : {true, false}) {
        consent.hasDialog = hasDialog;
        EXPECT_FALSE(poster.canMakeEvents());
        poster.post(MouseEvent{.type = MouseEvent::Type::leftDown});
        poster.post(KeyEvent{.keyCode = 123, .isDown = true});
        poster.post(SystemDefinedEvent{.subtype = 8, .data1 = 0xa00});
    }
    consent.isNone = true;
    EXPECT_TRUE(poster.canMakeEvents());
    poster.post(KeyEvent{.keyCode = 124, .isDown = true});
    EXPECT_THAT(record.eventsUntil(key(KEY_RIGHT, 1)), ElementsAre(key(KEY_RIGHT, 1))) << "the rest is gone";
}

TEST_F(Uinput, ThereIsNoDeviceUntilSomebodyPosts) {
    const UinputEventPoster poster(std::move(kernel));
    EXPECT_TRUE(poster.canMakeEvents());
    EXPECT_THAT(record.lines(), ElementsAre("open", "close"));
}

TEST_F(Uinput, HoldsTheModifiersOnTheOneKey) {
    UinputEventPoster poster(std::move(kernel));
    poster.post(KeyEvent{.keyCode = 123, .flags = 0x120000, .isDown = true});
    poster.post(KeyEvent{.keyCode = 123, .flags = 0x120000, .isDown = false});
    const QStringList expected{key(42, 1), key(125, 1), key(105, 1), key(105, 0), key(125, 0), key(42, 0)};
    EXPECT_THAT(record.eventsUntil(key(42, 0)), ElementsAreArray(expected));
}

TEST_F(Uinput, PressesSystemKeysAndTypesWhatAUsKeyboardHas) {
    UinputEventPoster poster(std::move(kernel));
    poster.post(SystemDefinedEvent{.subtype = 8, .data1 = 0x100a00});
    poster.post(SystemDefinedEvent{.subtype = 8, .data1 = 0x100b00});
    poster.post(KeyEvent{.isDown = true, .text = QStringLiteral("aäB\n")});
    const auto expected = presses({164, 30}) + QStringList{key(42, 1)} + presses({48}) +
                          QStringList{key(42, 0)} + presses({28});
    EXPECT_THAT(record.eventsUntil(key(28, 0)), ElementsAreArray(expected));
}

TEST_F(Uinput, CarriesTheFractionsOfMoves) {
    UinputEventPoster poster(std::move(kernel));
    const auto moveBy = [&poster](double dx, double dy) {
        poster.post(MouseEvent{.type = MouseEvent::Type::moved,
                               .position = poster.pointerLocation() + QPointF(dx, dy)});
    };
    moveBy(0.5, -7.5);
    moveBy(0.5, 0.5);
    poster.post(MouseEvent{.type = MouseEvent::Type::rightDown, .position = {}, .button = 1});
    poster.post(MouseEvent{.type = MouseEvent::Type::rightUp, .position = {}, .button = 1});
    EXPECT_THAT(record.eventsUntil(key(273, 0)),
                ElementsAre("2:1:-7 0:0:0", "2:0:1 0:0:0", key(273, 1), key(273, 0)));
}

TEST_F(Uinput, AKernelThatIsBusyGetsTheEventAgain) {
    kernel->busyFor = 3;
    UinputEventPoster poster(std::move(kernel));
    poster.post(KeyEvent{.keyCode = 123, .isDown = true});
    poster.post(KeyEvent{.keyCode = 123, .isDown = false});
    EXPECT_THAT(record.eventsUntil(key(105, 0)), ElementsAreArray(presses({105})));
    EXPECT_TRUE(poster.canMakeEvents());
}

TEST_F(Uinput, ThePointerMovesOnDuringALongText) {
    UinputEventPoster poster(std::move(kernel));
    poster.post(KeyEvent{.isDown = true, .text = QString(1'000, u'a')});
    record.waitFor(key(30, 0));
    std::jthread([&poster] {
        poster.post(MouseEvent{.type = MouseEvent::Type::moved,
                               .position = poster.pointerLocation() + QPointF(5, 0)});
    }).join();
    poster.post(KeyEvent{.isDown = true, .text = QStringLiteral("b")}); // the last of all
    const auto lines = record.eventsUntil(key(48, 0));
    EXPECT_EQ(lines.count(key(30, 1)), 1'000);
    EXPECT_LT(lines.indexOf(QStringLiteral("2:0:5 0:0:0")), lines.lastIndexOf(key(30, 0)));
}

TEST_F(Uinput, TheEndWaitsForNoText) {
    auto poster = std::make_unique<UinputEventPoster>(std::move(kernel));
    poster->post(KeyEvent{.isDown = true, .text = QString(500'000, u'a')});
    record.waitFor(key(30, 0));
    poster.reset();
    EXPECT_LT(record.lines().count(key(30, 1)), 250'000);
}

TEST_F(Uinput, ADeviceThatTheKernelHasLostIsTheEnd) {
    kernel->canWrite = false;
    UinputEventPoster poster(std::move(kernel));
    poster.post(KeyEvent{.keyCode = 123, .isDown = true});
    record.eventsUntil(QStringLiteral("close"));
    while (poster.canMakeEvents()) {
        std::this_thread::yield();
    }
}

TEST(UsKeyboard, HasAllPrintableCharactersOfAscii) {
    for (char32_t character = U' '; character <= U'~'; ++character) {
        EXPECT_TRUE(usKeyOf(character)) << static_cast<char>(character);
    }
    EXPECT_EQ(usKeyOf(U'/'), (UsKey{.code = 53}));
    EXPECT_EQ(usKeyOf(U'~'), (UsKey{.code = 41, .isShifted = true}));
    EXPECT_EQ(usKeyOf(U'|'), (UsKey{.code = 43, .isShifted = true}));
    EXPECT_EQ(usKeyOf(U'ä'), std::nullopt);
}
