#include "fakes/TestServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

namespace brenvale {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using KeyPress = std::pair<quint16, quint64>; // the key and its flags

class RemoteControl : public testing::Test {
protected:
    RemoteControl() {
        server_.fake.accessibilityTrust.isTrusted = true;
        phone_ = server_.connectPhone();
        before_ = server_.dispatchLog().size();
    }

    /// The phone's message with these members beside the action.
    void receive(QJsonObject members) {
        members.insert(QStringLiteral("action"), QStringLiteral("remote_control"));
        server_.phone = phone_;
        server_.receive(QJsonDocument(members).toJson(QJsonDocument::Compact).toStdString());
    }

    void receiveCommand(const QString& command) { receive({{QStringLiteral("command"), command}}); }

    void receiveCommand(const QString& command, const QString& type, QJsonObject members = {}) {
        members.insert(QStringLiteral("command"), command);
        members.insert(QStringLiteral("type"), type);
        receive(members);
    }

    void receiveMove(const QJsonObject& members) {
        receiveCommand(QStringLiteral("m"), QStringLiteral("mouse_move"), members);
    }

    [[nodiscard]] QByteArrayList log() const { return server_.dispatchLog().sliced(before_); }

    /// The presses of keys; each is down and then up, with the same flags.
    [[nodiscard]] std::vector<KeyPress> keyPresses() const {
        std::vector<KeyPress> presses;
        const auto events = server_.fake.eventPoster.eventsOf<KeyEvent>();
        EXPECT_EQ(events.size() % 2, 0U);
        for (std::size_t i = 0; i + 1 < events.size(); i += 2) {
            const KeyEvent down{.keyCode = events[i].keyCode, .flags = events[i].flags, .isDown = true};
            KeyEvent up = down;
            up.isDown = false;
            EXPECT_EQ(events[i], down);
            EXPECT_EQ(events[i + 1], up);
            presses.emplace_back(events[i].keyCode, events[i].flags);
        }
        return presses;
    }

    /// The numbers of the system keys that were pressed.
    [[nodiscard]] std::vector<qint64> systemKeys() const {
        std::vector<qint64> keys;
        for (const auto& event : server_.fake.eventPoster.eventsOf<SystemDefinedEvent>()) {
            if (event.flags == 0xa00) {
                keys.push_back(event.data1 >> 16);
            }
        }
        return keys;
    }

    [[nodiscard]] QStringList scripts() const { return server_.fake.scriptRunner.executed; }
    [[nodiscard]] bool nothingHappened() const {
        return server_.fake.eventPoster.events().empty() && scripts().isEmpty();
    }

    TestServer server_;
    std::shared_ptr<FakeConnection> phone_;
    qsizetype before_ = 0;
};

} // namespace

// What every message has in common

TEST_F(RemoteControl, MessageWithoutACommandDoesNothingAndIsNotLogged) {
    receive({});
    receive({{"command", QJsonValue::Null}});
    receive({{"command", 5}, {"type", "media"}});
    receive({{"type", "keyboard_text"}, {"text", "gone"}});
    receive({{"type", "mouse_move"}, {"dx", 5}, {"dy", 5}});
    receive({{"type", "mouse_click"}});
    EXPECT_TRUE(nothingHappened());
    EXPECT_THAT(log(), IsEmpty());
}

TEST_F(RemoteControl, CommandAndTypeAreLogged) {
    receiveCommand(QStringLiteral("dänce"), QStringLiteral("wild"));
    EXPECT_THAT(log(), ElementsAre("[WebSocketServer] Command received: dänce [Type: wild]"));
}

TEST_F(RemoteControl, TypeThatIsMissingOrNoStringIsRemote) {
    receiveCommand(QStringLiteral("a"));
    receive({{"command", "b"}, {"type", 5}});
    receive({{"command", "c"}, {"type", QJsonValue::Null}});
    EXPECT_THAT(log(), ElementsAre("[WebSocketServer] Command received: a [Type: remote]",
                                   "[WebSocketServer] Command received: b [Type: remote]",
                                   "[WebSocketServer] Command received: c [Type: remote]"));
}

TEST_F(RemoteControl, EmptyCommandAndTypeAreLoggedToo) {
    receiveCommand({}, {});
    EXPECT_THAT(log(), ElementsAre("[WebSocketServer] Command received:  [Type: ]"));
}

TEST_F(RemoteControl, AnyOtherTypeHasTheTableOfCommands) {
    for (const auto* type : {"remote", "", "Media", "keyboard_text ", "anything"}) {
        receiveCommand(QStringLiteral("key_up"), QString::fromLatin1(type));
    }
    EXPECT_EQ(keyPresses().size(), 5U);
}

TEST_F(RemoteControl, PhoneIsToldNothing) {
    const auto before = phone_->sent.size();
    receiveCommand(QStringLiteral("key_up"));
    receiveCommand(QStringLiteral("nonsense"));
    receiveCommand(QStringLiteral("vol_up"));
    server_.fake.scriptRunner.finish(QStringLiteral("no"));
    server_.run();
    EXPECT_EQ(phone_->sent.size(), before);
}

// Text

TEST_F(RemoteControl, TextIsLoggedAndTypedInOnePiece) {
    const auto text = QStringLiteral("Hi, 漢字 👍\nß");
    receiveCommand(QStringLiteral("x"), QStringLiteral("keyboard_text"), {{"text", text}});
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<KeyEvent>(),
                ElementsAre(KeyEvent{.isDown = true, .text = text}, KeyEvent{}));
    EXPECT_THAT(log(), ElementsAre("[WebSocketServer] Command received: x [Type: keyboard_text]",
                                   "[WebSocketServer] Typing unicode text: Hi, 漢字 👍\nß"));
}

TEST_F(RemoteControl, LongTextIsOneEvent) {
    const QString text(100'000, u'a');
    receiveCommand(QStringLiteral("x"), QStringLiteral("keyboard_text"), {{"text", text}});
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<KeyEvent>(),
                ElementsAre(KeyEvent{.isDown = true, .text = text}, KeyEvent{}));
}

TEST_F(RemoteControl, EmptyTextIsLoggedAndPosted) {
    receiveCommand(QStringLiteral("x"), QStringLiteral("keyboard_text"), {{"text", ""}});
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<KeyEvent>(),
                ElementsAre(KeyEvent{.isDown = true, .text = QString()}, KeyEvent{}));
    EXPECT_EQ(log().last(), "[WebSocketServer] Typing unicode text: ");
}

TEST_F(RemoteControl, WithoutATextNothingIsTyped) {
    receiveCommand(QStringLiteral("key_up"), QStringLiteral("keyboard_text"));
    receiveCommand(QStringLiteral("key_up"), QStringLiteral("keyboard_text"), {{"text", 5}});
    EXPECT_TRUE(nothingHappened());
    EXPECT_EQ(log().size(), 2) << "the lines of the commands alone";
}

TEST_F(RemoteControl, TextNeedsNoPermission) {
    server_.fake.accessibilityTrust.isTrusted = false;
    receiveCommand(QStringLiteral("x"), QStringLiteral("keyboard_text"), {{"text", "a"}});
    EXPECT_EQ(server_.fake.eventPoster.events().size(), 2U);
    EXPECT_EQ(log().size(), 2);
}

// The pointer

TEST_F(RemoteControl, PointerMovesFromWhereItIs) {
    server_.fake.eventPoster.movePointer({100, 200});
    receiveMove({{"dx", 4.5}, {"dy", -2}});
    receiveMove({{"dx", 1}, {"dy", 0.25}});
    using enum MouseEvent::Type;
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<MouseEvent>(),
                ElementsAre(MouseEvent{.type = moved, .position = {104.5, 198}},
                            MouseEvent{.type = moved, .position = {105.5, 198.25}}));
}

TEST_F(RemoteControl, PartOfAMoveThatIsMissingIsZero) {
    receiveMove({{"dy", 3}});
    receiveMove({{"dx", "4"}, {"dy", 3}});
    receiveMove({{"dx", true}, {"dy", QJsonValue::Null}});
    receiveMove({});
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<MouseEvent>(),
                ElementsAre(MouseEvent{.position = {0, 3}}, MouseEvent{.position = {0, 6}},
                            MouseEvent{.position = {0, 6}}, MouseEvent{.position = {0, 6}}));
}

TEST_F(RemoteControl, MoveBeyondTheScreenIsPostedAsComputed) {
    receiveMove({{"dx", -1e9}, {"dy", 1e300}});
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<MouseEvent>(),
                ElementsAre(MouseEvent{.position = {-1e9, 1e300}}));
}

TEST_F(RemoteControl, WholeNumbersBeyond64BitsMoveToo) {
    server_.receive(R"({"action":"remote_control","command":"","type":"mouse_move",)"
                    R"("dx":36893488147419103232,"dy":1e400})");
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<MouseEvent>(),
                ElementsAre(MouseEvent{.position = {0x1p65, 0}}));
}

TEST_F(RemoteControl, EachMoveIsPostedByItself) {
    for (int i = 0; i < 1000; ++i) {
        phone_->deliver(R"({"action":"remote_control","command":"","type":"mouse_move","dx":1})");
    }
    server_.run();
    EXPECT_EQ(server_.fake.eventPoster.events().size(), 1000U);
    EXPECT_EQ(server_.fake.eventPoster.pointerLocation(), QPointF(1000, 0));
}

TEST_F(RemoteControl, ClickIsDownAndUpWhereThePointerIs) {
    server_.fake.eventPoster.movePointer({7, 8});
    receiveCommand(QStringLiteral("m"), QStringLiteral("mouse_click"), {{"button", "right"}});
    using enum MouseEvent::Type;
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<MouseEvent>(),
                ElementsAre(MouseEvent{.type = rightDown, .position = {7, 8}, .button = 1},
                            MouseEvent{.type = rightUp, .position = {7, 8}, .button = 1}));
}

TEST_F(RemoteControl, AnyOtherButtonIsTheLeftOne) {
    using enum MouseEvent::Type;
    const QJsonArray buttons{"left", "middle", "", "Right", "right ", 5, QJsonValue::Null};
    for (const auto& button : buttons) {
        receiveCommand(QStringLiteral("m"), QStringLiteral("mouse_click"), {{"button", button}});
    }
    receiveCommand(QStringLiteral("m"), QStringLiteral("mouse_click"));
    const auto events = server_.fake.eventPoster.eventsOf<MouseEvent>();
    ASSERT_EQ(events.size(), 16U);
    for (std::size_t i = 0; i < events.size(); i += 2) {
        EXPECT_EQ(events[i], (MouseEvent{.type = leftDown}));
        EXPECT_EQ(events[i + 1], (MouseEvent{.type = leftUp}));
    }
}

TEST_F(RemoteControl, PointerNeedsNoPermissionAndIsNotLogged) {
    server_.fake.accessibilityTrust.isTrusted = false;
    receiveMove({{"dx", 1}});
    receiveCommand(QStringLiteral("m"), QStringLiteral("mouse_click"));
    EXPECT_EQ(server_.fake.eventPoster.events().size(), 3U);
    EXPECT_EQ(log().size(), 2) << "the lines of the commands alone";
}

// Media

TEST_F(RemoteControl, MediaPressesFiveKeys) {
    for (const auto* command : {"play_pause", "next", "prev", "vol_up", "vol_down"}) {
        receiveCommand(QString::fromLatin1(command), QStringLiteral("media"));
    }
    EXPECT_THAT(systemKeys(), ElementsAre(16, 17, 18, 0, 1));
    EXPECT_TRUE(scripts().isEmpty());
    EXPECT_TRUE(keyPresses().empty());
}

TEST_F(RemoteControl, MediaKeyGoesDownAndUp) {
    receiveCommand(QStringLiteral("play_pause"), QStringLiteral("media"));
    EXPECT_THAT(
        server_.fake.eventPoster.eventsOf<SystemDefinedEvent>(),
        ElementsAre(SystemDefinedEvent{.flags = 0xa00, .subtype = 8, .data1 = 0x100a00, .data2 = -1},
                    SystemDefinedEvent{.flags = 0xb00, .subtype = 8, .data1 = 0x100b00, .data2 = -1}));
}

TEST_F(RemoteControl, OtherCommandsOfMediaDoNothing) {
    for (const auto* command : {"key_left", "mute_mac", "open_url", "cmd_slide_next", "slide_next", ""}) {
        receiveCommand(QString::fromLatin1(command), QStringLiteral("media"));
    }
    EXPECT_TRUE(nothingHappened());
    EXPECT_EQ(log().size(), 6) << "the lines of the commands alone";
}

TEST_F(RemoteControl, MediaNeedsThePermissionWhateverTheCommand) {
    server_.fake.accessibilityTrust.isTrusted = false;
    receiveCommand(QStringLiteral("next"), QStringLiteral("media"));
    receiveCommand(QStringLiteral("nonsense"), QStringLiteral("media"));
    EXPECT_TRUE(nothingHappened());
    EXPECT_THAT(log(), ElementsAre("[WebSocketServer] Command received: next [Type: media]",
                                   "[WebSocketServer] Error: Media keys require Accessibility permissions.",
                                   "[WebSocketServer] Command received: nonsense [Type: media]",
                                   "[WebSocketServer] Error: Media keys require Accessibility permissions."));
}

// The table of commands

TEST_F(RemoteControl, NextIsTheRightArrowUnlessItIsMedia) {
    receiveCommand(QStringLiteral("next"));
    EXPECT_THAT(keyPresses(), ElementsAre(KeyPress{124, 0}));
    receiveCommand(QStringLiteral("next"), QStringLiteral("media"));
    EXPECT_THAT(systemKeys(), ElementsAre(17));
}

TEST_F(RemoteControl, ModifiersAreFlagsOfTheOneKey) {
    receiveCommand(QStringLiteral("cmd+shift_key_left"));
    receiveCommand(QStringLiteral("cmd_presentation_next"));
    receiveCommand(QStringLiteral("meta+option_slide_prev"));
    receiveCommand(QStringLiteral("ctrl_key_command"));
    receiveCommand(QStringLiteral("key_control"));
    EXPECT_THAT(keyPresses(), ElementsAre(KeyPress{123, 0x120000}, KeyPress{124, 0x100000},
                                          KeyPress{123, 0x80000}, KeyPress{55, 0x40000}, KeyPress{59, 0}));
    EXPECT_EQ(server_.fake.eventPoster.events().size(), 10U) << "no key of a modifier is pressed";
}

TEST_F(RemoteControl, CommandsOutsideTheTableAreDroppedWithoutAWord) {
    for (const auto* command : {"cmd+shift_vol_up", "a_slide_b", "cmd_next", "a_b_key_left", "play_pause"}) {
        receiveCommand(QString::fromLatin1(command));
    }
    EXPECT_TRUE(nothingHappened());
    EXPECT_EQ(log().size(), 5) << "the lines of the commands alone";
}

TEST_F(RemoteControl, MuteAndBrightnessPressSystemKeysWithoutThePermission) {
    server_.fake.accessibilityTrust.isTrusted = false;
    for (const auto* command : {"mute_mac", "unmute_mac", "brightness_up", "brightness_down",
                                "screen_brightness_up", "screen_brightness_down"}) {
        receiveCommand(QString::fromLatin1(command));
    }
    EXPECT_THAT(systemKeys(), ElementsAre(7, 7, 21, 22, 2, 3));
    EXPECT_EQ(log().size(), 6);
}

TEST_F(RemoteControl, ScriptsArePerformedAsTheyStand) {
    for (const auto* command : {"vol_up", "vol_down", "empty_trash", "lock_mac", "sleep_mac"}) {
        receiveCommand(QString::fromLatin1(command));
    }
    EXPECT_EQ(
        scripts(),
        (QStringList{QStringLiteral("set volume output volume (output volume of (get volume settings) + 5)"),
                     QStringLiteral("set volume output volume (output volume of (get volume settings) - 5)"),
                     QStringLiteral(R"(tell application "Finder" to empty trash)"),
                     QStringLiteral(R"(tell application "System Events" to lock screen)"),
                     QStringLiteral(R"(tell application "System Events" to sleep)")}));
    EXPECT_TRUE(server_.fake.eventPoster.events().empty());
}

TEST_F(RemoteControl, AddressIsOpenedAsItIs) {
    receive({{"command", "open_url"}, {"url", "https://example.org/ä b?c=%20&d"}});
    receive({{"command", "open_url"}, {"url", R"(a" & do shell script "b)"}});
    receive({{"command", "open_url"}, {"url", ""}});
    EXPECT_EQ(scripts(), (QStringList{QStringLiteral(R"(open location "https://example.org/ä b?c=%20&d")"),
                                      QStringLiteral(R"(open location "a" & do shell script "b")"),
                                      QStringLiteral(R"(open location "")")}));
}

TEST_F(RemoteControl, WithoutAnAddressNothingIsOpened) {
    receiveCommand(QStringLiteral("open_url"));
    receive({{"command", "open_url"}, {"url", 5}});
    EXPECT_TRUE(nothingHappened());
    EXPECT_EQ(log().size(), 2);
}

TEST_F(RemoteControl, RowsWithoutTheirPermissionAreLoggedWithTheWholeCommand) {
    server_.fake.accessibilityTrust.isTrusted = false;
    receiveCommand(QStringLiteral("lock_mac"));
    receiveCommand(QStringLiteral("cmd+shift_key_left"));
    EXPECT_TRUE(nothingHappened());
    EXPECT_THAT(log(),
                ElementsAre("[WebSocketServer] Command received: lock_mac [Type: remote]",
                            "[WebSocketServer] Error: Command 'lock_mac' failed. Accessibility permissions "
                            "are missing.",
                            "[WebSocketServer] Command received: cmd+shift_key_left [Type: remote]",
                            "[WebSocketServer] Error: Command 'cmd+shift_key_left' failed. Accessibility "
                            "permissions are missing."));
}

TEST_F(RemoteControl, EveryGuardedRowStopsWithoutThePermission) {
    server_.fake.accessibilityTrust.isTrusted = false;
    const QStringList guarded{"key_escape",        "key_right",     "key_left",   "key_up",
                              "key_down",          "key_return",    "key_delete", "key_control",
                              "key_option",        "key_command",   "next",       "slide_next",
                              "presentation_next", "seek_forward",  "prev",       "slide_prev",
                              "presentation_prev", "seek_backward", "lock_mac",   "sleep_mac"};
    for (const auto& command : guarded) {
        receiveCommand(command);
    }
    EXPECT_TRUE(nothingHappened());
    EXPECT_EQ(server_.fake.log.count("permissions are missing."), guarded.size());
}

TEST_F(RemoteControl, ScriptsThatAreFreeNeedNoPermission) {
    server_.fake.accessibilityTrust.isTrusted = false;
    receiveCommand(QStringLiteral("vol_up"));
    receiveCommand(QStringLiteral("empty_trash"));
    receive({{"command", "open_url"}, {"url", "a"}});
    EXPECT_EQ(scripts().size(), 3);
    EXPECT_EQ(log().size(), 3);
}

TEST_F(RemoteControl, CommandWithoutItsPermissionIsNotKept) {
    server_.fake.accessibilityTrust.isTrusted = false;
    receiveCommand(QStringLiteral("key_up"));
    server_.fake.accessibilityTrust.isTrusted = true;
    receiveCommand(QStringLiteral("key_down"));
    EXPECT_THAT(keyPresses(), ElementsAre(KeyPress{125, 0}));
}

TEST_F(RemoteControl, UserIsNeverAsked) {
    server_.fake.accessibilityTrust.isTrusted = false;
    receiveCommand(QStringLiteral("key_up"));
    receiveCommand(QStringLiteral("next"), QStringLiteral("media"));
    EXPECT_EQ(server_.fake.accessibilityTrust.prompts, 0);
}

// Scripts that end

TEST_F(RemoteControl, FailedScriptIsLogged) {
    receiveCommand(QStringLiteral("vol_up"));
    server_.fake.scriptRunner.finish(QStringLiteral("There is no söund."));
    EXPECT_EQ(log().last(), "[WebSocketServer] AppleScript Error: There is no söund.");
}

TEST_F(RemoteControl, ScriptThatSucceedsIsNotLogged) {
    receiveCommand(QStringLiteral("vol_up"));
    server_.fake.scriptRunner.finish();
    EXPECT_EQ(log().size(), 1);
}

TEST_F(RemoteControl, ScriptMayEndAfterTheServer) {
    receiveCommand(QStringLiteral("vol_up"));
    phone_.reset();
    server_.phone.reset();
    server_.server->stop();
    server_.run();
    server_.server.reset();
    server_.fake.scriptRunner.finish(QStringLiteral("late"));
    EXPECT_EQ(server_.fake.log.lines().last(), "[WebSocketServer] AppleScript Error: late");
}

// Which queue

TEST_F(RemoteControl, KeysTextAndMediaArePostedOnTheLinksQueue) {
    phone_->deliver(R"({"action":"remote_control","command":"key_up"})");
    phone_->deliver(R"({"action":"remote_control","command":"","type":"keyboard_text","text":"a"})");
    phone_->deliver(R"({"action":"remote_control","command":"next","type":"media"})");
    phone_->deliver(R"({"action":"remote_control","command":"mute_mac"})");
    server_.queue.run();
    EXPECT_EQ(server_.fake.eventPoster.events().size(), 8U) << "before main has run";
}

TEST_F(RemoteControl, PointerAndScriptsWaitForMainInTheirOrder) {
    phone_->deliver(R"({"action":"remote_control","command":"","type":"mouse_move","dx":1})");
    phone_->deliver(R"({"action":"remote_control","command":"vol_up"})");
    phone_->deliver(R"({"action":"remote_control","command":"","type":"mouse_click"})");
    phone_->deliver(R"({"action":"remote_control","command":"","type":"mouse_move","dx":1})");
    server_.queue.run();
    EXPECT_TRUE(nothingHappened()) << "until main runs";
    server_.main.run();
    using enum MouseEvent::Type;
    EXPECT_THAT(server_.fake.eventPoster.eventsOf<MouseEvent>(),
                ElementsAre(MouseEvent{.type = moved, .position = {1, 0}},
                            MouseEvent{.type = leftDown, .position = {1, 0}},
                            MouseEvent{.type = leftUp, .position = {1, 0}},
                            MouseEvent{.type = moved, .position = {2, 0}}));
    EXPECT_EQ(scripts().size(), 1);
}

// Events that cannot be made

TEST_F(RemoteControl, WithoutEventsNothingIsPostedAndNothingIsLogged) {
    server_.fake.eventPoster.makesEvents = false;
    receiveCommand(QStringLiteral("key_up"));
    receiveCommand(QStringLiteral("next"), QStringLiteral("media"));
    receiveCommand(QStringLiteral("mute_mac"));
    receiveCommand(QStringLiteral("x"), QStringLiteral("keyboard_text"), {{"text", "a"}});
    receiveMove({{"dx", 1}});
    receiveCommand(QStringLiteral("x"), QStringLiteral("mouse_click"));
    EXPECT_TRUE(nothingHappened());
    EXPECT_EQ(server_.fake.eventPoster.pointerLocation(), QPointF());
    EXPECT_EQ(log().size(), 7) << "a line of each command, and the text's own";
}

TEST_F(RemoteControl, ReleaseOfASystemKeyDoesNotDependOnThePress) {
    int asked = 0;
    auto& poster = server_.fake.eventPoster;
    poster.asked = [&poster, &asked] {
        poster.makesEvents = ++asked != 1;
    };
    receiveCommand(QStringLiteral("mute_mac"));
    EXPECT_THAT(poster.eventsOf<SystemDefinedEvent>(),
                ElementsAre(SystemDefinedEvent{.flags = 0xb00, .subtype = 8, .data1 = 0x70b00, .data2 = -1}));
}

TEST_F(RemoteControl, TextIsTypedEvenIfItsReleaseCannotBeMade) {
    int asked = 0;
    auto& poster = server_.fake.eventPoster;
    poster.asked = [&poster, &asked] {
        poster.makesEvents = ++asked == 1;
    };
    receiveCommand(QStringLiteral("x"), QStringLiteral("keyboard_text"), {{"text", "a"}});
    EXPECT_THAT(poster.eventsOf<KeyEvent>(),
                ElementsAre(KeyEvent{.isDown = true, .text = QStringLiteral("a")}));
}

TEST_F(RemoteControl, KeyIsPressedWholeOrNotAtAll) {
    auto& poster = server_.fake.eventPoster;
    poster.posting = [&poster] {
        poster.makesEvents = false;
    };
    receiveCommand(QStringLiteral("key_up"));
    EXPECT_THAT(keyPresses(), ElementsAre(KeyPress{126, 0}))
        << "both halves are made before the first is posted";
}

} // namespace brenvale
