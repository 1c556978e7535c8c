#include "RemotePad.h"
#include "Printing.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace brenvale::phone {
namespace {

/// Each command as one line.
QStringList lines(const QList<RemoteCommand>& commands) {
    QStringList lines;
    for (const auto& command : commands) {
        QString line = command.type ? *command.type + u':' + command.command : command.command;
        if (command.text) {
            line += u' ' + *command.text;
        }
        if (command.dx && command.dy) {
            line += QStringLiteral(" %1 %2").arg(*command.dx).arg(*command.dy);
        }
        if (command.button) {
            line += u' ' + *command.button;
        }
        lines << line;
    }
    return lines;
}

QStringList taken(RemotePad& pad, QByteArrayView bytes) {
    return lines(pad.take(bytes));
}

QStringList taken(QByteArrayView bytes) {
    RemotePad pad;
    return taken(pad, bytes);
}

TEST(RemotePad, TextGoesAsOnePiece) {
    EXPECT_EQ(taken("Hi, ä漢👍!"), QStringList{QStringLiteral("keyboard_text:type Hi, ä漢👍!")});
}

TEST(RemotePad, CharacterMayComeInPieces) {
    RemotePad pad;
    EXPECT_EQ(taken(pad, "a\xf0\x9f"), QStringList{QStringLiteral("keyboard_text:type a")});
    EXPECT_TRUE(pad.isUnfinished());
    EXPECT_EQ(taken(pad, "\x91\x8d"), QStringList{QStringLiteral("keyboard_text:type 👍")});
    EXPECT_FALSE(pad.isUnfinished());
}

TEST(RemotePad, ArrowsAreKeysWithTheirModifiers) {
    EXPECT_EQ(taken("\x1b[A\x1b[B\x1b[C\x1b[D"),
              (QStringList{"key_up", "key_down", "key_right", "key_left"}));
    EXPECT_EQ(taken("\x1bOA"), QStringList{"key_up"}) << "as in the application mode";
    EXPECT_EQ(taken("\x1b[1;2D\x1b[1;3D\x1b[1;5D\x1b[1;9D\x1b[1;16D"),
              (QStringList{"shift_key_left", "option_key_left", "ctrl_key_left", "cmd_key_left",
                           "cmd+ctrl+option+shift_key_left"}));
}

TEST(RemotePad, ReturnBackspaceAndText) {
    EXPECT_EQ(taken("ab\r\x7f\x08"),
              (QStringList{"keyboard_text:type ab", "key_return", "key_delete", "key_delete"}));
    EXPECT_EQ(taken("\n"), QStringList{"key_return"});
}

TEST(RemotePad, KeysOfTheUpperRowAndThePages) {
    EXPECT_EQ(taken("\x1bOP\x1bOQ\x1bOR\x1bOS"),
              (QStringList{"media:play_pause", "media:prev", "media:next", "mute_mac"}));
    EXPECT_EQ(taken("\x1b[15~\x1b[17~\x1b[18~\x1b[19~\x1b[20~\x1b[21~"),
              (QStringList{"vol_down", "vol_up", "screen_brightness_down", "screen_brightness_up",
                           "brightness_down", "brightness_up"}));
    EXPECT_EQ(taken("\x1b[5~\x1b[6~\x1b[6;5~"), (QStringList{"slide_prev", "slide_next", "ctrl_slide_next"}));
}

TEST(RemotePad, SequenceMayComeInPieces) {
    RemotePad pad;
    EXPECT_TRUE(taken(pad, "\x1b").isEmpty());
    EXPECT_TRUE(taken(pad, "[1;").isEmpty());
    EXPECT_TRUE(pad.isUnfinished());
    EXPECT_EQ(taken(pad, "5Cx"), (QStringList{"ctrl_key_right", "keyboard_text:type x"}));
}

TEST(RemotePad, EscapeIsAKeyOnceNothingFollows) {
    RemotePad pad;
    EXPECT_TRUE(taken(pad, "\x1b").isEmpty());
    EXPECT_EQ(lines(pad.takePause()), QStringList{"key_escape"});
    EXPECT_FALSE(pad.isUnfinished());
    EXPECT_EQ(taken(pad, "\x1bx"), (QStringList{"key_escape", "keyboard_text:type x"}));
}

TEST(RemotePad, UnknownSequencesAndControlsDoNothing) {
    EXPECT_TRUE(taken("\x1b[Z\x1b[99~\x1b[I\x01\x1a").isEmpty());
}

TEST(RemotePad, EndlessSequenceIsGivenUp) {
    RemotePad pad;
    EXPECT_TRUE(taken(pad, "\x1b[" + QByteArray(100, '1')).isEmpty());
    EXPECT_FALSE(pad.isUnfinished());
    EXPECT_EQ(taken(pad, "a"), QStringList{"keyboard_text:type a"});
}

TEST(RemotePad, TabSwitchesToTheMouseAndBack) {
    RemotePad pad;
    EXPECT_EQ(taken(pad, "\t\x1b[A\x1b[C\x1b[1;2D\x1b[1;5B r\rx"),
              (QStringList{"mouse_move:move 0 -10", "mouse_move:move 10 0", "mouse_move:move -1 0",
                           "mouse_move:move 0 100", "mouse_click:click left", "mouse_click:click right",
                           "mouse_click:click left"}));
    EXPECT_EQ(pad.mode(), RemotePad::Mode::mouse);
    EXPECT_EQ(taken(pad, "\tr"), QStringList{"keyboard_text:type r"});
}

TEST(RemotePad, ControlDEndsItAndLeavesTheRest) {
    RemotePad pad;
    EXPECT_EQ(taken(pad, "a\x04quit\n"), QStringList{"keyboard_text:type a"});
    EXPECT_TRUE(pad.isOver());
    EXPECT_EQ(pad.leftOver(), "quit\n");
}

TEST(RemotePad, ControlCEndsItToo) {
    RemotePad pad;
    EXPECT_TRUE(taken(pad, "\x03").isEmpty());
    EXPECT_TRUE(pad.isOver());
}

} // namespace
} // namespace brenvale::phone
