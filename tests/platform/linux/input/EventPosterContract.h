#pragma once

#include "platform/EventPoster.h"

#include <QStringList>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>

namespace brenvale {

/// A back end on a desktop of its own, with somebody who has the focus and writes down what arrives. The
/// pointer begins at least 300 pixels from each edge of the screen.
///
/// The lines of what was seen:
/// - "down NAME" and "up NAME" for a key: Escape, Return, Delete, Left, Right, Up, Down, Control, Option,
///   Command, Shift, whichever side they are on. Behind it stand the modifiers that were held, but not behind
///   a modifier key: "down Left cmd+shift", in the order cmd, ctrl, option, shift;
/// - "down system16" and "up system16" for a system key by its number;
/// - "text abc" for the characters that reached an entry, as one line until something else comes;
/// - "by 3 -4" for the pointer, as one line, summed up, until something else comes; nothing for a sum of 0;
/// - "press left", "release left", "press right", "release right".
class PosterTrial {
public:
    virtual ~PosterTrial() = default;

    [[nodiscard]] virtual EventPoster& poster() = 0;

    /// All lines since the beginning, once the last one is `end`; what there is when ten seconds have brought
    /// nothing new.
    [[nodiscard]] virtual QStringList seenUntil(const QString& end) = 0;

    /// Whether any text can be typed, and not only what the layout has, which is that of a US keyboard.
    [[nodiscard]] virtual bool typesAnyText() const { return true; }

    /// From here on the display server answers nothing until `resume`. False where the trial cannot do that.
    [[nodiscard]] virtual bool stall() { return false; }
    virtual void resume() {}

    /// From here on the desktop lets no event through until `allow`. False where a desktop always lets them.
    [[nodiscard]] virtual bool forbid() { return false; }
    virtual void allow() {}
};

/// How the trial of one back end is made, with the name that its tests bear.
struct MakePosterTrial {
    const char* backEnd;
    std::function<std::unique_ptr<PosterTrial>()> make;

    friend void PrintTo(const MakePosterTrial& trial, std::ostream* out) { *out << trial.backEnd; }
};

/// What each event poster promises. A back end joins by
/// `INSTANTIATE_TEST_SUITE_P(Name, EventPosterContract, testing::Values(MakePosterTrial{"mine", makeMine}));`
/// A trial that is null skips the test, with a reason that its maker writes.
class EventPosterContract : public testing::TestWithParam<MakePosterTrial> {
protected:
    void SetUp() override {
        trial_ = GetParam().make();
        if (!trial_) {
            GTEST_SKIP() << "this machine has no such desktop";
        }
    }

    [[nodiscard]] EventPoster& poster() { return trial_->poster(); }
    [[nodiscard]] PosterTrial& trial() { return *trial_; }

    void press(quint16 keyCode, quint64 flags = 0);
    void pressSystemKey(qint32 key);
    void type(const QString& text);
    void moveBy(double dx, double dy);
    void click(bool isRight = false);

    /// What was seen of all that was posted so far, up to a press of Escape that this posts.
    [[nodiscard]] QStringList seen();

private:
    std::unique_ptr<PosterTrial> trial_;
};

} // namespace brenvale
