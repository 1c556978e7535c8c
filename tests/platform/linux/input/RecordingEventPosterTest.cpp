// The fake passes what each back end passes, so that tests which use it hold for them.
#include "fakes/RecordingEventPoster.h"
#include "EventPosterContract.h"

#include <QHash>

namespace brenvale {

namespace {

QString nameOf(quint16 keyCode) {
    static const QHash<quint16, QString> names{
        {36, QStringLiteral("Return")},  {51, QStringLiteral("Delete")}, {53, QStringLiteral("Escape")},
        {55, QStringLiteral("Command")}, {58, QStringLiteral("Option")}, {59, QStringLiteral("Control")},
        {123, QStringLiteral("Left")},   {124, QStringLiteral("Right")}, {125, QStringLiteral("Down")},
        {126, QStringLiteral("Up")}};
    return names.value(keyCode);
}

QString heldBy(quint64 flags) {
    QStringList names;
    if ((flags & 0x100000) != 0) {
        names << QStringLiteral("cmd");
    }
    if ((flags & 0x40000) != 0) {
        names << QStringLiteral("ctrl");
    }
    if ((flags & 0x80000) != 0) {
        names << QStringLiteral("option");
    }
    if ((flags & 0x20000) != 0) {
        names << QStringLiteral("shift");
    }
    return names.isEmpty() ? QString() : u' ' + names.join(u'+');
}

/// What a desktop would make of the events.
class Transcript {
public:
    void operator()(const KeyEvent& event) {
        if (event.text && !event.text->isEmpty()) {
            flushMove();
            text_ += *event.text;
        } else if (const auto name = nameOf(event.keyCode); !name.isEmpty()) {
            add((event.isDown ? QStringLiteral("down ") : QStringLiteral("up ")) + name +
                heldBy(event.flags));
        }
    }

    void operator()(const SystemDefinedEvent& event) {
        static const QList<qint64> keys{0, 1, 2, 3, 7, 16, 17, 18, 21, 22};
        const auto key = event.data1 >> 16;
        if (event.subtype == 8 && keys.contains(key)) {
            const bool isDown = (event.data1 & 0xff00) == 0xa00;
            add((isDown ? QStringLiteral("down system") : QStringLiteral("up system")) +
                QString::number(key));
        }
    }

    void operator()(const MouseEvent& event) {
        using enum MouseEvent::Type;
        if (event.type == moved) {
            flushText();
            moved_ += event.position - pointer_;
            pointer_ = event.position;
            return;
        }
        const bool isDown = event.type == leftDown || event.type == rightDown;
        add((isDown ? QStringLiteral("press ") : QStringLiteral("release ")) +
            (event.button == 1 ? QStringLiteral("right") : QStringLiteral("left")));
    }

    [[nodiscard]] QStringList lines() {
        flushMove();
        flushText();
        return lines_;
    }

private:
    void add(const QString& line) {
        flushMove();
        flushText();
        lines_ << line;
    }

    void flushText() {
        if (!text_.isEmpty()) {
            lines_ << QStringLiteral("text ") + std::exchange(text_, {});
        }
    }

    void flushMove() {
        if (!moved_.isNull()) {
            lines_ << QStringLiteral("by %1 %2").arg(moved_.x()).arg(moved_.y());
        }
        moved_ = {};
    }

    QStringList lines_;
    QString text_;
    QPointF pointer_;
    QPointF moved_;
};

class RecordingTrial final : public PosterTrial {
public:
    [[nodiscard]] EventPoster& poster() override { return poster_; }

    [[nodiscard]] QStringList seenUntil(const QString& /*end*/) override {
        Transcript transcript;
        for (const auto& event : poster_.events()) {
            std::visit(transcript, event);
        }
        return transcript.lines();
    }

    [[nodiscard]] bool stall() override { return true; } // it waits for nobody

    [[nodiscard]] bool forbid() override {
        poster_.letsThrough = false;
        return true;
    }
    void allow() override { poster_.letsThrough = true; }

private:
    RecordingEventPoster poster_;
};

INSTANTIATE_TEST_SUITE_P(Recording, EventPosterContract,
                         testing::Values(MakePosterTrial{"Recording", [] {
                                                             return std::make_unique<RecordingTrial>();
                                                         }}));

} // namespace

TEST(RecordingEventPoster, KeepsTheEventsInTheirOrder) {
    RecordingEventPoster poster;
    poster.post(KeyEvent{.keyCode = 36, .isDown = true});
    poster.post(MouseEvent{.position = {2, 3}});
    poster.post(SystemDefinedEvent{.data1 = 5});
    EXPECT_THAT(poster.events(),
                testing::ElementsAre(RecordingEventPoster::Event(KeyEvent{.keyCode = 36, .isDown = true}),
                                     RecordingEventPoster::Event(MouseEvent{.position = {2, 3}}),
                                     RecordingEventPoster::Event(SystemDefinedEvent{.data1 = 5})));
    EXPECT_EQ(poster.pointerLocation(), QPointF(2, 3));
}

} // namespace brenvale
